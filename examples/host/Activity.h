#pragma once

#include "Items.h"

namespace workshop {

class Activity;

enum class Role { Root, Station, Operation, Logical };

// What an activity makes. It keeps its product also after it was removed.
class Output : public ComponentObject<ZefISPPProductIO> {
 public:
  explicit Output(Activity& iActivity) : activity(&iActivity) {}
  ZefMetaClass* GetMetaObject() const override { return ClassNamed("ProductOutput"); }
  HRESULT GetProduct(ZefBaseUnknown*& oProduct) override {
    return Give(oProduct, WithReference(product));
  }
  HRESULT SetProduct(const ZefISPPItem_var& iItem) override;

  ZefBaseUnknown_var product;
  long turn = 0;       // the order in which outputs got their products
  Activity* activity;  // null once it was removed
};

// Appends the object as that interface, if it answers it.
inline void AppendAs(const char* type, ZefBaseUnknown* object,
                     _SEQUENCE_ZefBaseUnknown_ptr& members) {
  if (ZefBaseUnknown* const answer = object->QueryInterface(type)) members.append(answer);
}

inline void AppendNew(const ZefBaseUnknown_var& object, List& list) {
  if (object && list.Locate(object) == 0) list.Append(object);
}

using Links = std::vector<Ref<ItemLink>>;

// The container of an activity's item links.
class LinkContainer : public ComponentObject<ZefIContainer> {
 public:
  explicit LinkContainer(const Links& links) : links_(&links) {}
  ZefMetaClass* GetMetaObject() const override { return ClassNamed("LinkContainer"); }
  HRESULT ListMembersHere(const char* iType, _SEQUENCE_ZefBaseUnknown_ptr& ioMembers) override {
    if (!links_) return E_FAIL;
    for (const auto& link : *links_) AppendAs(iType, link->Identity(), ioMembers);
    return S_OK;
  }
  void Leave() { links_ = nullptr; }

 private:
  const Links* links_;
};

// A step of the process.
class Activity
    : public ComponentObject<
          ZefISPPActivity, ZefISPPActivityRoot, ZefISPPChildManagement, ZefISPPFlowMgt,
          ZefISPPItemMgt, ZefISpecObject, ZefISPPActivityModificationEvents, TuvIBIWActivity,
          TuvIBIWActivityWelding, TuvIBIWItemInfo, TuvIRabBltCBSubscriber, TuvIRabBltMgr> {
 public:
  Activity(Home home, std::string name, Role role)
      : home_(std::move(home)), name_(std::move(name)), role_(role) {
    // The root alone answers that it is the root, and stations alone what goes in and out.
    AnswerInterface(IID_ZefISPPActivityRoot, role == Role::Root);
    AnswerInterface(IID_TuvIBIWItemInfo, role == Role::Station);
    AnswerInterface(IID_TuvIBIWActivity, role == Role::Station || role == Role::Operation);
    AnswerInterface(IID_TuvIBIWActivityWelding, role == Role::Operation);
  }
  ~Activity() override { Bare(); }
  // Filters and the update of assemblies look for these names.
  ZefMetaClass* GetMetaObject() const override {
    return ClassNamed(role_ == Role::Logical ? "LogicalActivity" : "PhysicalActivity", "Activity");
  }

  // The tree.
  HRESULT GetParentActivity(ZefISPPAbstractActivity_var& oParent) override {
    return Give(oParent, parent_ ? parent_->Identity() : nullptr);
  }
  ZefUnicodeString GetLabel() override { return name_; }
  List* GetChildren(const ZefUnicodeString& iType) override {
    List list;
    for (Activity* const child : children_) {
      const bool isMeant = iType == "" || child->GetMetaObject()->IsAKindOf(iType);
      if (isMeant) list.Append(child->Identity());
    }
    return NewList(list);
  }
  ZefBaseUnknown* GetFather() override {
    return parent_ ? WithReference(parent_->Identity()) : nullptr;
  }
  HRESULT GetFeatContainer(ZefIContainer_var& oContainer) override;

  // The flow.
  List GetPreviousActivities(const ZefUnicodeString& iType) override;
  List GetProductOutputs(ZefISPPItem_var& oItem) override {
    List list;
    for (const auto& output : outputs_) list.Append(output->Identity());
    if (!outputs_.empty()) oItem = outputs_.front()->product;
    return list;
  }
  List GetNextActivities(const ZefUnicodeString& iType) override;
  HRESULT GetItemSource(ZefBaseUnknown*& oSource, const ZefISPPItem_var& iItem) override;
  HRESULT AddProductOutput(ZefISPPProductIO*& oOutput, const ZefISPPItem_var& iItem) override {
    const auto output = Ref<Output>::Make(*this);
    outputs_.push_back(output);
    oOutput = ZefISPPProductIO_var(output->Identity()).Detach();
    if (iItem) output->SetProduct(iItem);
    return S_OK;
  }
  ZefSPPActivityNotificationDispatcher* GetDispatcher() override;

  // The items.
  HRESULT AddItem(const ZefBaseUnknown_var& iItem, ZefBaseUnknown_var& oItem) override {
    if (!iItem) return E_FAIL;
    links_.push_back(Ref<ItemLink>::Make(this, iItem.Get(), 1));
    oItem = iItem;
    return S_OK;
  }
  HRESULT RemoveItem(const ZefBaseUnknown_var& iItem, int iSelector) override {
    const auto removed = std::erase_if(links_, [&](const Ref<ItemLink>& link) {
      const bool isMeant = iSelector == -1 || link->selector == iSelector;
      if (link->item != iItem || !isMeant) return false;
      link->Drop();
      return true;
    });
    if (removed == 0) return E_FAIL;
    Tell(ZefSPPActivityNotification::ItemRemoved, iItem);
    return S_OK;
  }
  List* GetItems(const ZefUnicodeString& iType, int iSelector) override {
    if (iType != "Item") return nullptr;
    List list;
    for (const auto& link : links_) {
      if (iSelector == 0 || link->selector == iSelector) list.Append(link->item);
    }
    return NewList(list);
  }
  // Where the item comes from, the link's name and whether it is fixed are of no use in this host.
  HRESULT AddItemLink(ZefBaseUnknown*& oLink, const ZefISPPItem_var& iItem, ZefBaseUnknown*,
                      const ZefUnicodeString&, int, int iSelector) override {
    if (!iItem) return E_FAIL;
    const ZefBaseUnknown_var item = iItem;
    const bool isNew = std::none_of(links_.begin(), links_.end(), [&](const Ref<ItemLink>& link) {
      return link->item == item && link->selector == 2;
    });
    links_.push_back(Ref<ItemLink>::Make(this, item.Get(), iSelector));
    oLink = WithReference(links_.back()->Identity());
    if (isNew && iSelector == 2) Tell(ZefSPPActivityNotification::ItemFirstAssigned, item);
    return S_OK;
  }

  // What a station takes in and gives out.
  HRESULT GetProductOutputs(List& ioList) override { return GetOutputs(ioList, 0); }
  HRESULT GetOutputs(List& ioList, int iMode) override {
    for (const auto& output : outputs_) {
      AppendNew(iMode == 0 ? output->Identity() : output->product.Get(), ioList);
    }
    return S_OK;
  }
  HRESULT GetOutputProductIOs(List& ioList) override { return GetOutputs(ioList, 0); }
  HRESULT GetInputItems(List& ioList) override { return AppendInputs(false, ioList); }
  HRESULT GetFirstAssignedInputs(List& ioList) override { return AppendInputs(true, ioList); }

  // Welding; nothing in this host waits for item-change callbacks.
  int IsValidFastener(const TuvIBIWFastener_var& iFastener) override {
    return TuvIBIWPointFastener_var(iFastener) ? 1 : 0;
  }
  HRESULT UpdateCycleTime() override { return S_OK; }
  HRESULT SetCallbacksBlocked(int) override { return S_OK; }
  HRESULT ProcessPendingUpdates() override { return S_OK; }

  // For the other objects of this host.
  Activity* Parent() const { return parent_; }
  const std::vector<Activity*>& Children() const { return children_; }
  const std::vector<Ref<Output>>& Outputs() const { return outputs_; }
  const Links& OwnLinks() const { return links_; }
  void AddChild(Activity& child) {
    child.parent_ = this;
    children_.push_back(&child);
  }
  void RemoveChild(const Activity& child) { std::erase(children_, &child); }
  void RemoveOutput(Output& output) {
    output.activity = nullptr;
    std::erase_if(outputs_, [&](const auto& own) { return own.Get() == &output; });
  }
  // Tells everybody who follows the process.
  void Tell(int kind, ZefBaseUnknown* son);
  // Takes away what holds the activity in its process.
  void Bare() {
    parent_ = nullptr;
    children_.clear();
    for (const auto& link : links_) link->Drop();
    links_.clear();
    for (const auto& output : outputs_) output->activity = nullptr;
    outputs_.clear();
    if (container_) container_->Leave();
    container_ = {};
  }

 protected:
  Links links_;
  std::vector<Ref<Output>> outputs_;

 private:
  // Of the operations directly below, too. Parts and assemblies alone unless `all` is set.
  HRESULT AppendInputs(bool all, List& list) const {
    AppendOwnInputs(all, list);
    for (const Activity* const child : children_) {
      if (child->role_ != Role::Station) child->AppendOwnInputs(all, list);
    }
    return S_OK;
  }
  void AppendOwnInputs(bool all, List& list) const {
    for (const auto& link : links_) {
      const bool isMeant = all || ZefIProduct_var(link->item);
      if (link->selector == 2 && isMeant) AppendNew(link->item, list);
    }
  }

  Home home_;
  std::string name_;
  Role role_;
  Activity* parent_ = nullptr;
  std::vector<Activity*> children_;  // the process owns all activities
  Ref<LinkContainer> container_;
};

}  // namespace workshop
