#pragma once

#include "host/component/Dictionary.h"

// The meta-object of a platform class that cannot be extended by name; made on the first call of
// the class's MetaObject, which keeps it.
template <class T>
ZefMetaClass* DescribeClass(ZefMetaClass* iBase) {
  return fct_RetrieveMetaObject(T::ClassName(), Implementation, iBase, nullptr, nullptr,
                                static_cast<int>(sizeof(T)));
}
