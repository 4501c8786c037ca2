#pragma once

#include "host/component/Dictionary.h"

inline constexpr char FrameworkName[] = "TuvKelBodyInWhiteUI";

// What a class tells of its meta-object, which is null after a failed creation.
inline const char* NameOf(const ZefMetaClass* iMeta) { return iMeta ? iMeta->GetClassName() : ""; }
inline const _GUID& IdentifierOf(const ZefMetaClass* iMeta) {
  static constexpr _GUID none{};
  return iMeta ? iMeta->GetClassId() : none;
}
inline int IsKindOf(const ZefMetaClass* iMeta, const char* iName) {
  return iMeta ? iMeta->IsAKindOf(iName) : 0;
}
