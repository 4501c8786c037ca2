#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "embedded/model/ActivityData.h"
#include "embedded/model/Containers.h"
#include "embedded/model/Facets.h"
#include "embedded/model/LinkList.h"
#include "embedded/model/NeighbourList.h"
#include "host/component/ComponentObject.h"
#include "host/document/ZefISpecObject.h"
#include "host/fastening/Fastening.h"
#include "host/process/Process.h"

namespace embedded {

class Activity;
class ControlFlow;
class ProductOutput;

// An activity's place in the tree and in the flow, each beside the interface that is asked for it.
class TreePlace : public ZefISPPChildManagement {
 public:
  const NeighbourList& Children() const { return children_; }

 protected:
  NeighbourList children_;
  // The first activities three levels below, for fetching ahead alone: they may have ended. The
  // activity itself stands for missing ones: the processor would guess wrong which are there.
  std::array<const void*, 3> below_{};
};

class FlowPlace : public ZefISPPFlowMgt {
 public:
  // One for each flow, in the order of the flows.
  const NeighbourList& Previous() const { return previous_; }
  const NeighbourList& Next() const { return next_; }

 protected:
  NeighbourList previous_;
  NeighbourList next_;
};

// A step of the process. The document owns activities and flows; the tree and the neighbours are
// not counted. An activity that was removed from its document keeps its data and answers that it
// has neither parent nor children nor flows.
class Activity final
    : public ComponentObject<ZefISPPActivity, TreePlace, FlowPlace, ZefISPPActivityRoot,
                             ZefISPPItemMgt, ZefISpecObject, Linkable, Redrawable, Aliased,
                             ZefISPPActivityModificationEvents, TuvIBIWActivity,
                             TuvIBIWActivityWelding, TuvIBIWActivityCurveFastening, TuvIBIWItemInfo,
                             TuvIRabBltCBSubscriber, TuvIRabBltMgr> {
 public:
  Activity(const ActivityData& iData, bool iIsRoot, MembershipPointer iMembership);
  ~Activity() override;
  ZefMetaClass* GetMetaObject() const override;

  // Activities lie side by side in memory, for walks over many of them.
  static void* operator new(std::size_t iSize) noexcept;
  static void operator delete(void* iActivity) noexcept;

  // The tree.
  HRESULT GetParentActivity(ZefISPPAbstractActivity_var& oParent) override;
  ZefUnicodeString GetLabel() override;
  ZefListValZefBaseUnknown_var* GetChildren(const ZefUnicodeString& iType) override;
  ZefBaseUnknown* GetFather() override;
  HRESULT GetFeatContainer(ZefIContainer_var& oContainer) override;

  // The flows.
  ZefListValZefBaseUnknown_var GetPreviousActivities(const ZefUnicodeString& iType) override;
  ZefListValZefBaseUnknown_var GetProductOutputs(ZefISPPItem_var& oItem) override;
  ZefListValZefBaseUnknown_var GetNextActivities(const ZefUnicodeString& iType) override;
  HRESULT GetItemSource(ZefBaseUnknown*& oSource, const ZefISPPItem_var& iItem) override;
  HRESULT AddProductOutput(ZefISPPProductIO*& oOutput, const ZefISPPItem_var& iItem) override;
  ZefSPPActivityNotificationDispatcher* GetDispatcher() override;

  // The items.
  HRESULT AddItem(const ZefBaseUnknown_var& iItem, ZefBaseUnknown_var& oItem) override;
  HRESULT RemoveItem(const ZefBaseUnknown_var& iItem, int iSelector) override;
  ZefListValZefBaseUnknown_var* GetItems(const ZefUnicodeString& iType, int iSelector) override;
  HRESULT AddItemLink(ZefBaseUnknown*& oLink, const ZefISPPItem_var& iItem, ZefBaseUnknown* iSource,
                      const ZefUnicodeString& iName, int iFixed, int iSelector) override;

  // What a station takes in and gives out.
  HRESULT GetProductOutputs(ZefListValZefBaseUnknown_var& ioList) override;
  HRESULT GetOutputs(ZefListValZefBaseUnknown_var& ioList, int iMode) override;
  HRESULT GetOutputProductIOs(ZefListValZefBaseUnknown_var& ioList) override;
  HRESULT GetInputItems(ZefListValZefBaseUnknown_var& ioList) override;
  HRESULT GetFirstAssignedInputs(ZefListValZefBaseUnknown_var& ioList) override;

  // Fastening.
  int IsValidFastener(const TuvIBIWFastener_var& iFastener) override;
  HRESULT UpdateCycleTime() override;
  HRESULT SetCallbacksBlocked(int iBlocked) override;
  HRESULT ProcessPendingUpdates() override;

  // The same as data, for the host's own rooms.
  const ActivityData& Data() const { return data_; }
  bool IsRoot() const { return isRoot_; }
  bool IsStation() const { return data_.role == ActivityData::Role::Station; }
  Activity* Parent() const { return parent_; }
  // The first flow that leads on to the activity; null when there is none.
  ControlFlow* FlowTo(const Activity& iNext) const;
  const std::vector<Owned<ProductOutput>>& Outputs() const { return outputs_; }
  const LinkList& Links() const { return links_; }
  // The links that join the item to this activity, oldest first.
  std::vector<ItemLink*> LinksOf(const ZefBaseUnknown* iItem) const;
  // Seconds, as of the last update.
  double CycleTime() const { return cycleTime_; }
  void SetCycleTime(double iSeconds) { cycleTime_ = iSeconds; }
  // Links an item without any notification or callback: loading a file is no gesture.
  ItemLink* Link(const ZefBaseUnknown_var& iItem, int iSelector);

  // Called after the items of the activity changed, unless that is suspended.
  using ItemChangeCallback = std::function<void(Activity&)>;
  void OnItemChange(ItemChangeCallback iCallback) { onItemChange_ = std::move(iCallback); }
  bool AreCallbacksBlocked() const { return blocked_; }

 private:
  friend class ControlFlow;
  friend class Document;
  friend class ProductOutput;

  void AddChild(Activity& ioChild);
  // Forgets its flows without telling anyone, when its document ends.
  void LeaveFlows();
  void FetchBelow() const;
  // Null once the document ended.
  ZefSPPActivityNotificationDispatcher* GetOwnDispatcher() const;
  // As Link; null when memory is exhausted.
  bool Admits(const ZefBaseUnknown_var& iItem) const;
  ItemLink* TryLink(const ZefBaseUnknown_var& iItem, int iSelector);
  void ItemsChanged();
  double CurveLength() const;
  int CountSpotWelds() const;
  // The activity and those directly below it that are no stations.
  std::vector<const Activity*> OwnScope() const;

  // Those that lead to the previous activities and to the next, at the same positions.
  std::vector<ControlFlow*> previousFlows_;
  std::vector<ControlFlow*> nextFlows_;
  Activity* parent_ = nullptr;
  std::vector<Owned<ProductOutput>> outputs_;
  LinkList links_;
  ActivityData data_;
  bool isRoot_;
  Owned<ActivityContainer> container_;
  ItemChangeCallback onItemChange_;
  bool blocked_ = false;
  bool pending_ = false;
  double cycleTime_ = 0;
};

}  // namespace embedded
