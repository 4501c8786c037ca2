#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/fastening/TuvIBIWFastener.h"

extern const _GUID IID_TuvIBIWActivity;

// An activity that chooses its fasteners.
class TuvIBIWActivity : public Interface<TuvIBIWActivity> {
 public:
  static constexpr char Name[] = "TuvIBIWActivity";

  // Only the low byte counts: whether the fastener may be assigned here.
  virtual int IsValidFastener(const TuvIBIWFastener_var& iFastener) = 0;
};

using TuvIBIWActivity_var = Handle<TuvIBIWActivity>;
