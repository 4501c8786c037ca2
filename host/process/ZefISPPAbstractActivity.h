#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/values/ZefUnicodeString.h"

extern const _GUID IID_ZefISPPAbstractActivity;

// The place of an activity in the tree of activities.
class ZefISPPAbstractActivity : public Interface<ZefISPPAbstractActivity> {
 public:
  static constexpr char Name[] = "ZefISPPAbstractActivity";

  // Null at the top. Still answers while the removal of the activity is being notified.
  virtual HRESULT GetParentActivity(Handle<ZefISPPAbstractActivity>& oParent) = 0;
  virtual ZefUnicodeString GetLabel() = 0;
};

using ZefISPPAbstractActivity_var = Handle<ZefISPPAbstractActivity>;
