#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"

extern const _GUID IID_TuvIBIWCurveFastener;

// A fastener along a curve: a seam.
class TuvIBIWCurveFastener : public Interface<TuvIBIWCurveFastener> {
 public:
  static constexpr char Name[] = "TuvIBIWCurveFastener";

  // Writes the coordinates of the point (mm) into the first three places of the caller's array of
  // six; point 1 is the first. E_FAIL past the last.
  virtual HRESULT GetPoint(int iIndex, double* oXYZ) = 0;
};

using TuvIBIWCurveFastener_var = Handle<TuvIBIWCurveFastener>;
