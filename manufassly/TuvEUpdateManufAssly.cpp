#include "manufassly/TuvEUpdateManufAssly.h"

#include "frame/ClassRecord.h"

constinit const _GUID IID_TuvIUpdateManufAssly = NameIdentifier(TuvIUpdateManufAssly::Name);

constinit ZefMetaClass* TuvEUpdateManufAssly::meta_object = nullptr;
constinit std::int32_t TuvEUpdateManufAssly::_UpdateAsslyCB = 0;

TuvEUpdateManufAssly::TuvEUpdateManufAssly() { _UpdateAsslyCB = 0; }
TuvEUpdateManufAssly::~TuvEUpdateManufAssly() = default;

ZefMetaClass* TuvEUpdateManufAssly::MetaObject() {
  if (!meta_object) {
    meta_object = fct_RetrieveMetaObject("TuvEUpdateManufAssly", TypeExtension,
                                         TuvIUpdateManufAssly::MetaObject(), "PhysicalActivity",
                                         FrameworkName, sizeof(TuvEUpdateManufAssly));
  }
  return meta_object;
}

const _GUID& TuvEUpdateManufAssly::ClassId() { return IdentifierOf(MetaObject()); }
const char* TuvEUpdateManufAssly::ClassName() { return NameOf(MetaObject()); }
ZefBaseUnknown* TuvEUpdateManufAssly::CreateItself() { return new TuvEUpdateManufAssly; }
ZefMetaClass* TuvEUpdateManufAssly::GetMetaObject() const { return MetaObject(); }
const char* TuvEUpdateManufAssly::IsA() const { return NameOf(MetaObject()); }
int TuvEUpdateManufAssly::IsAKindOf(const char* iName) const {
  return IsKindOf(MetaObject(), iName);
}
