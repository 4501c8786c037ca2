#include "host/component/Handle.h"

ZefNullHandleException::~ZefNullHandleException() = default;

const char* ZefNullHandleException::what() const noexcept {
  return "a null handle was used to reach an object";
}

void ThrowNullHandle() { throw ZefNullHandleException(); }

bool IsSameObject(const ZefBaseUnknown* a, const ZefBaseUnknown* b) {
  return a == b || (a && b && a->IsEqual(b));
}
