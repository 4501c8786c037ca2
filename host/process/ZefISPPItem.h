#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"

extern const _GUID IID_ZefISPPItem;

// What activities consume, produce and work on: products, assemblies, fasteners, resources.
class ZefISPPItem : public Interface<ZefISPPItem> {
 public:
  static constexpr char Name[] = "ZefISPPItem";
};

using ZefISPPItem_var = Handle<ZefISPPItem>;
