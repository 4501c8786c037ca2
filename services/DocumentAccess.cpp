#include <memory>

#include "frame/Trace.h"
#include "host/document/ZefFrmEditor.h"
#include "host/document/ZefICompoundContainer.h"
#include "host/document/ZefILinkableObject.h"
#include "host/document/ZefISpecObject.h"
#include "host/document/ZefInit.h"
#include "host/fastening/TuvIBIWClampingPoint.h"
#include "host/fastening/TuvIBIWFastener.h"
#include "host/fastening/TuvIBIWLocatingPoint.h"
#include "host/fastening/TuvIBIWPointFastener.h"
#include "host/process/ZefISPPActivityRoot.h"
#include "services/Members.h"
#include "services/TuvBIWServices.h"

namespace {

using NewList = std::unique_ptr<ZefListValZefBaseUnknown_var>;

template <class Container>
Handle<Container> RootContainer(ZefDocument* document, const char* kind) {
  if (!document) {
    document = TuvBIWServices::GetCurrentDocument();
    if (!document || !document->IsAKindOf(kind)) return {};
  }
  const ZefInit_var init = document;
  ZefBaseUnknown_var root = Adopt(init->GetRootContainer(Container::ClassName()));
  const Handle<Container> container = root;
  // The container has a reference of its own, so the one that came with the root is given back
  // through it. Without container this is where the null-handle exception is raised.
  if (container) (void)root.Detach();
  container->Release();
  return container;
}

ZefIContainer_var ContainerOfRoot(const NewList& roots) {
  const ZefISPPActivityRoot_var root = (*roots)[1];
  const ZefISpecObject_var feature = root;
  ZefIContainer_var container;
  if (feature) feature->GetFeatContainer(container);
  return container;
}

ZefDocument* ProcessDocument(ZefDocument* document) {
  if (!document) document = TuvBIWServices::GetCurrentDocument();
  return document && document->IsAKindOf("ZefProcess") ? document : nullptr;
}

// The first member is the root itself.
HRESULT AppendAllButFirst(Members& members, ZefListValZefBaseUnknown_var*& ioActivities) {
  if (members.Size() == 0) return E_FAIL;
  for (int i = 1; i < members.Size(); ++i) {
    const ZefBaseUnknown_var member = members.Take(i);
    if (!ioActivities) ioActivities = new ZefListValZefBaseUnknown_var;
    if (member) ioActivities->Append(member.Get());
  }
  return S_OK;
}

ZefDocument* EditedDocument() {
  ZefFrmEditor* const editor = ZefFrmEditor::GetCurrentEditor();
  return editor ? editor->GetDocument() : nullptr;
}

template <class Kind>
void ListAll(_SEQUENCE_ZefBaseUnknown_ptr& ioMembers) {
  const ZefIContainer_var container =
      TuvBIWServices::GetFeatContainerFromDocument(EditedDocument());
  if (container) container->ListMembersHere(Kind::ClassName(), ioMembers);
}

}  // namespace

ZefDocument* TuvBIWServices::GetCurrentDocument() {
  const TraceScope trace("TuvBIWServices::GetCurrentDocument --> IN",
                         "TuvBIWServices::GetCurrentDocument <-- OUT");
  return EditedDocument();
}

ZefISPPProcessContainer_var TuvBIWServices::GetRootProcessContainer(ZefDocument* iDocument) {
  return RootContainer<ZefISPPProcessContainer>(iDocument, "ZefProcess");
}

ZefIContainer_var TuvBIWServices::GetRootContainer(ZefDocument* iDocument) {
  return RootContainer<ZefIContainer>(iDocument, "ZefProduct");
}

HRESULT TuvBIWServices::GetRootActivity(ZefISPPActivity*& oActivity, ZefDocument* iDocument) {
  const TraceScope trace("TuvBIWServices::GetRootActivity --> IN",
                         "TuvBIWServices::GetRootActivity <-- OUT");
  ZefDocument* const document = ProcessDocument(iDocument);
  if (!document) return E_FAIL;
  const ZefISPPProcessContainer_var container = GetRootProcessContainer(document);
  if (!container) return E_FAIL;
  const NewList roots(container->GetProcessRoots());
  if (!roots || roots->Size() == 0) return E_FAIL;
  const ZefISPPActivityRoot_var root = (*roots)[1];
  if (!root) return E_FAIL;
  void* activity = nullptr;
  const HRESULT status = root->QueryInterface(IID_ZefISPPActivity, &activity);
  oActivity = static_cast<ZefISPPActivity*>(activity);
  return status;
}

HRESULT TuvBIWServices::GetListOfAllActivities(ZefListValZefBaseUnknown_var*& ioActivities,
                                               ZefDocument* iDocument) {
  const TraceScope trace("TuvBIWServices::GetListOfAllActivities --> IN",
                         "TuvBIWServices::GetListOfAllActivities <-- OUT");
  ZefDocument* const document = ProcessDocument(iDocument);
  if (!document) return E_FAIL;
  const ZefISPPProcessContainer_var root = GetRootProcessContainer(document);
  if (!root) {
    TuvKelBIWUtilsTrace.TraPutLN("No container");
    return E_FAIL;
  }
  const NewList roots(root->GetProcessRoots());
  if (!roots || roots->Size() == 0) {
    TuvKelBIWUtilsTrace.TraPutLN("No process");
    return E_FAIL;
  }
  const ZefIContainer_var container = ContainerOfRoot(roots);
  if (!container) return E_FAIL;
  Members members;
  container->ListMembersHere("ZefISPPActivity", members.Out());
  return AppendAllButFirst(members, ioActivities);
}

HRESULT TuvBIWServices::GetAllProducts(ZefListValZefBaseUnknown_var*& oProducts) {
  const TraceScope trace("TuvBIWServices::GetAllProducts --> IN",
                         "TuvBIWServices::GetAllProducts <-- OUT");
  const ZefInit_var init = GetCurrentDocument();
  if (!init) return E_FAIL;
  const auto container = AdoptAs<ZefISPPProcessContainer>(
      init->GetRootContainer(ZefISPPProcessContainer::ClassName()));
  const ZefListValZefBaseUnknown_var* const roots =
      container ? container->GetProductRoots() : nullptr;
  if (!roots || roots->Size() == 0) return E_FAIL;
  const ZefIProduct_var root = (*roots)[1];
  ZefIProduct_var reference;
  if (root) root->GetReferenceProduct(reference);
  if (reference) oProducts = reference->GetAllChildren("ZefIProduct");
  return E_FAIL;
}

ZefDocument* TuvBIWServices::GetDocumentFromFeature(ZefBaseUnknown* iFeature) {
  const ZefILinkableObject_var feature = iFeature;
  return feature ? feature->GetDocument() : nullptr;
}

ZefIContainer_var TuvBIWServices::GetFeatContainerFromDocument(ZefDocument* iDocument) {
  if (!iDocument) return {};
  const ZefICompoundContainer_var compound = iDocument->GetCompoundContainer();
  if (!compound) return {};
  return AdoptAs<ZefIContainer, ZefBaseUnknown>(compound->GetContainer("TuvFPPContainer"));
}

ZefIContainer_var TuvBIWServices::GetFeatContainerFromFeature(ZefBaseUnknown* iFeature) {
  return GetFeatContainerFromDocument(GetDocumentFromFeature(iFeature));
}

void TuvBIWServices::GetListOfAllFasteners(_SEQUENCE_ZefBaseUnknown_ptr& ioFasteners) {
  ListAll<TuvIBIWFastener>(ioFasteners);
}

void TuvBIWServices::GetListOfAllLocators(_SEQUENCE_ZefBaseUnknown_ptr& ioLocators) {
  ListAll<TuvIBIWLocatingPoint>(ioLocators);
}

void TuvBIWServices::GetListOfAllClamps(_SEQUENCE_ZefBaseUnknown_ptr& ioClamps) {
  ListAll<TuvIBIWClampingPoint>(ioClamps);
}

ZefListValZefBaseUnknown_var TuvBIWServices::GetListOfAllPointFasteners(ZefDocument* iDocument) {
  ZefListValZefBaseUnknown_var fasteners;
  const ZefIContainer_var container =
      GetFeatContainerFromDocument(iDocument ? iDocument : EditedDocument());
  if (!container) return fasteners;
  Members members;
  container->ListMembersHere(TuvIBIWPointFastener::ClassName(), members.Out());
  for (int i = 0; i < members.Size(); ++i) {
    const ZefBaseUnknown_var member = members.Take(i);
    if (member) fasteners.Append(member.Get());
  }
  return fasteners;
}
