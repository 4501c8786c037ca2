#pragma once

#include "frame/Export.h"

class ZefBaseUnknown;

// Creates the update extension of `iExtended`, which owns it, and answers it with a reference for
// the caller; null when memory is exhausted. The platform calls it by this plain name.
extern "C" TUV_EXPORT ZefBaseUnknown* CreateBOATuvIUpdateManufAsslyTuvEUpdateManufAssly(
    ZefBaseUnknown* iExtended, ZefBaseUnknown* iOuter);
