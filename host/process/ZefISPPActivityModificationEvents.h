#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"

class ZefSPPActivityNotificationDispatcher;

extern const _GUID IID_ZefISPPActivityModificationEvents;

// Where the changes of a process are published.
class ZefISPPActivityModificationEvents : public Interface<ZefISPPActivityModificationEvents> {
 public:
  static constexpr char Name[] = "ZefISPPActivityModificationEvents";

  // The one dispatcher of the process, the same from every activity, no reference taken. A removed
  // activity keeps answering it while the process lives; null once there is no process.
  virtual ZefSPPActivityNotificationDispatcher* GetDispatcher() = 0;
};

using ZefISPPActivityModificationEvents_var = Handle<ZefISPPActivityModificationEvents>;
