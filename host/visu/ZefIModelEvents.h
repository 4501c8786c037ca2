#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/component/ZefNotification.h"

extern const _GUID IID_ZefIModelEvents;

// Through it changes reach an object.
class ZefIModelEvents : public Interface<ZefIModelEvents> {
 public:
  static constexpr char Name[] = "ZefIModelEvents";

  // Applies a ZefModifyVisProperties to the object; nothing else changes its visual properties.
  virtual HRESULT Dispatch(const ZefNotification& iChange) = 0;
};

using ZefIModelEvents_var = Handle<ZefIModelEvents>;
