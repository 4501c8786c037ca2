#include "host/component/Handle.h"

ZefBaseUnknown* Pointer(ZefBaseUnknown* object) {
  ZefBaseUnknown* const pointer = ZefBaseUnknown_var(object);
  return pointer;
}
