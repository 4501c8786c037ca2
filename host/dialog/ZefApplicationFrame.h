#pragma once

#include "host/component/PlatformClass.h"
#include "host/component/ZefBaseUnknown.h"

class ZefFrmWindow;

// The application's frame. No operation takes a reference; each may answer null.
class ZefApplicationFrame : public PlatformClass<ZefApplicationFrame, ZefBaseUnknown> {
 public:
  static constexpr char Name[] = "ZefApplicationFrame";

  // Null in an application without windows.
  static ZefApplicationFrame* GetFrame();
  virtual ZefFrmWindow* GetMainWindow() = 0;
};
