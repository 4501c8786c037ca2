#include "embedded/model/Containers.h"

#include <cstddef>
#include <memory>
#include <string>
#include <utility>

#include "embedded/model/Activity.h"
#include "embedded/model/Document.h"
#include "embedded/model/ObjectClass.h"
#include "embedded/processdb/ProcessDatabase.h"
#include "host/values/FetchAhead.h"

namespace embedded {

namespace {

// Whether the object answers the type is asked by name; the reference goes to the receiver.
void AppendIfAnswers(ZefBaseUnknown* object, const char* type,
                     _SEQUENCE_ZefBaseUnknown_ptr& members) {
  if (ZefBaseUnknown* const member = object->QueryInterface(type)) members.append(member);
}

void AppendLinks(const Activity& activity, const char* type,
                 _SEQUENCE_ZefBaseUnknown_ptr& members) {
  activity.Links().ForEach(
      [&](ItemLink& link) { AppendIfAnswers(link.Identity(), type, members); });
}

// What the process database knows of a feature goes by the name of the feature.
std::string KeyOf(const TuvIBIWFeature_var& feature) {
  const auto* const named = ObjectAs<Aliased>(feature.Get());
  return named ? named->Key() : std::string();
}

}  // namespace

ZefMetaClass* RootContainer::GetMetaObject() const {
  return ObjectClass<RootContainer>("RootContainer");
}

ZefListValZefBaseUnknown_var* RootContainer::GetProcessRoots() {
  if (!membership_->document || FaultPoint::Strikes()) return nullptr;
  auto roots = std::make_unique<ZefListValZefBaseUnknown_var>();
  if (Activity* const root = membership_->document->Root()) roots->Append(root->Identity());
  return roots.release();
}

ZefListValZefBaseUnknown_var* RootContainer::GetProductRoots() {
  if (!membership_->document || FaultPoint::Strikes()) return nullptr;
  productRoots_.RemoveAll();
  for (Product* const root : membership_->document->ProductRoots()) {
    productRoots_.Append(root->Identity());
  }
  return &productRoots_;
}

HRESULT RootContainer::ListMembersHere(const char* iType, _SEQUENCE_ZefBaseUnknown_ptr& ioMembers) {
  Document* const document = membership_->document;
  if (!document || FaultPoint::Strikes()) return E_FAIL;
  const auto& activities = document->Activities();
  for (std::size_t i = 0; i < activities.size(); ++i) {
    FetchAhead(activities, i);
    AppendIfAnswers(activities[i]->Identity(), iType, ioMembers);
  }
  if (document->Root()) AppendLinks(*document->Root(), iType, ioMembers);
  return S_OK;
}

ZefMetaClass* ActivityContainer::GetMetaObject() const {
  return ObjectClass<ActivityContainer>("ActivityContainer");
}

HRESULT ActivityContainer::ListMembersHere(const char* iType,
                                           _SEQUENCE_ZefBaseUnknown_ptr& ioMembers) {
  if (!activity_ || FaultPoint::Strikes()) return E_FAIL;
  AppendLinks(*activity_, iType, ioMembers);
  return S_OK;
}

ZefMetaClass* FeatureContainer::GetMetaObject() const {
  return ObjectClass<FeatureContainer>("FeatureContainer");
}

HRESULT FeatureContainer::ListMembersHere(const char* iType,
                                          _SEQUENCE_ZefBaseUnknown_ptr& ioMembers) {
  if (!membership_->document || FaultPoint::Strikes()) return E_FAIL;
  const auto& features = membership_->document->Features();
  for (std::size_t i = 0; i < features.size(); ++i) {
    FetchAhead(features, i);
    AppendIfAnswers(features[i].Get(), iType, ioMembers);
  }
  return S_OK;
}

HRESULT FeatureContainer::ListProcessVersionIDs(const TuvIBIWFeature_var& iFeature,
                                                ZefListPtrZefListValZefUnicodeString& oLists) {
  if (!membership_->document || FaultPoint::Strikes()) return E_FAIL;
  ProcessDatabase* const database = membership_->document->Database();
  return database ? database->ListVersionLists(KeyOf(iFeature), oLists) : S_OK;
}

HRESULT FeatureContainer::ListPaskAssignmentIDs(const TuvIBIWFeature_var& iFeature,
                                                ZefListValZefUnicodeString& oIdentifiers) {
  if (!membership_->document || FaultPoint::Strikes()) return E_FAIL;
  ProcessDatabase* const database = membership_->document->Database();
  return database ? database->ListAssignments(KeyOf(iFeature), oIdentifiers) : S_OK;
}

ZefMetaClass* CompoundContainer::GetMetaObject() const {
  return ObjectClass<CompoundContainer>("CompoundContainer");
}

ZefIContainer* CompoundContainer::GetContainer(const ZefUnicodeString& iIdentifier) {
  if (!membership_->document || FaultPoint::Strikes()) return nullptr;
  if (iIdentifier != "TuvFPPContainer") return nullptr;
  return ZefIContainer_var(membership_->document->FeatureContainerObject()).Detach();
}

}  // namespace embedded
