#pragma once

#include <memory>
#include <utility>

#include "host/component/ComponentObject.h"
#include "host/values/ZefListValZefBaseUnknown_var.h"

// A host of one's own in a few hundred lines: what planning welds and keeping assemblies in step
// need. Start from it: Items.h has what activities work on, Activity.h the steps, Process.h the
// document around them, Application.h what the library asks of the program.
namespace workshop {

class Process;

// The process that an object belongs to. All of its objects share it, and it leads to null once the
// process ended: whoever holds an object may keep it longer.
using Home = std::shared_ptr<Process*>;

// Objects, positions from 1.
using List = ZefListValZefBaseUnknown_var;

// A reference for the caller, as results carry it.
inline ZefBaseUnknown* WithReference(ZefBaseUnknown* object) {
  return ZefBaseUnknown_var(object).Detach();
}

// Keeps an object of a known class; the platform's own handles know interfaces alone.
template <class T>
class Ref {
 public:
  Ref() = default;
  explicit Ref(T* object) : identity_(object ? object->Identity() : nullptr), object_(object) {}

  // Takes over the reference with which an object starts.
  template <class... Arguments>
  static Ref Make(Arguments&&... arguments) {
    Ref made;
    made.object_ = new T(std::forward<Arguments>(arguments)...);
    made.identity_ = Adopt(made.object_->Identity());
    return made;
  }
  // The same for a class derived from it.
  template <class U>
  Ref(const Ref<U>& other) : Ref(other.Get()) {}

  T* Get() const { return object_; }
  T* operator->() const { return object_; }
  T& operator*() const { return *object_; }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  ZefBaseUnknown_var identity_;
  T* object_ = nullptr;
};

// The object behind an interface as a class of this host, or null.
template <class T>
T* ObjectAs(const ZefBaseUnknown* object) {
  return object ? dynamic_cast<T*>(object->GetImpl(0)) : nullptr;
}

// The late class of objects, which the library knows by name.
inline ZefMetaClass* ClassNamed(const char* name, const char* base = nullptr) {
  if (ZefMetaClass* const known = FindMetaClass(name)) return known;
  ZefMetaClass* const above = base ? ClassNamed(base) : ZefBaseUnknown::MetaObject();
  return fct_RetrieveMetaObject(name, Implementation, above, nullptr, nullptr, 0);
}

// Fills what an operation gives out.
template <class T, class Value>
HRESULT Give(T& out, const Value& value) {
  out = value;
  return S_OK;
}

// A list for the caller, who deletes it.
inline List* NewList(const List& list) { return std::make_unique<List>(list).release(); }

}  // namespace workshop
