#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"

extern const _GUID IID_TuvIBIWClampingPoint;

// A point at which a part is clamped.
class TuvIBIWClampingPoint : public Interface<TuvIBIWClampingPoint> {
 public:
  static constexpr char Name[] = "TuvIBIWClampingPoint";
};

using TuvIBIWClampingPoint_var = Handle<TuvIBIWClampingPoint>;
