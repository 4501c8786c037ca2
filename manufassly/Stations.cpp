#include "manufassly/Stations.h"

#include "manufassly/TuvEUpdateManufAssly.h"
#include "services/ActivityTree.h"

TuvIBIWItemInfo_var ClimbToStation(ZefISPPActivity_var& ioActivity) {
  if (!ioActivity) return {};
  const TuvIBIWItemInfo_var itself = ioActivity;
  if (itself) return itself;
  const ZefISPPAbstractActivity_var parent = ParentOf(ioActivity);
  const TuvIBIWItemInfo_var station = parent;
  if (station) ioActivity = parent;
  return station;
}

void Warn(TuvEUpdateManufAssly& iUpdate, ZefUnicodeString iNames, ZefUnicodeString iMessageId) {
  iUpdate.DisplayWarningWindow(iNames, iMessageId);
}
