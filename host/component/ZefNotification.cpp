#include "host/component/ZefNotification.h"

#include "host/component/DescribeClass.h"

ZefMetaClass* ZefNotification::MetaObject() {
  static ZefMetaClass* const meta = DescribeClass<ZefNotification>(ZefBaseUnknown::MetaObject());
  return meta;
}
