#pragma once

#include <new>
#include <type_traits>
#include <typeinfo>
#include <utility>

#include "host/component/Handle.h"

namespace embedded {

// A counted pointer to an object of a known class: no query, so it never fails.
template <class T>
class Owned {
 public:
  Owned() = default;
  // Takes a reference of its own; a null pointer gives a null owner.
  explicit Owned(T* object) : identity_(object ? object->Identity() : nullptr), object_(object) {}

  // Takes over the creation reference of a new object.
  static Owned Adopt(T* object) {
    Owned owned;
    if (object) owned.identity_ = ::Adopt(object->Identity());
    owned.object_ = object;
    return owned;
  }

  T* Get() const { return object_; }
  T* operator->() const { return object_; }
  T& operator*() const { return *object_; }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  ZefBaseUnknown_var identity_;
  T* object_ = nullptr;
};

// Null when memory is exhausted, for operations that then fail.
template <class T, class... Arguments>
[[nodiscard]] Owned<T> TryMakeOwned(Arguments&&... arguments) {
  return Owned<T>::Adopt(new T(std::forward<Arguments>(arguments)...));
}

// Raises std::bad_alloc instead.
template <class T, class... Arguments>
[[nodiscard]] Owned<T> MakeOwned(Arguments&&... arguments) {
  Owned<T> made = TryMakeOwned<T>(std::forward<Arguments>(arguments)...);
  if (!made) throw std::bad_alloc();
  return made;
}

#ifdef __cpp_rtti
// The object behind an interface pointer as a class of this host; null when it is of another. Not
// for programs that are built without type information.
template <class T>
T* ObjectAs(const ZefBaseUnknown* object) {
  ZefBaseUnknown* const implementation = object ? object->GetImpl(0) : nullptr;
  if constexpr (std::is_final_v<T>) {
    // Nothing derives from the class, so there are no bases to be searched.
    if (!implementation || typeid(*implementation) != typeid(T)) return nullptr;
    return static_cast<T*>(dynamic_cast<void*>(implementation));
  }
  return dynamic_cast<T*>(implementation);
}
#endif

}  // namespace embedded
