#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/values/Geometry.h"

extern const _GUID IID_ZefIMovable;

// An object with a position in the vehicle.
class ZefIMovable : public Interface<ZefIMovable> {
 public:
  static constexpr char Name[] = "ZefIMovable";

  virtual HRESULT GetAbsPosition(ZefMathTransformation& oPosition) = 0;
};

using ZefIMovable_var = Handle<ZefIMovable>;
