#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/values/ZefListValZefBaseUnknown_var.h"

extern const _GUID IID_ZefISPPProcessContainer;

// The root container of a process document.
class ZefISPPProcessContainer : public Interface<ZefISPPProcessContainer> {
 public:
  static constexpr char Name[] = "ZefISPPProcessContainer";

  // A new list that the caller deletes, or null; element 1 is the root activity.
  virtual ZefListValZefBaseUnknown_var* GetProcessRoots() = 0;
  // The container keeps the list, valid until the next call or the container's end; nobody else
  // deletes it. Element 1 is the root of the process's product list.
  virtual ZefListValZefBaseUnknown_var* GetProductRoots() = 0;
};

using ZefISPPProcessContainer_var = Handle<ZefISPPProcessContainer>;
