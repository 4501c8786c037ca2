#pragma once

#include "host/component/ZefBaseUnknown.h"

class ZefFrmWindow;

// The arrangement of windows. No operation takes a reference; each may answer null.
class ZefFrmLayout : public ZefBaseUnknown {
 public:
  static ZefFrmLayout* GetCurrentLayout();
  virtual ZefFrmWindow* GetCurrentWindow() = 0;
};
