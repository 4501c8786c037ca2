#pragma once

#include "host/component/ZefBaseUnknown.h"

// What is seen in a viewer: representations, paths and sets are attached to it through the
// visualisation manager.
class Zef3DViewpoint : public ZefBaseUnknown {};
