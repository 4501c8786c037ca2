#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"

extern const _GUID IID_TuvISpotWeld;

// A spot weld.
class TuvISpotWeld : public Interface<TuvISpotWeld> {
 public:
  static constexpr char Name[] = "TuvISpotWeld";

  // A new array of six that the caller deletes (delete[]), or null: x, y, z in mm, then the
  // rotations about X, Y and Z in degrees.
  virtual double* GetPositionAndOrientation() = 0;
  // Negative when the process database does not assign the weld.
  virtual HRESULT IsAssignedInPask() = 0;
  // Millimetres.
  virtual double GetX() = 0;
  virtual double GetY() = 0;
  virtual double GetZ() = 0;
  // The object that carries the weld, no reference taken; may be null.
  virtual HRESULT GetCarrier(ZefBaseUnknown*& oCarrier) = 0;
};

using TuvISpotWeld_var = Handle<TuvISpotWeld>;
