#include "host/component/ZefMetaClass.h"

#include <cstdlib>

#include "host/component/Allocation.h"

ZefMetaClass::ZefMetaClass(const _GUID* iIID, const char* iName, ZefMetaClass* iBase,
                           ZefMetaClass* iBase2, ENUMTypeOfClass iKind)
    : id_(iIID ? *iIID : NameIdentifier(iName)),
      name_(iName),
      base_(iBase),
      base2_(iBase2),
      kind_(iKind) {}

int ZefMetaClass::IsAKindOf(const char* iName) const {
  if (!iName) return 0;
  for (const ZefMetaClass* meta = this; meta; meta = meta->base_) {
    if (meta->name_ == iName) return 1;
    if (meta->base2_ && meta->base2_->IsAKindOf(iName)) return 1;
  }
  return 0;
}

void ZefMetaClass::Describe(ENUMTypeOfClass iKind, ZefMetaClass* iBase, const char* iExtendedType,
                            const char* iFramework, int iInstanceSize) {
  kind_ = iKind;
  base_ = iBase;
  extendedType_ = iExtendedType ? iExtendedType : "";
  SetFWname(iFramework);
  instanceSize_ = iInstanceSize;
}

void* ZefMetaClass::operator new(std::size_t size) noexcept { return AllocateOrNull(size); }
void ZefMetaClass::operator delete(void* memory) noexcept { std::free(memory); }
