#include "host/component/ZefBaseUnknown.h"

#include <cassert>
#include <cstring>
#include <thread>

#include "host/component/Callbacks.h"
#include "host/component/Dictionary.h"
#include "host/component/Extensions.h"
#include "host/component/LiveObjects.h"

constinit const _GUID IID_IUnknown = NameIdentifier("IUnknown");
constinit const _GUID IID_ZefBaseUnknown = NameIdentifier("ZefBaseUnknown");

namespace {

// Keeps an object that takes and gives references while it dies from dying twice.
constexpr unsigned int kDying = 1u << 30;

bool IsRootIdentifier(const _GUID& id) { return id == IID_ZefBaseUnknown || id == IID_IUnknown; }

// An object whose interfaces are its only base classes names them in its class's base chain.
bool ChainAnswers(const ZefMetaClass* meta, const _GUID& id) {
  for (; meta; meta = meta->GetBase()) {
    if (meta->GetKind() == TypeInterface && meta->GetClassId() == id) return true;
  }
  return false;
}

}  // namespace

ZefBaseUnknown* IdentityOf(const ZefBaseUnknown* iObject) {
  if (!iObject) return nullptr;
  ZefBaseUnknown* const implementation = iObject->GetImpl(0);
  return implementation ? implementation : const_cast<ZefBaseUnknown*>(iObject);
}

void CheckInteractiveThread() {
  [[maybe_unused]] static const std::thread::id interactive = std::this_thread::get_id();
  assert(std::this_thread::get_id() == interactive && "objects belong to one thread");
}

ZefBaseUnknown::~ZefBaseUnknown() {
  if (Has(ObjectRecord::HasExtensions)) DestroyExtensions(this);
  if (Has(ObjectRecord::InCallbacks)) ForgetCallbacks(this);
  if (Has(ObjectRecord::ExtendsAnother)) SetExtendedObject(this, nullptr);
}

HRESULT ZefBaseUnknown::QueryInterface(const _GUID& iIID, void** oPtr) {
  if (!oPtr) return E_FAIL;
  *oPtr = nullptr;
  ZefBaseUnknown* const extended = ExtendedObject(this);
  if (IsRootIdentifier(iIID)) {
    *oPtr = extended ? extended : this;
  } else if (ChainAnswers(GetMetaObject(), iIID)) {
    *oPtr = this;
  } else if (extended) {
    return extended->QueryInterface(iIID, oPtr);
  } else {
    *oPtr = FindOrCreateExtension(this, iIID);
  }
  if (!*oPtr) return E_FAIL;
  AddRef();
  return S_OK;
}

unsigned int ZefBaseUnknown::AddRef() { return CountUp(); }
unsigned int ZefBaseUnknown::Release() { return CountDown(); }

unsigned int ZefBaseUnknown::CountUpExtended() { return ExtendedObject(this)->AddRef(); }
unsigned int ZefBaseUnknown::CountDownExtended() { return ExtendedObject(this)->Release(); }

unsigned int ZefBaseUnknown::EndObject() {
  references_ = kDying;
  if (Has(ObjectRecord::HasExtensions)) DestroyExtensions(this);
  delete this;
  return 0;
}

HRESULT ZefBaseUnknown::GetTypeInfoCount(unsigned int*) { return E_FAIL; }
HRESULT ZefBaseUnknown::GetTypeInfo(unsigned int, unsigned int, void**) { return E_FAIL; }
HRESULT ZefBaseUnknown::GetIDsOfNames(const _GUID&, void*, unsigned int, unsigned int, void*) {
  return E_FAIL;
}
HRESULT ZefBaseUnknown::Invoke(int, const _GUID&, unsigned int, unsigned short, void*, void*, void*,
                               unsigned int*) {
  return E_FAIL;
}

ZefMetaClass* ZefBaseUnknown::GetMetaObject() const { return MetaObject(); }
const char* ZefBaseUnknown::IsA() const { return GetMetaObject()->GetClassName(); }
int ZefBaseUnknown::IsAKindOf(const char* iName) const { return GetMetaObject()->IsAKindOf(iName); }

ZefBaseUnknown* ZefBaseUnknown::GetImpl(int) const {
  if (Has(ObjectRecord::ExtendsAnother)) return ExtendedObject(this);
  const bool bareExtension = GetMetaObject()->GetKind() == TypeExtension;
  return bareExtension ? nullptr : const_cast<ZefBaseUnknown*>(this);
}

void ZefBaseUnknown::SetImpl(ZefBaseUnknown* iImpl) { SetExtendedObject(this, IdentityOf(iImpl)); }

int ZefBaseUnknown::IsNull() const { return 0; }

int ZefBaseUnknown::IsEqual(const ZefBaseUnknown* iOther) const {
  return iOther && IdentityOf(this) == IdentityOf(iOther) ? 1 : 0;
}

ZefBaseUnknown* ZefBaseUnknown::QueryInterface(const char* iInterfaceName) {
  if (!iInterfaceName) return nullptr;
  // The root interface is known by name also before anyone asked for its meta-object.
  const bool isRoot = std::strcmp(iInterfaceName, ClassName()) == 0;
  const ZefMetaClass* const meta = isRoot ? MetaObject() : FindInterface(iInterfaceName);
  void* answer = nullptr;
  if (meta) QueryInterface(meta->GetClassId(), &answer);
  return static_cast<ZefBaseUnknown*>(answer);
}

HRESULT ZefBaseUnknown::ChangeComponentState(int, int) { return S_OK; }

const char* ZefBaseUnknown::ClassName() { return "ZefBaseUnknown"; }

ZefMetaClass* ZefBaseUnknown::MetaObject() {
  static ZefMetaClass* const meta = RegisterInterface(IID_ZefBaseUnknown, ClassName(), nullptr);
  return meta;
}

void* ZefBaseUnknown::operator new(std::size_t size) noexcept { return AllocateObject(size); }
void ZefBaseUnknown::operator delete(void* memory) noexcept { FreeObject(memory); }

unsigned int ZefBaseUnknown::ReferenceCount() const { return IdentityOf(this)->references_; }

void ZefBaseUnknown::Note(ObjectRecord iRecord, bool iPresent) {
  const auto bit = static_cast<unsigned char>(iRecord);
  records_ = static_cast<unsigned char>(iPresent ? records_ | bit : records_ & ~bit);
}
