#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/values/ZefListValZefBaseUnknown_var.h"

extern const _GUID IID_ZefIPointingHolder;

// The back links of an object: the features that point at it.
class ZefIPointingHolder : public Interface<ZefIPointingHolder> {
 public:
  static constexpr char Name[] = "ZefIPointingHolder";

  // Appends the item-link features that designate the object, one per link, oldest first.
  virtual HRESULT ListPointingObjects(ZefListValZefBaseUnknown_var& ioFeatures) = 0;
};

using ZefIPointingHolder_var = Handle<ZefIPointingHolder>;
