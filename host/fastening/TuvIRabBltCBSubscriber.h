#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"

extern const _GUID IID_TuvIRabBltCBSubscriber;

// The item-change callbacks of an activity.
class TuvIRabBltCBSubscriber : public Interface<TuvIRabBltCBSubscriber> {
 public:
  static constexpr char Name[] = "TuvIRabBltCBSubscriber";

  // 1 suspends them, 0 resumes; calls do not nest. The notifications of the process (kinds 17, 18,
  // 29, 30, 39) are never suspended.
  virtual HRESULT SetCallbacksBlocked(int iBlocked) = 0;
};

using TuvIRabBltCBSubscriber_var = Handle<TuvIRabBltCBSubscriber>;
