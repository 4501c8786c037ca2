#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"

extern const _GUID IID_TuvIBIWLocatingPoint;

// A point that locates a part in its fixture.
class TuvIBIWLocatingPoint : public Interface<TuvIBIWLocatingPoint> {
 public:
  static constexpr char Name[] = "TuvIBIWLocatingPoint";
};

using TuvIBIWLocatingPoint_var = Handle<TuvIBIWLocatingPoint>;
