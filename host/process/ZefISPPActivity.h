#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/process/ZefISPPAbstractActivity.h"

extern const _GUID IID_ZefISPPActivity;

// A step of the process. The class of one that makes something is "PhysicalActivity" or derived
// from it, that of one that only orders the flow is "LogicalActivity"; both derive from "Activity".
// Filters by kind go by these names, and the update of assemblies is found by the first.
class ZefISPPActivity : public Interface<ZefISPPActivity, ZefISPPAbstractActivity> {
 public:
  static constexpr char Name[] = "ZefISPPActivity";
};

using ZefISPPActivity_var = Handle<ZefISPPActivity>;
