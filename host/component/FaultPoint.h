#pragma once

#include <atomic>

// Simulated failures. Every operation of a host that can fail passes a fault point first; a test
// arms the counter and so makes the n-th operation answer null, empty or failure, which is how the
// paths of a failing host are walked one by one. A user who interrupts is noticed here, too: then
// Interrupted is raised. Otherwise a fault point is one load and a branch.
class FaultPoint {
 public:
  // The n-th operation from now on fails (1 is the next), and with `iAllAfter` every later one.
  static void Arm(long iNth, bool iAllAfter);
  static void Disarm();
  // How many operations failed since Arm.
  static long Struck() { return struck_; }
  // True when the operation that asks shall fail.
  static bool Strikes() { return watched_.load(std::memory_order_relaxed) != 0 && React(); }

 private:
  friend class Interruption;
  enum Reason : unsigned { kFaults = 1, kInterruption = 2 };

  static void Watch(Reason reason, bool isOn) noexcept;
  static bool React();

  static std::atomic<unsigned> watched_;
  static bool allAfter_;
  static long remaining_;
  static long struck_;
};
