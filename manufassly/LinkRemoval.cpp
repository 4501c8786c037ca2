#include "manufassly/TuvEUpdateManufAssly.h"

void TuvEUpdateManufAssly::RemoveProductLink(ZefSPPActivityNotification*&) {}

void TuvEUpdateManufAssly::HandleDragOfAssignedItems(ZefSPPActivityNotification*&) {}
