#pragma once

#include "host/processdb/ZefIIPDAdapter.h"
#include "host/processdb/ZefIIPDDataMgt.h"
#include "host/processdb/ZefIIPDVersionMgt.h"
