#pragma once

#include "host/visu/ZefSelectionSet.h"

// The preselected objects.
class ZefPSO : public ZefSelectionSet {};
