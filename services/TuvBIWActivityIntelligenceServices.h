#pragma once

#include "frame/Export.h"
#include "host/process/ZefISPPActivity.h"

// Has activities compute their cycle time anew from the fasteners assigned to them.
class TUV_EXPORT TuvBIWActivityIntelligenceServices : public ZefBaseUnknown {
 public:
  TuvBIWActivityIntelligenceServices();
  ~TuvBIWActivityIntelligenceServices() override;

  // E_FAIL when the activity neither welds nor makes seams. One that does both is updated twice.
  static HRESULT UpdateCycleTimeForWelding(ZefISPPActivity* iActivity);
  // Every activity of the current document but the root. E_FAIL when there is none; S_OK says
  // nothing about their kinds.
  static HRESULT UpdateAllCycleTimeActivities();
};
