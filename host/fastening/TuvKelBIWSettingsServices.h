#pragma once

#include "host/component/Result.h"

// The user's settings for body-in-white planning.
class TuvKelBIWSettingsServices {
 public:
  // 1 when fasteners may only be assigned where their parts are loaded, else 0.
  static HRESULT GetPartLoadConstraint(unsigned char& oOn);
};
