#pragma once

#include "host/component/Dictionary.h"
#include "host/component/ZefBaseUnknown.h"

// What every interface of the platform has besides its operations. `Self` gives its name as
// `static constexpr char Name[]`; `Base` is the interface that it extends. An interface class is
// pure: its objects count their references elsewhere.
template <class Self, class Base = ZefBaseUnknown>
class Interface : public Base {
 public:
  using BaseInterface = Base;
  using QueriedAs = Self;

  static const char* ClassName() { return Self::Name; }
  static const _GUID& InterfaceId() {
    static constexpr _GUID id = NameIdentifier(Self::Name);
    return id;
  }
  static ZefMetaClass* MetaObject() {
    static ZefMetaClass* const meta =
        RegisterInterface(InterfaceId(), Self::Name, Base::MetaObject());
    return meta;
  }
};
