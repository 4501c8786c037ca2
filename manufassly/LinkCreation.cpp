#include "host/fastening/TuvIBIWItemInfo.h"
#include "host/process/ZefISPPControlFlow.h"
#include "host/process/ZefISPPFlowMgt.h"
#include "host/process/ZefISPPItemMgt.h"
#include "host/process/ZefISPPProductIO.h"
#include "host/values/Each.h"
#include "manufassly/Assemblies.h"
#include "manufassly/Stations.h"
#include "manufassly/TuvEUpdateManufAssly.h"
#include "services/ActivityTree.h"

namespace {

constexpr int kFixed = 1;
constexpr int kFirstAssigned = 2;

// The body-in-white activities that follow, logical ones left out.
ZefListValZefBaseUnknown_var FollowingStations(ZefISPPFlowMgt& flow) {
  ZefListValZefBaseUnknown_var stations;
  for (const auto& station : Each<TuvIBIWItemInfo>(flow.GetNextActivities("Activity"))) {
    stations.Append(station);
  }
  const ZefListValZefBaseUnknown_var logical = flow.GetNextActivities("LogicalActivity");
  if (logical.Size() > 0) stations.Remove(logical);
  return stations;
}

ZefListValZefBaseUnknown_var FirstAssignedInputsOf(const ZefListValZefBaseUnknown_var& stations) {
  ZefListValZefBaseUnknown_var inputs;
  for (const auto& station : Each<TuvIBIWItemInfo>(stations)) {
    station->GetFirstAssignedInputs(inputs);
  }
  return inputs;
}

ZefListValZefBaseUnknown_var OutputAssemblies(const TuvIBIWItemInfo_var& station) {
  ZefListValZefBaseUnknown_var outputs;
  station->GetOutputs(outputs, 0);
  return AssembliesBehind(outputs);
}

// Takes the children that are inputs out of the inputs, and those that are not out of the assembly.
void MatchChildren(const TuvIMfgAssembly_var& assembly, ZefListValZefBaseUnknown_var& ioInputs) {
  const auto children = ChildrenOf(assembly);
  if (!children) return;
  ZefListValZefBaseUnknown_var matching;
  ZefListValZefBaseUnknown_var::Intersection(ioInputs, *children, matching);
  children->Remove(matching);
  ioInputs.Remove(matching);
  for (int i = 1; i <= children->Size(); ++i) assembly->RemoveChild((*children)[i]);
}

void Fill(TuvEUpdateManufAssly& update, TuvIMfgAssembly_var assembly,
          const ZefListValZefBaseUnknown_var& inputs) {
  if (!assembly) return;
  for (const auto& input : Each<ZefBaseUnknown>(inputs)) {
    TuvIMfgAssembly_var part = input;
    if (part && update.IsMAaChild(part, assembly)) {
      Warn(update, assembly->GetName() + "$" + part->GetName(), "MAIsChild");
    } else {
      assembly->AddChild(input);
    }
  }
  Redraw(assembly);
}

void WarnOfBranch(TuvEUpdateManufAssly& update, const ZefISPPActivity_var& activity,
                  const ZefListValZefBaseUnknown_var& candidates) {
  const TuvIBIWItemInfo_var station = activity;
  if (!station) return;
  ZefListValZefBaseUnknown_var outputs;
  station->GetOutputProductIOs(outputs);
  ZefListValZefBaseUnknown_var assemblies = AssembliesBehind(outputs);
  assemblies.Remove(FirstAssignedInputsOf(candidates));
  if (assemblies.Size() > 0) Warn(update, update.GetNameOfActivity(activity), "MultipleActsInFlow");
}

void FillOutputOfParent(TuvEUpdateManufAssly& update, ZefISPPActivity_var& operation) {
  ZefListValZefBaseUnknown_var items;
  update.CollectFirstAssignPartsFromPreviousActs(operation, items);
  update.GetFirstAssignedItems(operation, items);
  if (items.Size() == 0) return;
  const ZefISPPAbstractActivity_var parent = ParentOf(operation);
  const TuvIBIWItemInfo_var station = parent;
  if (!station) return;
  ZefListValZefBaseUnknown_var outputs;
  station->GetOutputs(outputs, 0);
  if (outputs.Size() >= 2) Warn(update, update.GetNameOfActivity(parent), "MultipleProductOutput");
  if (outputs.Size() != 1) return;
  Fill(update, AssembliesBehind(outputs)[1], items);
}

void HandOutputsOn(TuvEUpdateManufAssly& update, ZefISPPActivity_var& activity,
                   TuvIBIWItemInfo& station) {
  ZefISPPActivity_var next;
  update.GetNextActivityToAssign(activity, next, nullptr);
  if (!next) return;
  ZefListValZefBaseUnknown_var outputs;
  station.GetProductOutputs(outputs);
  station.GetOutputs(outputs, 0);
  ZefListValZefBaseUnknown_var assemblies = AssembliesBehind(outputs);
  for (TuvIMfgAssembly_var assembly : Each<TuvIMfgAssembly>(assemblies)) {
    // Each assembly is looked for in the activity after the next one.
    ZefISPPActivity_var target;
    update.RemoveMAFromConcernedAct(next, target, assembly, nullptr);
  }
  update.RemoveInvalidFirstAssign(next, assemblies);
  update.AssignProductsAsFirstAssign(next, assemblies);
}

void FollowNewFlow(TuvEUpdateManufAssly& update, const ZefISPPControlFlow_var& flow) {
  ZefISPPFlowEnd_var end;
  flow->GetFrom(end);
  ZefISPPActivity_var source;
  if (end) end->GetActivity(source);
  ZefISPPFlowEnd_var unused;
  flow->GetTo(unused);
  if (!source) return;
  const TuvIBIWItemInfo_var station = source;
  if (station) {
    HandOutputsOn(update, source, *station);
  } else {
    FillOutputOfParent(update, source);
  }
}

void FollowNewOutput(TuvEUpdateManufAssly& update, ZefISPPActivity_var& activity,
                     TuvIBIWItemInfo& station) {
  ZefListValZefBaseUnknown_var inputs;
  ZefListValZefBaseUnknown_var products;
  station.GetInputItems(inputs);
  station.GetOutputs(products, 1);
  ZefListValZefBaseUnknown_var assemblies = AssembliesAmong(products);
  if (assemblies.Size() == 0) return;
  for (const auto& assembly : Each<TuvIMfgAssembly>(assemblies)) MatchChildren(assembly, inputs);
  if (assemblies.Size() == 1) {
    Fill(update, assemblies[1], inputs);
  } else if (inputs.Size() > 0) {
    Warn(update, update.GetNameOfActivity(activity), "MultipleProductOutput");
  }
  ZefISPPActivity_var next;
  update.GetNextActivityToAssign(activity, next, nullptr);
  if (!next) return;
  ZefListValZefBaseUnknown_var outputs;
  station.GetProductOutputs(outputs);
  assemblies.Append(AssembliesBehind(outputs));
  update.AssignProductsAsFirstAssign(next, assemblies);
}

void AddDropped(TuvEUpdateManufAssly& update, const TuvIBIWItemInfo_var& station,
                const ZefISPPItem_var& item, const TuvIMfgAssembly_var& assembly) {
  ZefListValZefBaseUnknown_var inputs;
  station->GetInputItems(inputs);
  if (inputs.Locate(item, 1) == 0) inputs.Append(item);
  const auto children = ChildrenOf(assembly);
  if (children) inputs.Remove(*children);
  Fill(update, assembly, inputs);
}

}  // namespace

void TuvEUpdateManufAssly::CreateProductLink(ZefSPPActivityNotification*& iNotification) {
  if (!iNotification) return;
  const ZefISPPControlFlow_var flow = iNotification->GetSon();
  if (flow) FollowNewFlow(*this, flow);
  const ZefISPPProductIO_var output = iNotification->GetSon();
  ZefISPPActivity_var father = iNotification->GetFather();
  const TuvIBIWItemInfo_var station = father;
  if (output && station) FollowNewOutput(*this, father, *station);
}

void TuvEUpdateManufAssly::HandleDropOfFirstAssignedItems(
    ZefSPPActivityNotification*& iNotification) {
  if (!iNotification) return;
  ZefISPPActivity_var activity = iNotification->GetFather();
  const ZefISPPItem_var item = iNotification->GetSon();
  const TuvIBIWItemInfo_var station = ClimbToStation(activity);
  if (!item || !station || !activity) return;
  ZefListValZefBaseUnknown_var firstAssigned;
  station->GetFirstAssignedInputs(firstAssigned);
  if (firstAssigned.Locate(item, 1) == 0) return;
  ZefListValZefBaseUnknown_var assemblies = OutputAssemblies(station);
  if (assemblies.Size() >= 2) Warn(*this, GetNameOfActivity(activity), "MultipleProductOutput");
  if (assemblies.Size() != 1) return;
  AddDropped(*this, station, item, assemblies[1]);
  ZefISPPActivity_var next;
  GetNextActivityToAssign(activity, next, nullptr);
  if (!next) return;
  RemoveInvalidFirstAssign(next, assemblies);
  AssignProductsAsFirstAssign(next, assemblies);
}

void TuvEUpdateManufAssly::GetNextActivityToAssign(ZefISPPActivity_var& iActivity,
                                                   ZefISPPActivity_var& oNext,
                                                   ZefISPPActivity_var iCurrent) {
  ZefISPPActivity_var activity = iActivity;
  while (activity) {
    const ZefISPPFlowMgt_var flow = activity;
    if (!flow) return;
    const ZefListValZefBaseUnknown_var candidates = FollowingStations(*flow);
    if (candidates.Size() == 1) oNext = candidates[1];
    if (candidates.Size() >= 2) WarnOfBranch(*this, activity, candidates);
    if (candidates.Size() != 0) return;
    activity = iCurrent ? iCurrent : ZefISPPActivity_var(ParentOf(activity));
    iCurrent = nullptr;
  }
}

void TuvEUpdateManufAssly::AssignProductsAsFirstAssign(ZefISPPActivity_var& iActivity,
                                                       ZefListValZefBaseUnknown_var& ioProducts) {
  if (!iActivity || ioProducts.Size() == 0) return;
  const ZefISPPFlowMgt_var flow = iActivity;
  const ZefISPPItemMgt_var items = iActivity;
  if (!flow || !items) return;
  ZefListValZefBaseUnknown_var firstAssigned;
  GetFirstAssignedItems(iActivity, firstAssigned);
  ioProducts.Remove(firstAssigned);
  for (const auto& item : Each<ZefISPPItem>(ioProducts)) {
    ZefBaseUnknown_var source;
    ZefBaseUnknown_var link;
    flow->GetItemSource(source.Put(), item);
    items->AddItemLink(link.Put(), item, source, "", kFixed, kFirstAssigned);
  }
}
