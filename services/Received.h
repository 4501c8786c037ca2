#pragma once

// Owner of what a call hands out new through a pointer reference, or adds to when it is there:
// `GetWeldFromActivity(activity, welds.Out(), 1, 0)`.
template <class T>
class Received {
 public:
  Received() = default;
  Received(const Received&) = delete;
  Received& operator=(const Received&) = delete;
  ~Received() { delete object_; }

  [[nodiscard]] T*& Out() { return object_; }
  T* Get() const { return object_; }
  T& operator*() const { return *object_; }
  T* operator->() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  T* object_ = nullptr;
};
