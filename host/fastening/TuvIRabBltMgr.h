#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"

extern const _GUID IID_TuvIRabBltMgr;

// The updates that wait until the item-change callbacks are resumed.
class TuvIRabBltMgr : public Interface<TuvIRabBltMgr> {
 public:
  static constexpr char Name[] = "TuvIRabBltMgr";

  // Runs once what was suspended.
  virtual HRESULT ProcessPendingUpdates() = 0;
};

using TuvIRabBltMgr_var = Handle<TuvIRabBltMgr>;
