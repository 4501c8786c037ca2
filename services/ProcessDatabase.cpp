#include <unordered_set>
#include <utility>
#include <vector>

#include "host/fastening/TuvIBIWFeatureContainer.h"
#include "host/fastening/TuvISpotWeld.h"
#include "host/processdb/ZefIIPDDataMgt.h"
#include "services/Received.h"
#include "services/TuvBIWServices.h"
#include "services/UnknownList.h"

namespace {

UnknownList ParentsOf(IUnknown* object, ZefIIPDDataMgt& management) {
  ZefListPtrIUnknown* parents = nullptr;
  management.ListParents(object, parents, 0);
  return UnknownList(parents);
}

Handle<IUnknown> Keep(IUnknown* object) {
  if (object) object->AddRef();
  return Adopt(object);
}

// One address for all interfaces of an object.
const void* Identity(IUnknown* object) {
  const ZefBaseUnknown_var known = object;
  return known ? static_cast<const void*>(known.Get()) : object;
}

// Visits the base processes above the object, nearest first. A database whose parents form a ring
// ends the walk where it would begin again.
template <class Visit>
void ForEachAncestor(IUnknown* object, const ZefIIPDAdapter_var& adapter, const Visit& visit) {
  std::vector<Handle<IUnknown>> chain{Keep(object)};
  std::unordered_set<const void*> met{Identity(object)};
  while (true) {
    auto parent = Adopt(TuvBIWServices::GetParentErgoCompBaseProcess(chain.back(), adapter));
    if (!parent || !met.insert(Identity(parent)).second) return;
    visit(parent.Get());
    chain.push_back(std::move(parent));
  }
}

bool ListAssignments(ZefBaseUnknown* weld, ZefListValZefUnicodeString& oIdentifiers) {
  const TuvIBIWFeatureContainer_var container = TuvBIWServices::GetFeatContainerFromFeature(weld);
  if (container) container->ListPaskAssignmentIDs(TuvIBIWFeature_var(weld), oIdentifiers);
  return static_cast<bool>(container);
}

}  // namespace

int TuvBIWServices::IsWeldAssignedInPask(ZefBaseUnknown* iWeld) {
  const TuvISpotWeld_var weld = iWeld;
  return weld && Succeeded(weld->IsAssignedInPask()) ? 1 : 0;
}

HRESULT TuvBIWServices::AddPaskAssignmentToText(ZefBaseUnknown* iWeld, ZefUnicodeString& ioText) {
  ZefListValZefUnicodeString identifiers;
  if (!ListAssignments(iWeld, identifiers) || identifiers.Size() == 0) return E_FAIL;
  for (int i = 1; i <= identifiers.Size(); ++i) {
    if (ioText != "") ioText.Append(";");
    ioText.Append(identifiers[i]);
  }
  return S_OK;
}

int TuvBIWServices::GetNumberOfPaskAssignments(ZefBaseUnknown* iWeld) {
  ZefListValZefUnicodeString identifiers;
  ListAssignments(iWeld, identifiers);
  return identifiers.Size();
}

void TuvBIWServices::GetListPaskObjectsTillRoot(IUnknown* iObject, ZefIIPDAdapter_var iAdapter,
                                                ZefListPtrIUnknown& oObjects) {
  // The list may hold the object's last reference.
  Handle<IUnknown> object = Keep(iObject);
  ClearUnknownList(&oObjects);
  if (!object || !iAdapter) return;
  oObjects.Append(object.Detach());
  ForEachAncestor(iObject, iAdapter,
                  [&](IUnknown* parent) { oObjects.Append(Keep(parent).Detach()); });
}

void TuvBIWServices::GetListPaskObjectIDsTillRoot(IUnknown* iObject, ZefIIPDAdapter_var iAdapter,
                                                  ZefListValZefUnicodeString& oIdentifiers) {
  oIdentifiers.RemoveAll();
  if (!iObject || !iAdapter) return;
  // Each put in front of the list would move all others.
  std::vector<ZefUnicodeString> upwards;
  const auto note = [&](IUnknown* object) {
    Received<ZefUnicodeString> identifier;
    iAdapter->GetIDString(object, identifier.Out());
    if (identifier) upwards.push_back(*identifier);
  };
  note(iObject);
  ForEachAncestor(iObject, iAdapter, note);
  for (auto each = upwards.rbegin(); each != upwards.rend(); ++each) oIdentifiers.Append(*each);
}

IUnknown* TuvBIWServices::GetParentErgoCompBaseProcess(IUnknown* iObject,
                                                       ZefIIPDAdapter_var iAdapter) {
  if (!iObject || !iAdapter) return nullptr;
  const ZefIIPDDataMgt_var management = iObject;
  if (!management) return nullptr;
  const UnknownList parents = ParentsOf(iObject, *management);
  for (int i = 1; parents && i <= parents->Size(); ++i) {
    IUnknown* const parent = (*parents)[i];
    IUnknown* base = nullptr;
    if (parent && Succeeded(iAdapter->GetBaseProcess(parent, base))) return base;
  }
  return nullptr;
}

void TuvBIWServices::ClearUnknownList(ZefListPtrIUnknown* ioObjects) {
  if (!ioObjects) return;
  for (int i = 1; i <= ioObjects->Size(); ++i) (void)Adopt((*ioObjects)[i]);
  ioObjects->RemoveAll();
}
