#pragma once

#include <string>

#include "host/component/Component.h"
#include "host/processdb/ProcessDb.h"

namespace embedded {

class ProcessDatabase;

// A process of the database as the host hands it out. It does not keep the database open: once
// that is closed the object answers E_FAIL.
class DatabaseProcess : public ComponentObject<ZefIIPDDataMgt> {
 public:
  DatabaseProcess(ProcessDatabase& iDatabase, std::string iIdentifier);
  ~DatabaseProcess() override;
  static ZefMetaClass* MetaObject();
  ZefMetaClass* GetMetaObject() const override { return MetaObject(); }

  HRESULT ListParents(IUnknown* iObject, ZefListPtrIUnknown*& oParents, int iMode) override;

  // Null once the database is closed.
  const ProcessDatabase* Database() const { return database_; }
  const std::string& Identifier() const { return identifier_; }
  void LoseDatabase() { database_ = nullptr; }

 private:
  ProcessDatabase* database_;
  std::string identifier_;
};

}  // namespace embedded
