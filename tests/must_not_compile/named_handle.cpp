#include "host/component/Handle.h"

ZefBaseUnknown* Pointer(ZefBaseUnknown* object) {
  const ZefBaseUnknown_var handle(object);
  ZefBaseUnknown* const pointer = handle;
  return pointer;
}
