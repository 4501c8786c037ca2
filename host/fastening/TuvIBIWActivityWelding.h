#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"

extern const _GUID IID_TuvIBIWActivityWelding;

// An activity that welds spots.
class TuvIBIWActivityWelding : public Interface<TuvIBIWActivityWelding> {
 public:
  static constexpr char Name[] = "TuvIBIWActivityWelding";

  // Computes the cycle time anew from the assigned fasteners.
  virtual HRESULT UpdateCycleTime() = 0;
};

using TuvIBIWActivityWelding_var = Handle<TuvIBIWActivityWelding>;
