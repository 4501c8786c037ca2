#pragma once

#include "host/component/Callbacks.h"
#include "host/component/ComponentObject.h"
#include "host/component/Dictionary.h"
#include "host/component/Extensions.h"
#include "host/component/Handle.h"
#include "host/component/Identifier.h"
#include "host/component/Interface.h"
#include "host/component/Result.h"
#include "host/component/ZefBaseUnknown.h"
#include "host/component/ZefMetaClass.h"
#include "host/component/ZefNotification.h"
#include "host/component/ZefTrace.h"
