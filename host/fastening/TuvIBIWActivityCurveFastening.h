#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"

extern const _GUID IID_TuvIBIWActivityCurveFastening;

// An activity that makes seams.
class TuvIBIWActivityCurveFastening : public Interface<TuvIBIWActivityCurveFastening> {
 public:
  static constexpr char Name[] = "TuvIBIWActivityCurveFastening";

  // Computes the cycle time anew from the assigned fasteners.
  virtual HRESULT UpdateCycleTime() = 0;
};

using TuvIBIWActivityCurveFastening_var = Handle<TuvIBIWActivityCurveFastening>;
