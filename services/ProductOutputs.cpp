#include "host/document/ZefIRedrawEvent.h"
#include "host/fastening/TuvEMfgAssemblyFactory.h"
#include "host/fastening/TuvIMfgAssembly.h"
#include "host/process/ZefISPPFlowMgt.h"
#include "host/process/ZefISPPItemMgt.h"
#include "host/process/ZefISPPProductIO.h"
#include "host/values/Each.h"
#include "services/TuvBIWServices.h"

namespace {

ZefUnicodeString LabelOf(const ZefISPPActivity_var& activity) {
  const ZefISPPAbstractActivity_var labelled = activity;
  return labelled ? labelled->GetLabel() : "";
}

void AddOutput(const ZefISPPActivity_var& activity, const ZefISPPItem_var& product) {
  const ZefISPPFlowMgt_var flow = activity;
  if (!product || !flow) return;
  ZefISPPProductIO_var output;
  flow->AddProductOutput(output.Put(), nullptr);
  if (output) output->SetProduct(product);
  const ZefIRedrawEvent_var panel = activity;
  if (panel) panel->Redraw();
}

}  // namespace

void TuvBIWServices::CreateProductOutput(ZefISPPActivity_var& iActivity,
                                         ZefListValZefBaseUnknown_var& ioOutputs) {
  if (!iActivity) return;
  const ZefUnicodeString name = LabelOf(iActivity);
  TuvEMfgAssemblyFactory factory(nullptr);
  TuvIMfgAssembly_var assembly;
  factory.CreateMfgAssembly(&assembly.Put());
  if (!assembly) return;
  assembly->SetName(name);
  AddOutput(iActivity, assembly);
  ioOutputs.Append(assembly);
}

void TuvBIWServices::AssignProductsAsFirstAssign(ZefISPPActivity_var& iActivity,
                                                 ZefListValZefBaseUnknown_var& iProducts) {
  constexpr int kFixed = 1;
  constexpr int kFirstAssigned = 2;
  const ZefISPPItemMgt_var items = iActivity;
  const ZefISPPFlowMgt_var flow = iActivity;
  if (!items || !flow) return;
  for (const auto& item : Each<ZefISPPItem>(iProducts)) {
    ZefBaseUnknown_var source;
    ZefBaseUnknown_var link;
    flow->GetItemSource(source.Put(), item);
    items->AddItemLink(link.Put(), item, source, "", kFixed, kFirstAssigned);
  }
}
