#pragma once

#include "host/process/ZefSPPActivityNotification.h"
#include "host/process/ZefSPPActivityNotificationDispatcher.h"

namespace embedded {

// Publishes a change of the process. While another one is being delivered it is queued, with
// references on both objects, and delivered first in, first out, before the outermost operation
// returns. Nothing without a dispatcher.
void Notify(ZefSPPActivityNotificationDispatcher* iDispatcher, int iKind, ZefBaseUnknown* iFather,
            ZefBaseUnknown* iSon);

}  // namespace embedded
