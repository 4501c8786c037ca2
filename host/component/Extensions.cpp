#include "host/component/Extensions.h"

#include <unordered_map>
#include <utility>
#include <vector>

#include "host/component/Dictionary.h"

namespace {

struct Extension {
  _GUID interface;
  ZefBaseUnknown* object;
};

struct Records {
  std::unordered_map<const ZefBaseUnknown*, std::vector<Extension>> extensionsOf;
  std::unordered_map<const ZefBaseUnknown*, ZefBaseUnknown*> extendedBy;
};

Records& TheRecords() {
  static Records* const records = new Records;
  return *records;
}

ZefBaseUnknown* Find(const ZefBaseUnknown* object, const _GUID& id) {
  if (!object->Has(ObjectRecord::HasExtensions)) return nullptr;
  for (const Extension& extension : TheRecords().extensionsOf[object]) {
    if (extension.interface == id) return extension.object;
  }
  return nullptr;
}

}  // namespace

ZefBaseUnknown* FindOrCreateExtension(ZefBaseUnknown* iObject, const _GUID& iIID) {
  if (ZefBaseUnknown* const known = Find(iObject, iIID)) return known;
  const ExtensionFactory factory = FindExtensionFactory(iObject->GetMetaObject(), iIID);
  if (!factory) return nullptr;
  ZefBaseUnknown* const extension = factory(iObject, iObject);
  if (extension) extension->Release();
  return Find(iObject, iIID);
}

void KeepExtension(ZefBaseUnknown* iObject, const _GUID& iIID, ZefBaseUnknown* iExtension) {
  ZefBaseUnknown* const identity = IdentityOf(iObject);
  std::vector<Extension>& kept = TheRecords().extensionsOf[identity];
  kept.reserve(kept.size() + 1);
  iExtension->SetImpl(identity);
  kept.push_back({iIID, iExtension});
  identity->Note(ObjectRecord::HasExtensions, true);
}

ZefBaseUnknown* ExtendedObject(const ZefBaseUnknown* iExtension) {
  if (!iExtension->Has(ObjectRecord::ExtendsAnother)) return nullptr;
  return TheRecords().extendedBy[iExtension];
}

void SetExtendedObject(ZefBaseUnknown* iExtension, ZefBaseUnknown* iObject) {
  if (iObject) {
    TheRecords().extendedBy[iExtension] = iObject;
  } else {
    TheRecords().extendedBy.erase(iExtension);
  }
  iExtension->Note(ObjectRecord::ExtendsAnother, iObject != nullptr);
}

void DestroyExtensions(ZefBaseUnknown* iObject) {
  iObject->Note(ObjectRecord::HasExtensions, false);
  const auto node = TheRecords().extensionsOf.extract(iObject);
  if (node.empty()) return;
  for (const Extension& extension : node.mapped()) delete extension.object;
}
