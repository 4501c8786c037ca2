#pragma once

#include <utility>

#include "host/component/Handle.h"
#include "host/values/SEQUENCE_ZefBaseUnknown_ptr.h"

// Owner of the references that a container hands over with its members: those that are not taken
// one by one go with it, however its scope ends.
class Members {
 public:
  Members() = default;
  Members(const Members&) = delete;
  Members& operator=(const Members&) = delete;
  ~Members() {
    for (int i = 0; i < Size(); ++i) (void)Take(i);
  }

  [[nodiscard]] _SEQUENCE_ZefBaseUnknown_ptr& Out() { return sequence_; }
  int Size() const { return sequence_.length(); }
  // Null stays in its place. Positions count from 0.
  ZefBaseUnknown_var Take(int iIndex) { return Adopt(std::exchange(sequence_[iIndex], nullptr)); }

 private:
  _SEQUENCE_ZefBaseUnknown_ptr sequence_;
};
