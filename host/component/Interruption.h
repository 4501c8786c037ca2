#pragma once

#include <atomic>

// Passes through everything when the user has had enough. It is no failure, so it is no
// std::exception that somebody takes for one. Like any exception of a host it leaves what it passes
// half done.
struct Interrupted {};

// The user's wish that what runs should end, and where it is noticed: in every operation of a host
// that passes a fault point, and wherever Check stands. Noticed it is only inside a Scope, once,
// and while nothing defers it.
class Interruption {
 public:
  // For a signal handler, too.
  static void Request() noexcept;
  static bool IsRequested() noexcept { return isRequested_.load(std::memory_order_relaxed); }
  static bool IsDeferred() noexcept { return deferrals_.load(std::memory_order_relaxed) > 0; }
  // The wish is granted, or came too late.
  static void Forget() noexcept;
  // Raises Interrupted where somebody wishes it. Not for destructors.
  static void Check() {
    if (IsRequested()) Notice();
  }
  // As if the request came with the n-th operation in a Scope from now on, 1 being the next; 0
  // takes that back.
  static void RequestAt(long iNth) noexcept;

  // Whoever opens it catches Interrupted.
  class Scope {
   public:
    Scope() noexcept { ++scopes_; }
    ~Scope() { --scopes_; }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
  };

  // For what is to be done as a whole or must not raise.
  class Deferral {
   public:
    Deferral() noexcept { ++deferrals_; }
    ~Deferral() { --deferrals_; }
    Deferral(const Deferral&) = delete;
    Deferral& operator=(const Deferral&) = delete;
  };

 private:
  friend class FaultPoint;

  // Of an operation of the host: what was raised may have destructors ask once more.
  static void Pass() {
    if (!hasRaised_) Notice();
  }
  static void Notice();

  static std::atomic<bool> isRequested_;
  static std::atomic<int> deferrals_;
  static int scopes_;
  static long countdown_;
  static bool hasRaised_;
};
