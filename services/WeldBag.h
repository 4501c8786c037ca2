#pragma once

#include "host/component/Handle.h"

class Zef3DBagRep;

// The bag that a weld's own representation is; null when it has none of that very class. No
// reference taken.
Zef3DBagRep* BagOfWeld(const ZefBaseUnknown_var& iWeld);
