#pragma once

#include <cstddef>

#include "host/component/IUnknown.h"
#include "host/component/InteractiveThread.h"

class ZefMetaClass;

extern const _GUID IID_ZefBaseUnknown;

// What the platform keeps about an object outside of it.
enum class ObjectRecord : unsigned char { ExtendsAnother = 1, HasExtensions = 2, InCallbacks = 4 };

// Root of all objects of the platform. An object has one identity, the pointer that it answers for
// IID_ZefBaseUnknown, and one reference count, whichever of its interfaces is held. It starts with
// one reference, which belongs to whoever created it. Counting is not atomic: the platform has one
// interactive thread, and a debug build asserts it.
//
// The 17 operations below are the first slots of every interface, in this order.
class ZefBaseUnknown : public IUnknown {
 public:
  ZefBaseUnknown() noexcept = default;
  ZefBaseUnknown(const ZefBaseUnknown&) = delete;
  ZefBaseUnknown& operator=(const ZefBaseUnknown&) = delete;

  // Stores a pointer of exactly the asked interface with a reference for the caller, or null.
  HRESULT QueryInterface(const _GUID& iIID, void** oPtr) override;
  // Both answer the new count; an extension counts on the object that it extends.
  unsigned int AddRef() override;
  unsigned int Release() override;

  // The dispatch operations are not offered by this platform: E_FAIL.
  virtual HRESULT GetTypeInfoCount(unsigned int* oCount);
  virtual HRESULT GetTypeInfo(unsigned int iIndex, unsigned int iLocale, void** oInfo);
  virtual HRESULT GetIDsOfNames(const _GUID& iIID, void* iNames, unsigned int iCount,
                                unsigned int iLocale, void* oIds);
  virtual HRESULT Invoke(int iMember, const _GUID& iIID, unsigned int iLocale,
                         unsigned short iFlags, void* ioParameters, void* oResult, void* oException,
                         unsigned int* oArgumentError);

  virtual ~ZefBaseUnknown();

  // The late class of the object, also when asked through one of its interfaces.
  virtual ZefMetaClass* GetMetaObject() const;
  virtual const char* IsA() const;
  // 1 for the class name or that of any base, exact and case-sensitive; else 0, also for null.
  virtual int IsAKindOf(const char* iName) const;

  // The implementation object, no reference taken. That is the object's identity: the pointer that
  // every interface of it answers for IID_ZefBaseUnknown, by identifier as by name. Of an
  // extension: the identity of the object that it extends, null while there is none. `iMode` is 0.
  virtual ZefBaseUnknown* GetImpl(int iMode) const;
  // Makes this an extension of `iImpl`, which is not counted; null ends that.
  virtual void SetImpl(ZefBaseUnknown* iImpl);

  virtual int IsNull() const;
  // 1 when both are the same object, whichever interfaces are compared.
  virtual int IsEqual(const ZefBaseUnknown* iOther) const;

  // Query by interface name: a pointer with a reference for the caller, or null.
  virtual ZefBaseUnknown* QueryInterface(const char* iInterfaceName);

  virtual HRESULT ChangeComponentState(int iFrom, int iTo);

  // The interface that a handle of the class asks for.
  using QueriedAs = ZefBaseUnknown;

  static const char* ClassName();
  static ZefMetaClass* MetaObject();
  static const _GUID& InterfaceId() { return IID_ZefBaseUnknown; }

  // Answers null when memory is exhausted, so that a failed creation can be reported as null.
  static void* operator new(std::size_t size) noexcept;
  static void* operator new(std::size_t, void* place) noexcept { return place; }
  static void operator delete(void* memory) noexcept;

  // Current count of the object, whichever of its interfaces is asked; for audits.
  unsigned int ReferenceCount() const;

  // For the platform's own book-keeping: counting without the virtual call, and what is noted.
  unsigned int CountUp() {
    AssertInteractiveThread();
    return Has(ObjectRecord::ExtendsAnother) ? CountUpExtended() : ++references_;
  }
  unsigned int CountDown() {
    AssertInteractiveThread();
    if (Has(ObjectRecord::ExtendsAnother)) return CountDownExtended();
    return --references_ > 0 ? references_ : EndObject();
  }
  bool Has(ObjectRecord iRecord) const { return records_ & static_cast<unsigned char>(iRecord); }
  void Note(ObjectRecord iRecord, bool iPresent);

 private:
  unsigned int CountUpExtended();
  unsigned int CountDownExtended();
  unsigned int EndObject();

  unsigned int references_ = 1;
  unsigned char records_ = 0;
};

// The one object behind an interface or an extension, as it answers for IID_ZefBaseUnknown; no
// reference taken, null for null.
ZefBaseUnknown* IdentityOf(const ZefBaseUnknown* iObject);

// Makes the n-th allocation from now on (1 is the next) through ZefBaseUnknown's, ZefMetaClass's or
// ZefGraphicPrimitive's operator new answer null, once; 0 disarms.
void FailAllocation(int iNth);
