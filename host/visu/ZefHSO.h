#pragma once

#include "host/component/PlatformClass.h"
#include "host/visu/ZefSelectionSet.h"

// The highlighted objects.
class ZefHSO : public PlatformClass<ZefHSO, ZefSelectionSet> {
 public:
  static constexpr char Name[] = "ZefHSO";

  // Says that the set is complete.
  void EndAddElements() { complete_ = true; }
  bool IsComplete() const { return complete_; }

 private:
  bool complete_ = false;
};
