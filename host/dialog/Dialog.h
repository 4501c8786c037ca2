#pragma once

#include "host/dialog/ZefApplicationFrame.h"
#include "host/dialog/ZefCommand.h"
#include "host/dialog/ZefDlgNotify.h"
#include "host/dialog/ZefEventSubscriber.h"
#include "host/dialog/ZefFrmLayout.h"
#include "host/dialog/ZefFrmWindow.h"
#include "host/dialog/ZefGetEnv.h"
#include "host/dialog/ZefInventorySpaceWnd.h"
#include "host/dialog/ZefMsgCatalog.h"
