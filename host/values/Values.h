#pragma once

#include "host/values/Each.h"
#include "host/values/Geometry.h"
#include "host/values/List.h"
#include "host/values/SEQUENCE_ZefBaseUnknown_ptr.h"
#include "host/values/ZefListPtrIUnknown.h"
#include "host/values/ZefListPtrZefListValZefUnicodeString.h"
#include "host/values/ZefListValIID.h"
#include "host/values/ZefListValZefBaseUnknown_var.h"
#include "host/values/ZefListValZefUnicodeString.h"
#include "host/values/ZefUnicodeString.h"
