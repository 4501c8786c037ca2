#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/values/ZefListValZefBaseUnknown_var.h"

extern const _GUID IID_ZefINavigateObject;

// The tree of products and assemblies.
class ZefINavigateObject : public Interface<ZefINavigateObject> {
 public:
  static constexpr char Name[] = "ZefINavigateObject";

  // A new list that the caller deletes, or null.
  virtual ZefListValZefBaseUnknown_var* GetChildren() = 0;
};

using ZefINavigateObject_var = Handle<ZefINavigateObject>;
