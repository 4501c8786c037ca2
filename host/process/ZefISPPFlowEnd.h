#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/process/ZefISPPActivity.h"

extern const _GUID IID_ZefISPPFlowEnd;

// One end of a control flow.
class ZefISPPFlowEnd : public Interface<ZefISPPFlowEnd> {
 public:
  static constexpr char Name[] = "ZefISPPFlowEnd";

  virtual HRESULT GetActivity(ZefISPPActivity_var& oActivity) = 0;
};

using ZefISPPFlowEnd_var = Handle<ZefISPPFlowEnd>;
