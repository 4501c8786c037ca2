#include "host/component/Dictionary.h"

#include <cstring>
#include <deque>
#include <functional>
#include <map>
#include <new>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/component/Allocation.h"
#include "host/component/Extensions.h"

constinit const _GUID CLSID_ZefMetaClass = NameIdentifier("ZefMetaClass");

namespace {

struct IdentifierOrder {
  bool operator()(const _GUID& a, const _GUID& b) const {
    return std::memcmp(&a, &b, sizeof(_GUID)) < 0;
  }
};

struct Dictionary {
  std::unordered_map<std::string, ZefMetaClass*> classes;
  std::unordered_map<std::string, ZefMetaClass*> interfacesByName;
  std::map<_GUID, ZefMetaClass*, IdentifierOrder> interfaces;
  // Replaced when their library was loaded anew; others may still hold them.
  std::vector<ZefMetaClass*> replaced;
  // By interface first: most interfaces have no factory at all.
  std::map<_GUID, std::map<std::string, ExtensionFactory, std::less<>>, IdentifierOrder> factories;
  // Grows only, so that no meta-object ever moves.
  std::deque<ZefMetaClass> owned;
};

// Never destroyed: objects of static life are queried until the process ends.
Dictionary& TheDictionary() {
  static Dictionary* const dictionary = new Dictionary;
  return *dictionary;
}

bool NamesNoType(const std::string& type) {
  return type.empty() || type == "Zefnull" || type == "ZefNull";
}

void MakeKnown(const _GUID& id, const char* name, ZefMetaClass* meta) {
  if (!meta) return;
  ZefMetaClass*& known = TheDictionary().interfaces[id];
  if (known && known != meta) TheDictionary().replaced.push_back(known);
  known = meta;
  TheDictionary().interfacesByName[name] = meta;
}

bool LiesIn(ExtensionFactory factory, const void* begin, const void* end) {
  const void* const code = reinterpret_cast<const void*>(factory);
  return std::less_equal<>()(begin, code) && std::less<>()(code, end);
}

}  // namespace

ZefMetaClass* fct_RetrieveMetaObject(const char* iClass, ENUMTypeOfClass iKind, ZefMetaClass* iBase,
                                     const char* iExtendedType, const char* iFramework,
                                     int iInstanceSize) {
  if (!iClass) return nullptr;
  ZefMetaClass*& meta = TheDictionary().classes[iClass];
  if (!meta) meta = &TheDictionary().owned.emplace_back(nullptr, iClass, iBase, nullptr, iKind);
  meta->Describe(iKind, iBase, iExtendedType, iFramework, iInstanceSize);
  return meta;
}

HRESULT AddDictionary(const _GUID* iIID, const _GUID*, const char* iName, const char*, const char*,
                      ZefMetaClass* iMeta, void*, void*, int, int, int, const char*) {
  if (!iIID || !iName) return E_FAIL;
  MakeKnown(*iIID, iName, iMeta);
  return S_OK;
}

ZefMetaClass* RegisterInterface(const _GUID& iIID, const char* iName, ZefMetaClass* iBase) {
  if (ZefMetaClass* const known = FindInterface(iName)) return known;
  ZefMetaClass& meta =
      TheDictionary().owned.emplace_back(&iIID, iName, iBase, nullptr, TypeInterface);
  MakeKnown(iIID, iName, &meta);
  return &meta;
}

ZefFillDictionary::ZefFillDictionary(ZefMetaClass* iExtension, ZefMetaClass* iInterface,
                                     ExtensionFactory iFactory, void*, int) {
  if (!iExtension || !iInterface || NamesNoType(iExtension->GetExtendedType())) return;
  TheDictionary().factories[iInterface->GetClassId()][iExtension->GetExtendedType()] = iFactory;
}

ZefFillDictionary::ZefFillDictionary(const _GUID& iIID, const _GUID&, ZefMetaClass* iMeta, void*) {
  if (iMeta) MakeKnown(iIID, iMeta->GetClassName(), iMeta);
}

ZefBaseUnknown* ToCreateBOA(ZefBaseUnknown* iExtended, ZefBaseUnknown*, ZefMetaClass*,
                            const _GUID& iIID, ZefBaseUnknown* (*iCreate)()) {
  ZefBaseUnknown* const extension = iCreate ? iCreate() : nullptr;
  if (!extension || !iExtended) return extension;
  try {
    KeepExtension(iExtended, iIID, extension);
  } catch (const std::bad_alloc&) {
    NoteFailedAllocation();
    delete extension;
    return nullptr;
  }
  extension->AddRef();
  return extension;
}

ZefMetaClass* FindMetaClass(const char* iName) {
  if (!iName) return nullptr;
  const auto& classes = TheDictionary().classes;
  const auto found = classes.find(iName);
  return found == classes.end() ? nullptr : found->second;
}

ZefMetaClass* FindInterface(const _GUID& iIID) {
  const auto& interfaces = TheDictionary().interfaces;
  const auto found = interfaces.find(iIID);
  return found == interfaces.end() ? nullptr : found->second;
}

ZefMetaClass* FindInterface(const char* iName) {
  if (!iName) return nullptr;
  const auto& interfaces = TheDictionary().interfacesByName;
  const auto found = interfaces.find(iName);
  return found == interfaces.end() ? nullptr : found->second;
}

ExtensionFactory FindExtensionFactory(const ZefMetaClass* iLateType, const _GUID& iIID) {
  const auto& factories = TheDictionary().factories;
  const auto byType = factories.find(iIID);
  if (byType == factories.end()) return nullptr;
  for (; iLateType; iLateType = iLateType->GetBase()) {
    const auto found = byType->second.find(iLateType->GetClassName());
    if (found != byType->second.end()) return found->second;
  }
  return nullptr;
}

int PurgeFactories(const void* iBegin, const void* iEnd) {
  int purged = 0;
  for (auto& [interface, byType] : TheDictionary().factories) {
    purged += static_cast<int>(std::erase_if(
        byType, [&](const auto& entry) { return LiesIn(entry.second, iBegin, iEnd); }));
  }
  return purged;
}
