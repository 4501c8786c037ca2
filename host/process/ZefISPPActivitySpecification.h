#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"

extern const _GUID IID_ZefISPPActivitySpecification;

// An item link of an activity: a feature that designates the item.
class ZefISPPActivitySpecification : public Interface<ZefISPPActivitySpecification> {
 public:
  static constexpr char Name[] = "ZefISPPActivitySpecification";

  virtual HRESULT GetSpecifiedItem(ZefBaseUnknown_var& oItem) = 0;
};

using ZefISPPActivitySpecification_var = Handle<ZefISPPActivitySpecification>;
