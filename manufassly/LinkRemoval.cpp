#include <cstring>

#include "host/fastening/TuvIBIWItemInfo.h"
#include "host/process/ZefISPPControlFlow.h"
#include "host/process/ZefISPPFlowMgt.h"
#include "host/process/ZefISPPItemMgt.h"
#include "host/process/ZefISPPProductIO.h"
#include "host/product/ZefIProduct.h"
#include "host/values/Each.h"
#include "manufassly/Assemblies.h"
#include "manufassly/Stations.h"
#include "manufassly/TuvEUpdateManufAssly.h"
#include "services/ActivityTree.h"

namespace {

constexpr int kFirstAssigned = 2;

ZefListValZefBaseUnknown_var Alone(const ZefBaseUnknown_var& object) {
  ZefListValZefBaseUnknown_var list;
  list.Append(object);
  return list;
}

// The assembly that is the product of an output; null for anything else.
TuvIMfgAssembly_var AssemblyBehind(const ZefBaseUnknown_var& output) {
  return AssembliesBehind(Alone(output))[1];
}

ZefISPPActivity_var ActivityAt(const ZefISPPFlowEnd_var& end) {
  ZefISPPActivity_var activity;
  end->GetActivity(activity);
  return activity;
}

// Takes items out of every assembly that the activity's parent makes.
void RemoveFromOutputsOfParent(const ZefISPPActivity_var& operation,
                               const ZefListValZefBaseUnknown_var& items) {
  if (items.Size() == 0) return;
  const TuvIBIWItemInfo_var station = ParentOf(operation);
  if (!station) return;
  ZefListValZefBaseUnknown_var outputs;
  station->GetOutputs(outputs, 1);
  for (const auto& item : Each<ZefBaseUnknown>(items)) {
    for (const auto& assembly : Each<TuvIMfgAssembly>(outputs)) {
      assembly->RemoveChild(item);
      Redraw(assembly);
    }
  }
}

void Empty(const TuvIMfgAssembly_var& assembly) {
  for (const auto& child : Each<ZefBaseUnknown>(ChildrenOf(assembly))) assembly->RemoveChild(child);
  Redraw(assembly);
}

void WithdrawRemoved(TuvEUpdateManufAssly& update, ZefISPPActivity_var& removed,
                     const ZefISPPActivity_var& father) {
  ZefListValZefBaseUnknown_var list;
  const TuvIBIWItemInfo_var station = removed;
  if (!station) {
    update.GetFirstAssignedItems(removed, list);
    return RemoveFromOutputsOfParent(removed, list);
  }
  station->GetOutputProductIOs(list);
  for (TuvIMfgAssembly_var assembly : Each<TuvIMfgAssembly>(AssembliesBehind(list))) {
    ZefISPPActivity_var target;
    update.RemoveMAFromConcernedAct(removed, target, assembly, father);
  }
}

void RedirectOutputs(TuvEUpdateManufAssly& update, TuvIBIWItemInfo& station,
                     ZefISPPActivity_var& from, ZefISPPActivity_var& to) {
  ZefListValZefBaseUnknown_var outputs;
  station.GetProductOutputs(outputs);
  station.GetOutputs(outputs, 0);
  ZefListValZefBaseUnknown_var assemblies = AssembliesBehind(outputs);
  if (assemblies.Size() == 0) return;
  for (TuvIMfgAssembly_var assembly : Each<TuvIMfgAssembly>(assemblies)) {
    update.RemoveMAFromConcernedAct(from, to, assembly, nullptr);
  }
  const ZefISPPFlowMgt_var flow = from;
  if (!flow) return;
  ZefListValZefBaseUnknown_var following = flow->GetNextActivities("PhysicalActivity");
  if (to) following.RemoveValue(to);
  if (following.Size() >= 2) Warn(update, update.GetNameOfActivity(from), "MultipleActsInFlow");
  if (following.Size() != 1) return;
  ZefISPPActivity_var next = following[1];
  if (!next) return;
  update.RemoveInvalidFirstAssign(next, assemblies);
  update.AssignProductsAsFirstAssign(next, assemblies);
}

void WithdrawAlong(TuvEUpdateManufAssly& update, const ZefISPPControlFlow_var& control) {
  ZefISPPFlowEnd_var start;
  ZefISPPFlowEnd_var end;
  control->GetFrom(start);
  control->GetTo(end);
  if (!start || !end) return;
  ZefISPPActivity_var from = ActivityAt(start);
  ZefISPPActivity_var to = ActivityAt(end);
  if (!from) return;
  const TuvIBIWItemInfo_var station = from;
  if (station) return RedirectOutputs(update, *station, from, to);
  ZefListValZefBaseUnknown_var items;
  update.CollectFirstAssignPartsFromPreviousActs(from, items);
  update.GetFirstAssignedItems(from, items);
  RemoveFromOutputsOfParent(from, items);
}

}  // namespace

void TuvEUpdateManufAssly::RemoveProductLink(ZefSPPActivityNotification*& iNotification) {
  if (!iNotification) return;
  const ZefISPPControlFlow_var flow = iNotification->GetSon();
  ZefISPPActivity_var removed = iNotification->GetSon();
  ZefISPPActivity_var father = iNotification->GetFather();
  if (father && removed) {
    WithdrawRemoved(*this, removed, father);
  } else if (flow) {
    WithdrawAlong(*this, flow);
  }
  TuvIMfgAssembly_var assembly = AssemblyBehind(iNotification->GetSon());
  if (!assembly || !father) return;
  ZefISPPActivity_var target;
  RemoveMAFromConcernedAct(father, target, assembly, nullptr);
}

void TuvEUpdateManufAssly::HandleDragOfAssignedItems(ZefSPPActivityNotification*& iNotification) {
  if (!iNotification) return;
  ZefISPPActivity_var activity = iNotification->GetFather();
  const ZefBaseUnknown_var son = iNotification->GetSon();
  if (!son) return;
  if (std::strcmp(son->IsA(), "ProductOutput") == 0) {
    const TuvIMfgAssembly_var assembly = AssemblyBehind(son);
    if (assembly) Empty(assembly);
    return;
  }
  if (!TuvIMfgAssembly_var(son) && !ZefIProduct_var(son)) return;
  ZefISPPItem_var item = son;
  const TuvIBIWItemInfo_var station = ClimbToStation(activity);
  if (!item || !station) return;
  ZefListValZefBaseUnknown_var outputs;
  station->GetOutputs(outputs, 0);
  RemoveChildFromMA(outputs, item);
}

void TuvEUpdateManufAssly::RemoveChildFromMA(ZefListValZefBaseUnknown_var& iOutputs,
                                             ZefISPPItem_var& iItem) {
  if (iOutputs.Size() == 0 || !iItem) return;
  for (const auto& assembly : Each<TuvIMfgAssembly>(AssembliesBehind(iOutputs))) {
    const auto children = ChildrenOf(assembly);
    if (children && children->Locate(iItem, 1) != 0) assembly->RemoveChild(iItem);
    Redraw(assembly);
  }
}

void TuvEUpdateManufAssly::RemoveProductsAsFirstAssign(ZefISPPActivity_var& iActivity,
                                                       ZefListValZefBaseUnknown_var& ioProducts) {
  if (!iActivity || ioProducts.Size() == 0) return;
  ZefListValZefBaseUnknown_var firstAssigned;
  ZefListValZefBaseUnknown_var common;
  GetFirstAssignedItems(iActivity, firstAssigned);
  ZefListValZefBaseUnknown_var::Intersection(firstAssigned, ioProducts, common);
  const ZefISPPItemMgt_var management = iActivity;
  if (!management || common.Size() == 0) return;
  for (const auto& item : Each<ZefISPPItem>(common)) management->RemoveItem(item, kFirstAssigned);
  ioProducts.Remove(common);
}

// The candidate after a removed one moves up unexamined, and a candidate is held against the rest
// of the outputs also after it was removed.
void TuvEUpdateManufAssly::RemoveInvalidFirstAssign(ZefISPPActivity_var& iActivity,
                                                    ZefListValZefBaseUnknown_var& ioCandidates) {
  const TuvIBIWItemInfo_var station = iActivity;
  if (!station) return;
  ZefListValZefBaseUnknown_var outputs;
  station->GetOutputs(outputs, 1);
  for (TuvIMfgAssembly_var candidate : Each<TuvIMfgAssembly>(ioCandidates)) {
    for (TuvIMfgAssembly_var output : Each<TuvIMfgAssembly>(outputs)) {
      if (!IsMAaChild(candidate, output)) continue;
      Warn(*this, output->GetName() + "$" + candidate->GetName(), "MAIsChild");
      ioCandidates.RemoveValue(candidate);
    }
  }
}

void TuvEUpdateManufAssly::RemoveMAFromConcernedAct(ZefISPPActivity_var& iActivity,
                                                    ZefISPPActivity_var& ioTarget,
                                                    TuvIMfgAssembly_var& iAssembly,
                                                    ZefISPPActivity_var iCurrent) {
  if (!iActivity || !iAssembly) return;
  if (!ioTarget) GetNextActivityToAssign(iActivity, ioTarget, iCurrent);
  if (!ioTarget) return;
  ZefListValZefBaseUnknown_var nested;
  GetRelatedActivities(iAssembly, nested);
  FilterActsBasedOnParent(ioTarget, nested, 1);
  nested.RemoveValue(ioTarget);
  ZefUnicodeString labels;
  for (ZefISPPActivity_var activity : Each<ZefISPPActivity>(nested)) {
    labels.Append("\n").Append(activity->GetLabel());
    auto assembly = Alone(iAssembly);
    RemoveProductsAsFirstAssign(activity, assembly);
  }
  if (nested.Size() > 0) Warn(*this, labels, "RemovedFirstAssign");
  auto assembly = Alone(iAssembly);
  RemoveProductsAsFirstAssign(ioTarget, assembly);
}
