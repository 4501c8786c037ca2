#include "embedded/processdb/DatabaseProcess.h"

#include <utility>

#include "embedded/processdb/ProcessDatabase.h"

namespace embedded {

DatabaseProcess::DatabaseProcess(ProcessDatabase& iDatabase, std::string iIdentifier)
    : database_(&iDatabase), identifier_(std::move(iIdentifier)) {}

DatabaseProcess::~DatabaseProcess() {
  if (database_) database_->Forget(*this);
}

ZefMetaClass* DatabaseProcess::MetaObject() {
  static ZefMetaClass* const meta =
      fct_RetrieveMetaObject("DatabaseProcess", Implementation, ZefBaseUnknown::MetaObject(),
                             nullptr, nullptr, sizeof(DatabaseProcess));
  return meta;
}

HRESULT DatabaseProcess::ListParents(IUnknown* iObject, ZefListPtrIUnknown*& oParents, int iMode) {
  return database_ ? database_->ListParents(iObject, oParents, iMode) : E_FAIL;
}

}  // namespace embedded
