#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/process/ZefISPPAbstractActivity.h"

extern const _GUID IID_ZefISPPActivity;

// A step of the process.
class ZefISPPActivity : public Interface<ZefISPPActivity, ZefISPPAbstractActivity> {
 public:
  static constexpr char Name[] = "ZefISPPActivity";
};

using ZefISPPActivity_var = Handle<ZefISPPActivity>;
