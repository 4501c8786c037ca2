#include <algorithm>

#include "embedded/model/Activity.h"
#include "embedded/model/ControlFlow.h"
#include "embedded/model/MfgAssembly.h"
#include "embedded/model/Product.h"
#include "embedded/model/ProductOutput.h"
#include "host/values/FetchAhead.h"

namespace embedded {

namespace {

// Neighbours in the order of their flows, each once.
ZefListValZefBaseUnknown_var EachOnce(const NeighbourList& neighbours,
                                      const ZefUnicodeString& type) {
  ZefListValZefBaseUnknown_var activities;
  if (FaultPoint::Strikes()) return activities;
  const bool isOfAnyKind = type == "Activity";
  for (Activity* const activity : neighbours) {
    const ZefBaseUnknown_var identity = activity->Identity();
    if (!isOfAnyKind && !activity->GetMetaObject()->IsAKindOf(type)) continue;
    if (activities.Locate(identity) == 0) activities.Append(identity);
  }
  return activities;
}

// A walk along the flow goes on from the neighbours to theirs, which are fetched from memory.
void FetchBehind(const NeighbourList& neighbours,
                 const NeighbourList& (FlowPlace::*further)() const) {
  for (const Activity* const neighbour : FirstFew(neighbours)) {
    for (const Activity* const next : FirstFew((neighbour->*further)())) {
      const FlowPlace* const place = next;
      FetchAhead(next);
      FetchAhead(place);
      FetchBytes(&(place->*further)(), sizeof(NeighbourList));
    }
  }
}

void AppendNew(ZefBaseUnknown* element, ZefListValZefBaseUnknown_var& list) {
  const ZefBaseUnknown_var handle = element;
  if (handle && list.Locate(handle) == 0) list.Append(handle);
}

}  // namespace

ZefListValZefBaseUnknown_var Activity::GetPreviousActivities(const ZefUnicodeString& iType) {
  FetchBehind(previous_, &FlowPlace::Previous);
  return EachOnce(previous_, iType);
}

ZefListValZefBaseUnknown_var Activity::GetNextActivities(const ZefUnicodeString& iType) {
  FetchBehind(next_, &FlowPlace::Next);
  return EachOnce(next_, iType);
}

ControlFlow* Activity::FlowTo(const Activity& iNext) const {
  const auto found = std::find(next_.begin(), next_.end(), &iNext);
  return found == next_.end() ? nullptr
                              : nextFlows_[static_cast<std::size_t>(found - next_.begin())];
}

void Activity::LeaveFlows() {
  previous_.clear();
  next_.clear();
  previousFlows_.clear();
  nextFlows_.clear();
}

ZefListValZefBaseUnknown_var Activity::GetProductOutputs(ZefISPPItem_var& oItem) {
  ZefListValZefBaseUnknown_var outputs;
  if (FaultPoint::Strikes()) return outputs;
  for (const Owned<ProductOutput>& output : outputs_) outputs.Append(output->Identity());
  if (!outputs_.empty()) oItem = outputs_.front()->OwnProduct();
  return outputs;
}

HRESULT Activity::GetItemSource(ZefBaseUnknown*& oSource, const ZefISPPItem_var& iItem) {
  if (FaultPoint::Strikes()) return E_FAIL;
  oSource = nullptr;
  const auto* const assembly = ObjectAs<MfgAssembly>(iItem.Get());
  if (!assembly) return S_OK;
  for (ProductOutput* const output : assembly->ProducedBy()) {
    if (output->OwnActivity() == this) continue;
    oSource = ZefBaseUnknown_var(output->Identity()).Detach();
    return S_OK;
  }
  return S_OK;
}

HRESULT Activity::AddProductOutput(ZefISPPProductIO*& oOutput, const ZefISPPItem_var& iItem) {
  if (FaultPoint::Strikes()) return E_FAIL;
  const Owned<ProductOutput> output = TryMakeOwned<ProductOutput>(this);
  if (!output) return E_FAIL;
  outputs_.push_back(output);
  oOutput = output.Get();
  oOutput->AddRef();
  if (iItem) output->Produce(iItem);
  return S_OK;
}

HRESULT Activity::GetProductOutputs(ZefListValZefBaseUnknown_var& ioList) {
  return GetOutputs(ioList, 0);
}

HRESULT Activity::GetOutputProductIOs(ZefListValZefBaseUnknown_var& ioList) {
  return GetOutputs(ioList, 0);
}

HRESULT Activity::GetOutputs(ZefListValZefBaseUnknown_var& ioList, int iMode) {
  if (FaultPoint::Strikes()) return E_FAIL;
  for (const Owned<ProductOutput>& output : outputs_) {
    AppendNew(iMode == 0 ? output->Identity() : output->OwnProduct().Get(), ioList);
  }
  return S_OK;
}

}  // namespace embedded
