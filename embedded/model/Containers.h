#pragma once

#include "embedded/model/Facets.h"
#include "embedded/model/Membership.h"
#include "host/component/ComponentObject.h"
#include "host/document/ZefICompoundContainer.h"
#include "host/document/ZefIContainer.h"
#include "host/fastening/TuvIBIWFeatureContainer.h"
#include "host/process/ZefISPPProcessContainer.h"

namespace embedded {

class Activity;

// The containers of a document. Their members are the document's own lists: a container whose
// document ended is empty.

// Root of a document; the root activity's feature container, too. In a product document it does
// not answer ZefISPPProcessContainer.
class RootContainer : public ComponentObject<ZefISPPProcessContainer, ZefIContainer, Redrawable> {
 public:
  explicit RootContainer(MembershipPointer iMembership) : membership_(std::move(iMembership)) {}
  ZefMetaClass* GetMetaObject() const override;
  ZefListValZefBaseUnknown_var* GetProcessRoots() override;
  ZefListValZefBaseUnknown_var* GetProductRoots() override;
  HRESULT ListMembersHere(const char* iType, _SEQUENCE_ZefBaseUnknown_ptr& ioMembers) override;

 private:
  MembershipPointer membership_;
  ZefListValZefBaseUnknown_var productRoots_;
};

// Holds the item links of one activity.
class ActivityContainer : public ComponentObject<ZefIContainer> {
 public:
  // The activity is not counted; it clears the pointer when it ends.
  explicit ActivityContainer(Activity* iActivity) : activity_(iActivity) {}
  ZefMetaClass* GetMetaObject() const override;
  HRESULT ListMembersHere(const char* iType, _SEQUENCE_ZefBaseUnknown_ptr& ioMembers) override;
  void Leave() { activity_ = nullptr; }

 private:
  Activity* activity_;
};

// Holds the fasteners, locating points and clamping points of a document.
class FeatureContainer : public ComponentObject<ZefIContainer, TuvIBIWFeatureContainer> {
 public:
  explicit FeatureContainer(MembershipPointer iMembership) : membership_(std::move(iMembership)) {}
  ZefMetaClass* GetMetaObject() const override;
  HRESULT ListMembersHere(const char* iType, _SEQUENCE_ZefBaseUnknown_ptr& ioMembers) override;
  HRESULT ListProcessVersionIDs(const TuvIBIWFeature_var& iFeature,
                                ZefListPtrZefListValZefUnicodeString& oLists) override;
  HRESULT ListPaskAssignmentIDs(const TuvIBIWFeature_var& iFeature,
                                ZefListValZefUnicodeString& oIdentifiers) override;

 private:
  MembershipPointer membership_;
};

// Leads to the document's containers by identifier.
class CompoundContainer : public ComponentObject<ZefICompoundContainer> {
 public:
  explicit CompoundContainer(MembershipPointer iMembership) : membership_(std::move(iMembership)) {}
  ZefMetaClass* GetMetaObject() const override;
  ZefIContainer* GetContainer(const ZefUnicodeString& iIdentifier) override;

 private:
  MembershipPointer membership_;
};

}  // namespace embedded
