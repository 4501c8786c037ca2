#include "host/component/FaultPoint.h"

#include "host/component/Interruption.h"

std::atomic<unsigned> FaultPoint::watched_ = 0;
bool FaultPoint::allAfter_ = false;
long FaultPoint::remaining_ = 0;
long FaultPoint::struck_ = 0;

void FaultPoint::Watch(Reason reason, bool isOn) noexcept {
  if (isOn) {
    watched_.fetch_or(reason, std::memory_order_relaxed);
  } else {
    watched_.fetch_and(~static_cast<unsigned>(reason), std::memory_order_relaxed);
  }
}

void FaultPoint::Arm(long iNth, bool iAllAfter) {
  allAfter_ = iAllAfter;
  remaining_ = iNth;
  struck_ = 0;
  Watch(kFaults, true);
}

void FaultPoint::Disarm() { Watch(kFaults, false); }

bool FaultPoint::React() {
  const unsigned watched = watched_.load(std::memory_order_relaxed);
  if (watched & kInterruption) Interruption::Pass();
  if (!(watched & kFaults)) return false;
  if (remaining_ > 0) --remaining_;
  if (remaining_ > 0) return false;
  if (struck_ > 0 && !allAfter_) return false;
  ++struck_;
  return true;
}
