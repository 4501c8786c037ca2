#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"

extern const _GUID IID_TuvIBIWFeature;

// A body-in-white feature: fasteners, locating and clamping points.
class TuvIBIWFeature : public Interface<TuvIBIWFeature> {
 public:
  static constexpr char Name[] = "TuvIBIWFeature";
};

using TuvIBIWFeature_var = Handle<TuvIBIWFeature>;
