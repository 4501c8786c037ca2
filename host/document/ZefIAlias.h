#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/values/ZefUnicodeString.h"

extern const _GUID IID_ZefIAlias;

// The name under which users know an object.
class ZefIAlias : public Interface<ZefIAlias> {
 public:
  static constexpr char Name[] = "ZefIAlias";

  virtual ZefUnicodeString GetAlias() = 0;
};

using ZefIAlias_var = Handle<ZefIAlias>;
