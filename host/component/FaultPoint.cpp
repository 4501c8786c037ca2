#include "host/component/FaultPoint.h"

bool FaultPoint::armed_ = false;
bool FaultPoint::allAfter_ = false;
long FaultPoint::remaining_ = 0;
long FaultPoint::struck_ = 0;

void FaultPoint::Arm(long iNth, bool iAllAfter) {
  armed_ = true;
  allAfter_ = iAllAfter;
  remaining_ = iNth;
  struck_ = 0;
}

void FaultPoint::Disarm() { armed_ = false; }

bool FaultPoint::CountDown() {
  if (remaining_ > 0) --remaining_;
  if (remaining_ > 0) return false;
  if (struck_ > 0 && !allAfter_) return false;
  ++struck_;
  return true;
}
