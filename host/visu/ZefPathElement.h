#pragma once

#include "host/component/Handle.h"

// The way to an object in a document, for sets and viewers. It holds a reference on the object.
class ZefPathElement : public ZefBaseUnknown {
 public:
  explicit ZefPathElement(const ZefBaseUnknown* iObject) : object_(iObject) {}
  ZefBaseUnknown* GetObject() const { return object_.Get(); }

  static const char* ClassName() { return "ZefPathElement"; }
  static ZefMetaClass* MetaObject();
  ZefMetaClass* GetMetaObject() const override { return MetaObject(); }

 private:
  ZefBaseUnknown_var object_;
};
