#pragma once

#include "host/fastening/TuvIBIWItemInfo.h"
#include "host/process/ZefISPPActivity.h"
#include "host/values/ZefUnicodeString.h"

class TuvEUpdateManufAssly;

// The activity itself or else its parent, whichever is a BIW activity and then replaces it; null
// and no change when neither is.
TuvIBIWItemInfo_var ClimbToStation(ZefISPPActivity_var& ioActivity);

// Shows a warning whose names need not be kept.
void Warn(TuvEUpdateManufAssly& iUpdate, ZefUnicodeString iNames, ZefUnicodeString iMessageId);
