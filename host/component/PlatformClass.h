#pragma once

#include "host/component/DescribeClass.h"

// What a class of the platform has besides its operations. `Self` gives its name as
// `static constexpr char Name[]`; `Base` is the class that it extends.
template <class Self, class Base>
class PlatformClass : public Base {
 public:
  using Base::Base;

  static const char* ClassName() { return Self::Name; }
  static ZefMetaClass* MetaObject() {
    static ZefMetaClass* const meta = DescribeClass<Self>(Base::MetaObject());
    return meta;
  }
  ZefMetaClass* GetMetaObject() const override { return MetaObject(); }
};
