#include "embedded/model/Activity.h"
#include "embedded/model/ControlFlow.h"
#include "embedded/model/MfgAssembly.h"
#include "embedded/model/Product.h"
#include "embedded/model/ProductOutput.h"
#include "host/values/FetchAhead.h"

namespace embedded {

namespace {

// Neighbours in the order of their flows, each once.
template <class End>
ZefListValZefBaseUnknown_var Neighbours(const std::vector<ControlFlow*>& flows,
                                        const ZefUnicodeString& type, const End& end) {
  ZefListValZefBaseUnknown_var neighbours;
  if (FaultPoint::Strikes()) return neighbours;
  const bool isOfAnyKind = type == "Activity";
  for (const ControlFlow* const flow : flows) FetchAhead(end(*flow));
  for (const ControlFlow* const flow : flows) {
    Activity* const neighbour = end(*flow);
    const ZefBaseUnknown_var identity = neighbour->Identity();
    if (!isOfAnyKind && !neighbour->GetMetaObject()->IsAKindOf(type)) continue;
    if (neighbours.Locate(identity) == 0) neighbours.Append(identity);
  }
  return neighbours;
}

void AppendNew(ZefBaseUnknown* element, ZefListValZefBaseUnknown_var& list) {
  const ZefBaseUnknown_var handle = element;
  if (handle && list.Locate(handle) == 0) list.Append(handle);
}

}  // namespace

ZefListValZefBaseUnknown_var Activity::GetPreviousActivities(const ZefUnicodeString& iType) {
  return Neighbours(flowsIn_, iType, [](const ControlFlow& flow) { return &flow.From(); });
}

ZefListValZefBaseUnknown_var Activity::GetNextActivities(const ZefUnicodeString& iType) {
  return Neighbours(flowsOut_, iType, [](const ControlFlow& flow) { return &flow.To(); });
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
