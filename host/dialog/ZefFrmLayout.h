#pragma once

#include "host/component/PlatformClass.h"
#include "host/component/ZefBaseUnknown.h"

class ZefFrmWindow;

// The arrangement of windows. No operation takes a reference; each may answer null.
class ZefFrmLayout : public PlatformClass<ZefFrmLayout, ZefBaseUnknown> {
 public:
  static constexpr char Name[] = "ZefFrmLayout";

  static ZefFrmLayout* GetCurrentLayout();
  virtual ZefFrmWindow* GetCurrentWindow() = 0;
};
