#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/values/ZefListValZefBaseUnknown_var.h"
#include "host/values/ZefUnicodeString.h"

extern const _GUID IID_ZefISPPChildManagement;

// The children of an activity in the tree.
class ZefISPPChildManagement : public Interface<ZefISPPChildManagement> {
 public:
  static constexpr char Name[] = "ZefISPPChildManagement";

  // A new list that the caller deletes, or null: the children of the kind `iType`, all for an empty
  // text.
  virtual ZefListValZefBaseUnknown_var* GetChildren(const ZefUnicodeString& iType) = 0;
};

using ZefISPPChildManagement_var = Handle<ZefISPPChildManagement>;
