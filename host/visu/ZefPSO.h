#pragma once

#include "host/component/PlatformClass.h"
#include "host/visu/ZefSelectionSet.h"

// The preselected objects.
class ZefPSO : public PlatformClass<ZefPSO, ZefSelectionSet> {
 public:
  static constexpr char Name[] = "ZefPSO";
};
