#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"

extern const _GUID IID_ZefISPPActivityRoot;

// Answered by the root activity of a process and by no other object.
class ZefISPPActivityRoot : public Interface<ZefISPPActivityRoot> {
 public:
  static constexpr char Name[] = "ZefISPPActivityRoot";
};

using ZefISPPActivityRoot_var = Handle<ZefISPPActivityRoot>;
