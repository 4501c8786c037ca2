#include "embedded/model/Document.h"
#include "embedded/processdb/ProcessDatabase.h"

namespace embedded {

HRESULT Document::GetIPDObject(const ZefBaseUnknown_var& iActivity, IUnknown*& oObject) {
  const auto* const activity = ObjectAs<Activity>(iActivity.Get());
  if (!activity || !database_) return E_FAIL;
  return database_->GetActivityObject(activity->Key(), oObject);
}

HRESULT Document::GetObjectFromID(const ZefUnicodeString& iIdentifier, IUnknown*& oObject) {
  return database_ ? database_->GetObjectFromID(iIdentifier, oObject) : E_FAIL;
}

HRESULT Document::GetObjectID(IUnknown* iObject, ZefUnicodeString& oIdentifier) {
  return database_ ? database_->GetObjectID(iObject, oIdentifier) : E_FAIL;
}

HRESULT Document::GetBaseProcess(IUnknown* iParent, IUnknown*& oBase) {
  return database_ ? database_->GetBaseProcess(iParent, oBase) : E_FAIL;
}

HRESULT Document::GetIDString(IUnknown* iObject, ZefUnicodeString*& oIdentifier) {
  return database_ ? database_->GetIDString(iObject, oIdentifier) : E_FAIL;
}

HRESULT Document::ListParents(IUnknown* iObject, ZefListPtrIUnknown*& oParents, int iMode) {
  return database_ ? database_->ListParents(iObject, oParents, iMode) : E_FAIL;
}

HRESULT Document::ListRelatedVersions(IUnknown* iObject, ZefListPtrIUnknown*& oVersions) {
  return database_ ? database_->ListRelatedVersions(iObject, oVersions) : E_FAIL;
}

}  // namespace embedded
