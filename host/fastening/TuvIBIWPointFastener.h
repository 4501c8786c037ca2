#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"

extern const _GUID IID_TuvIBIWPointFastener;

// A fastener at one point.
class TuvIBIWPointFastener : public Interface<TuvIBIWPointFastener> {
 public:
  static constexpr char Name[] = "TuvIBIWPointFastener";
};

using TuvIBIWPointFastener_var = Handle<TuvIBIWPointFastener>;
