#pragma once

#include "host/component/PlatformClass.h"
#include "host/component/ZefBaseUnknown.h"

// What is seen in a viewer: representations, paths and sets are attached to it through the
// visualisation manager.
class Zef3DViewpoint : public PlatformClass<Zef3DViewpoint, ZefBaseUnknown> {
 public:
  static constexpr char Name[] = "Zef3DViewpoint";
};
