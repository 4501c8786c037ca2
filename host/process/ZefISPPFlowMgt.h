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
  // The output of an earlier activity that carries the item, with a reference for the caller, or
  // null.
  virtual HRESULT GetItemSource(ZefBaseUnknown*& oSource, const ZefISPPItem_var& iItem) = 0;
  // Adds an output, handed back with a reference for the caller. With an item it is notified as
  // kind 39, with a null one not before the output gets its product.
  virtual HRESULT AddProductOutput(ZefISPPProductIO*& oOutput, const ZefISPPItem_var& iItem) = 0;
};

using ZefISPPFlowMgt_var = Handle<ZefISPPFlowMgt>;
