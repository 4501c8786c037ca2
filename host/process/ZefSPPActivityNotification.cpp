#include "host/process/ZefSPPActivityNotification.h"

#include "host/component/DescribeClass.h"
#include "host/process/ZefSPPActivityNotificationDispatcher.h"

ZefMetaClass* ZefSPPActivityNotification::MetaObject() {
  static ZefMetaClass* const meta =
      DescribeClass<ZefSPPActivityNotification>(ZefNotification::MetaObject());
  return meta;
}

ZefMetaClass* ZefSPPActivityNotificationDispatcher::MetaObject() {
  static ZefMetaClass* const meta =
      DescribeClass<ZefSPPActivityNotificationDispatcher>(ZefBaseUnknown::MetaObject());
  return meta;
}
