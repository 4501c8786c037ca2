#pragma once

#include "host/visu/ZefSelectionSet.h"

// The highlighted objects.
class ZefHSO : public ZefSelectionSet {
 public:
  // Says that the set is complete.
  void EndAddElements() { complete_ = true; }
  bool IsComplete() const { return complete_; }

 private:
  bool complete_ = false;
};
