#pragma once

#include "host/component/Dictionary.h"
#include "host/component/ZefBaseUnknown.h"

namespace embedded {

// The meta-object of one of this host's classes, under the name by which the platform knows it.
template <class T>
ZefMetaClass* ObjectClass(const char* iName, const char* iBase = nullptr) {
  static ZefMetaClass* const meta = fct_RetrieveMetaObject(
      iName, Implementation,
      iBase ? fct_RetrieveMetaObject(iBase, Implementation, ZefBaseUnknown::MetaObject(), nullptr,
                                     nullptr, 0)
            : ZefBaseUnknown::MetaObject(),
      nullptr, nullptr, static_cast<int>(sizeof(T)));
  return meta;
}

}  // namespace embedded
