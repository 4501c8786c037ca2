#pragma once

#include <cstdint>
#include <tuple>
#include <type_traits>

#include "host/component/Extensions.h"
#include "host/component/FaultPoint.h"
#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/component/InterfaceTable.h"

// Which of its class's interfaces an object answers is data of the object.
class SelectiveObject {
 public:
  // False when the class does not have the interface. The root interface cannot be withheld.
  virtual bool AnswerInterface(const _GUID& iIID, bool iAnswer) = 0;

 protected:
  ~SelectiveObject() = default;
};

// Its data, a base of its own so that it stands at the beginning of the object.
class WithheldInterfaces {
 protected:
  // A bit for each position in the class's table.
  std::uint64_t withheld_ = 0;
};

// Base of an object with several interfaces, listed once: `class Part : public
// ComponentObject<ZefIProduct, ZefISPPItem>`. It gives the object one identity, one count and one
// query; the class adds GetMetaObject and the operations. What a query reads stands together at the
// beginning of the object.
template <class Primary, class... Others>
class ComponentObject : public Primary,
                        protected WithheldInterfaces,
                        public Others...,
                        public SelectiveObject {
 public:
  // The object as its root interface; the conversion itself would be ambiguous.
  ZefBaseUnknown* Identity() { return static_cast<Primary*>(this); }
  const ZefBaseUnknown* Identity() const { return static_cast<const Primary*>(this); }

  HRESULT QueryInterface(const _GUID& iIID, void** oPtr) override {
    if (!oPtr) return E_FAIL;
    const int position = Table().Find(iIID);
    *oPtr = position == 0 ? Identity() : Resolve(position, iIID);
    if (!*oPtr) return E_FAIL;
    AddRef();
    return S_OK;
  }
  ZefBaseUnknown* QueryInterface(const char* iInterfaceName) override {
    const int position = Table().Find(iInterfaceName);
    if (position <= 0) return Identity()->ZefBaseUnknown::QueryInterface(iInterfaceName);
    if (!Answers(position) || FaultPoint::Strikes()) return nullptr;
    AddRef();
    return static_cast<ZefBaseUnknown*>(At(position));
  }
  unsigned int AddRef() override { return Identity()->CountUp(); }
  unsigned int Release() override { return Identity()->CountDown(); }
  ZefBaseUnknown* GetImpl(int) const override { return const_cast<ZefBaseUnknown*>(Identity()); }
  void SetImpl(ZefBaseUnknown*) override {}

  bool AnswerInterface(const _GUID& iIID, bool iAnswer) override {
    const int position = Table().Find(iIID);
    if (position <= 0) return false;
    const std::uint64_t bit = std::uint64_t{1} << position;
    withheld_ = iAnswer ? withheld_ & ~bit : withheld_ | bit;
    return true;
  }

  static void* operator new(std::size_t size) noexcept {
    return ZefBaseUnknown::operator new(size);
  }
  static void operator delete(void* memory) noexcept { ZefBaseUnknown::operator delete(memory); }

 private:
  void* At(int position) { return reinterpret_cast<char*>(this) + Table().Offset(position); }
  bool Answers(int position) const { return !((withheld_ >> position) & 1u); }

  void* Resolve(int position, const _GUID& iIID) {
    if (iIID == IID_IUnknown) return Identity();
    if (FaultPoint::Strikes()) return nullptr;
    if (position < 0) return FindOrCreateExtension(Identity(), iIID);
    return Answers(position) ? At(position) : nullptr;
  }

  const InterfaceTable& Table() {
    static const InterfaceTable table = [this] {
      InterfaceTable made;
      made.Add(IID_ZefBaseUnknown, ZefBaseUnknown::ClassName(), OffsetOf(Identity()));
      AddChain<Primary>(made, static_cast<Primary*>(this));
      (AddChain<Others>(made, static_cast<Others*>(this)), ...);
      return made;
    }();
    return table;
  }
  template <class I>
  void AddChain(InterfaceTable& table, I* place) {
    if constexpr (!std::is_same_v<I, ZefBaseUnknown>) {
      table.Add(I::InterfaceId(), I::ClassName(), OffsetOf(place));
      I::MetaObject();
      AddChain<typename I::BaseInterface>(table, place);
    }
  }
  std::ptrdiff_t OffsetOf(void* place) const {
    return static_cast<char*>(place) - reinterpret_cast<const char*>(this);
  }
};

// Makes an object answer one of its class's interfaces or withhold it. False when the object is
// not selective or has no such interface.
bool AnswerInterface(ZefBaseUnknown* iObject, const _GUID& iIID, bool iAnswer);
