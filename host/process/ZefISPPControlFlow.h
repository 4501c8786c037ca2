#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/process/ZefISPPFlowEnd.h"

extern const _GUID IID_ZefISPPControlFlow;

// A control flow between two activities. Its ends still answer while its removal is notified.
class ZefISPPControlFlow : public Interface<ZefISPPControlFlow> {
 public:
  static constexpr char Name[] = "ZefISPPControlFlow";

  virtual HRESULT GetFrom(ZefISPPFlowEnd_var& oEnd) = 0;
  virtual HRESULT GetTo(ZefISPPFlowEnd_var& oEnd) = 0;
};

using ZefISPPControlFlow_var = Handle<ZefISPPControlFlow>;
