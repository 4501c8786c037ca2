#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/process/ZefISPPProductIO.h"
#include "host/values/ZefListValZefBaseUnknown_var.h"
#include "host/values/ZefUnicodeString.h"

extern const _GUID IID_ZefISPPFlowMgt;

// The control flow and the product flow of an activity. A neighbour is listed once, also when
// several flows lead to it, in the order in which the flows were drawn. `iType` filters by kind of
// object: "Activity", "LogicalActivity" or "PhysicalActivity".
class ZefISPPFlowMgt : public Interface<ZefISPPFlowMgt> {
 public:
  static constexpr char Name[] = "ZefISPPFlowMgt";

  virtual ZefListValZefBaseUnknown_var GetPreviousActivities(const ZefUnicodeString& iType) = 0;
  // The product outputs in creation order; `oItem` is the product of the first one.
  virtual ZefListValZefBaseUnknown_var GetProductOutputs(ZefISPPItem_var& oItem) = 0;
  virtual ZefListValZefBaseUnknown_var GetNextActivities(const ZefUnicodeString& iType) = 0;
  // The output, of any activity but this one and wherever that stands in the flow, that has the
  // assembly as its product; of several the one that got it first. With a reference for the caller.
  // Null, and S_OK, when there is none and for whatever is no assembly. After E_FAIL the item is
  // linked all the same, without source.
  virtual HRESULT GetItemSource(ZefBaseUnknown*& oSource, const ZefISPPItem_var& iItem) = 0;
  // Adds an output, handed back with a reference for the caller. With an item it is notified as
  // kind 39, with a null one not before the output gets its product.
  virtual HRESULT AddProductOutput(ZefISPPProductIO*& oOutput, const ZefISPPItem_var& iItem) = 0;
};

using ZefISPPFlowMgt_var = Handle<ZefISPPFlowMgt>;
