#pragma once

#include "host/component/ZefBaseUnknown.h"

// What a publisher tells its subscribers. Its implementation object is itself.
class ZefNotification : public ZefBaseUnknown {
 public:
  static const char* ClassName() { return "ZefNotification"; }
  static ZefMetaClass* MetaObject();
  ZefMetaClass* GetMetaObject() const override { return MetaObject(); }
};
