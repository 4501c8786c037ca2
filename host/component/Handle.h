#pragma once

#include <concepts>
#include <cstddef>
#include <exception>
#include <type_traits>
#include <utility>

#include "host/component/ZefBaseUnknown.h"

// Raised when a null handle is used with `->`.
class ZefNullHandleException : public std::exception {
 public:
  ~ZefNullHandleException() override;
  const char* what() const noexcept override;
};

// Raises the exception out of line.
[[noreturn]] void ThrowNullHandle();

// 1 when both pointers, of whatever interfaces, lead to one object.
bool IsSameObject(const ZefBaseUnknown* a, const ZefBaseUnknown* b);

// Reference-counted handle of an interface. Made from a raw pointer or from a handle of another
// interface it queries the object, so it is null when the object does not answer the interface,
// and it takes a reference of its own: a reference that came with a raw pointer is still the
// receiver's to give back (or to hand over with Adopt).
template <class T>
class Handle {
 public:
  Handle() noexcept = default;
  Handle(std::nullptr_t) noexcept {}
  Handle(const Handle& other) noexcept : object_(other.object_) {
    if (object_) object_->AddRef();
  }
  Handle(Handle&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  template <std::convertible_to<const IUnknown*> P>
  requires std::is_pointer_v<P> Handle(P object)
      : object_(Query(const_cast<std::remove_const_t<std::remove_pointer_t<P>>*>(object))) {}
  template <class U>
  Handle(const Handle<U>& other) : object_(Query(other.Get())) {}
  ~Handle() {
    if (object_) object_->Release();
  }

  // Swapping first makes `activity = activity->Next()` safe.
  Handle& operator=(Handle other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }

  // Takes over the reference that came with `object`.
  static Handle Adopt(T* object) noexcept {
    Handle handle;
    handle.object_ = object;
    return handle;
  }

  // Gives the reference away: the caller owns it from now on.
  [[nodiscard]] T* Detach() noexcept { return std::exchange(object_, nullptr); }

  // Slot for an out-argument that hands over a reference. What the handle held is given back first.
  [[nodiscard]] T*& Put() noexcept {
    Clear();
    return object_;
  }

  T* operator->() const {
    if (!object_) ThrowNullHandle();
    return object_;
  }
  T& operator*() const { return *operator->(); }

  // The pointer for passing on, without a reference. Not from a temporary handle, which would give
  // the object back before the pointer is used.
  T* Get() const noexcept { return object_; }
  operator T*() const& noexcept { return object_; }
  operator T*() const&& = delete;

  explicit operator bool() const noexcept { return object_ != nullptr; }
  bool operator!() const noexcept { return object_ == nullptr; }

  friend bool operator==(const Handle& handle, std::nullptr_t) noexcept { return !handle.object_; }

 private:
  template <class P>
  static T* Query(P* object) {
    void* answer = nullptr;
    if constexpr (std::is_same_v<typename T::QueriedAs, T>) {
      if (object) object->QueryInterface(T::InterfaceId(), &answer);
      return static_cast<T*>(answer);
    } else {
      // A class that is not an interface has no identifier to ask for.
      T* same = nullptr;
      if constexpr (std::is_convertible_v<P*, T*>) {
        same = object;
      } else {
        same = dynamic_cast<T*>(object);
      }
      if (same) same->AddRef();
      return same;
    }
  }
  void Clear() noexcept {
    if (T* const object = std::exchange(object_, nullptr)) object->Release();
  }

  T* object_ = nullptr;
};

template <class T, class U>
bool operator==(const Handle<T>& a, const Handle<U>& b) {
  return IsSameObject(a.Get(), b.Get());
}
// Without it the comparison would be one of interface addresses.
template <class T, std::convertible_to<const ZefBaseUnknown*> P>
requires std::is_pointer_v<P>
bool operator==(const Handle<T>& handle, P object) { return IsSameObject(handle.Get(), object); }

using ZefBaseUnknown_var = Handle<ZefBaseUnknown>;

// Takes over the reference that came with a result; one line, where the result is received.
template <class T>
[[nodiscard]] Handle<T> Adopt(T* object) noexcept {
  return Handle<T>::Adopt(object);
}

// The same, asking the object for another interface; null when it does not answer it.
template <class I, class T>
[[nodiscard]] Handle<I> AdoptAs(T* object) {
  return Handle<I>(Handle<T>::Adopt(object));
}

// A new object of a class with one base, its creation reference held by the handle; null when
// memory is exhausted.
template <class T, class... Arguments>
[[nodiscard]] Handle<T> Make(Arguments&&... arguments) {
  return Handle<T>::Adopt(new T(std::forward<Arguments>(arguments)...));
}
