#include "host/component/Interruption.h"

#include <exception>

#include "host/component/FaultPoint.h"

static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<int>::is_always_lock_free);

std::atomic<bool> Interruption::isRequested_ = false;
std::atomic<int> Interruption::deferrals_ = 0;
int Interruption::scopes_ = 0;
long Interruption::countdown_ = 0;
bool Interruption::hasRaised_ = false;

void Interruption::Request() noexcept {
  isRequested_.store(true, std::memory_order_relaxed);
  FaultPoint::Watch(FaultPoint::kInterruption, true);
}

void Interruption::RequestAt(long iNth) noexcept {
  countdown_ = iNth;
  FaultPoint::Watch(FaultPoint::kInterruption, iNth > 0 || IsRequested());
}

void Interruption::Forget() noexcept {
  hasRaised_ = false;
  isRequested_.store(false, std::memory_order_relaxed);
  FaultPoint::Watch(FaultPoint::kInterruption, countdown_ > 0);
}

void Interruption::Notice() {
  if (scopes_ == 0) return;
  if (countdown_ > 0 && --countdown_ == 0) isRequested_.store(true, std::memory_order_relaxed);
  if (!IsRequested() || IsDeferred() || std::uncaught_exceptions() > 0) return;
  hasRaised_ = true;
  throw Interrupted();
}
