#pragma once

#include "host/component/Handle.h"
#include "host/component/ZefNotification.h"
#include "host/visu/ZefPathElement.h"
#include "host/visu/ZefVisPropertiesValues.h"

// Asks an object to change its visual properties of one type. It holds references on the object
// and the path.
class ZefModifyVisProperties : public ZefNotification {
 public:
  ZefModifyVisProperties(ZefBaseUnknown* iObject, ZefPathElement* iPath, int iReserved, int iType,
                         const ZefVisPropertiesValues& iValues)
      : object_(iObject), path_(iPath), reserved_(iReserved), type_(iType), values_(iValues) {}

  ZefBaseUnknown* GetObject() const { return object_.Get(); }
  ZefPathElement* GetPath() const { return path_.Get(); }
  int GetReserved() const { return reserved_; }
  // 7 is the show attribute.
  int GetType() const { return type_; }
  const ZefVisPropertiesValues& GetValues() const { return values_; }

  static const char* ClassName() { return "ZefModifyVisProperties"; }
  static ZefMetaClass* MetaObject();
  ZefMetaClass* GetMetaObject() const override { return MetaObject(); }

 private:
  ZefBaseUnknown_var object_;
  Handle<ZefPathElement> path_;
  int reserved_;
  int type_;
  ZefVisPropertiesValues values_;
};
