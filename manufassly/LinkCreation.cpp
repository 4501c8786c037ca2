#include "manufassly/TuvEUpdateManufAssly.h"

void TuvEUpdateManufAssly::CreateProductLink(ZefSPPActivityNotification*&) {}

void TuvEUpdateManufAssly::HandleDropOfFirstAssignedItems(ZefSPPActivityNotification*&) {}
