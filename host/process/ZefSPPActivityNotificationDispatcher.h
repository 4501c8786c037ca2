#pragma once

#include "host/component/ZefBaseUnknown.h"

// Publisher of the changes of one process: subscribe to its event with AddCallback.
class ZefSPPActivityNotificationDispatcher : public ZefBaseUnknown {
 public:
  // Name of the event that carries all changes of activities.
  const char* GetSPPViewsChange() const { return "SPPViewsChange"; }

  static const char* ClassName() { return "ZefSPPActivityNotificationDispatcher"; }
  static ZefMetaClass* MetaObject();
  ZefMetaClass* GetMetaObject() const override { return MetaObject(); }
};
