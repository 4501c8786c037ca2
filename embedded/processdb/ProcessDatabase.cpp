#include "embedded/processdb/ProcessDatabase.h"

#include <new>
#include <system_error>
#include <utility>

#include "embedded/Error.h"
#include "embedded/processdb/DatabaseProcess.h"
#include "embedded/processdb/Schema.h"
#include "embedded/processdb/Sqlite.h"
#include "host/component/Allocation.h"
#include "host/component/FaultPoint.h"
#include "host/component/Interruption.h"

namespace embedded {

namespace {

// Runs what answers a host operation: whatever goes wrong is E_FAIL, but not an interruption.
template <class Read>
HRESULT Answer(const Read& read) {
  if (FaultPoint::Strikes()) return E_FAIL;
  try {
    return read();
  } catch (const Interrupted&) {
    throw;
  } catch (const std::bad_alloc&) {
    NoteFailedAllocation();
    return E_FAIL;
  } catch (...) {
    return E_FAIL;
  }
}

// The list takes over the references only once it has room for all.
ZefListPtrIUnknown* NewList(std::vector<Handle<DatabaseProcess>> objects) {
  auto list = std::make_unique<ZefListPtrIUnknown>();
  for (const auto& object : objects) list->Append(object.Get());
  for (auto& object : objects) static_cast<void>(object.Detach());
  return list.release();
}

}  // namespace

std::unique_ptr<ProcessDatabase> ProcessDatabase::Create(const std::filesystem::path& iFile) {
  std::error_code ignored;
  if (std::filesystem::exists(std::filesystem::symlink_status(iFile, ignored))) {
    throw InputError("'" + iFile.string() +
                     "' is there already; give a new database a path of its own");
  }
  auto connection = std::make_unique<Connection>(iFile, Connection::Mode::Create);
  try {
    CreateSchema(*connection);
  } catch (...) {
    connection.reset();
    std::filesystem::remove(iFile, ignored);
    throw;
  }
  return std::unique_ptr<ProcessDatabase>(new ProcessDatabase(iFile, std::move(connection)));
}

std::unique_ptr<ProcessDatabase> ProcessDatabase::Open(const std::filesystem::path& iFile) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(iFile, ignored)) {
    throw InputError("'" + iFile.string() + "' is not a file; give the path of a process database");
  }
  auto connection = std::make_unique<Connection>(iFile, Connection::Mode::Open);
  CheckDatabase(*connection);
  return std::unique_ptr<ProcessDatabase>(new ProcessDatabase(iFile, std::move(connection)));
}

ProcessDatabase::ProcessDatabase(const std::filesystem::path& file,
                                 std::unique_ptr<Connection> connection)
    : file_(file), connection_(std::move(connection)) {}

ProcessDatabase::~ProcessDatabase() {
  for (const auto& [identifier, object] : objects_) object->LoseDatabase();
}

Handle<DatabaseProcess> ProcessDatabase::ObjectOf(const std::string& identifier) {
  const auto known = objects_.find(identifier);
  if (known != objects_.end()) return Handle<DatabaseProcess>(known->second);
  auto object = Adopt(new DatabaseProcess(*this, identifier));
  if (!object) throw std::bad_alloc();
  objects_.emplace(identifier, object.Get());
  return object;
}

void ProcessDatabase::Forget(const DatabaseProcess& process) {
  objects_.erase(process.Identifier());
}

const DatabaseProcess* ProcessDatabase::Own(IUnknown* object) const {
  const auto* const process = dynamic_cast<const DatabaseProcess*>(object);
  return process && process->Database() == this ? process : nullptr;
}

HRESULT ProcessDatabase::HandOver(const std::vector<std::string>& identifiers, IUnknown*& object) {
  if (identifiers.empty()) return E_FAIL;
  object = ObjectOf(identifiers.front()).Detach();
  return S_OK;
}

HRESULT ProcessDatabase::GetActivityObject(const std::string& iActivity, IUnknown*& oObject) {
  return Answer([&] {
    Query query(*connection_, "SELECT process FROM activity WHERE activity = ?1", iActivity);
    return HandOver(query.Texts(), oObject);
  });
}

HRESULT ProcessDatabase::GetObjectFromID(const ZefUnicodeString& iIdentifier, IUnknown*& oObject) {
  return Answer([&] {
    Query query(*connection_, "SELECT identifier FROM process WHERE identifier = ?1",
                iIdentifier.Bytes());
    return HandOver(query.Texts(), oObject);
  });
}

HRESULT ProcessDatabase::GetObjectID(IUnknown* iObject, ZefUnicodeString& oIdentifier) {
  return Answer([&] {
    const DatabaseProcess* const process = Own(iObject);
    if (!process) return E_FAIL;
    oIdentifier = process->Identifier();
    return S_OK;
  });
}

HRESULT ProcessDatabase::GetBaseProcess(IUnknown* iObject, IUnknown*& oBase) {
  return Answer([&] {
    const DatabaseProcess* const process = Own(iObject);
    if (!process) return E_FAIL;
    Query query(*connection_, "SELECT identifier FROM process WHERE identifier = ?1 AND is_base",
                process->Identifier());
    return HandOver(query.Texts(), oBase);
  });
}

HRESULT ProcessDatabase::GetIDString(IUnknown* iObject, ZefUnicodeString*& oIdentifier) {
  return Answer([&] {
    const DatabaseProcess* const process = Own(iObject);
    if (!process) return E_FAIL;
    oIdentifier = std::make_unique<ZefUnicodeString>(process->Identifier()).release();
    return S_OK;
  });
}

HRESULT ProcessDatabase::ListObjects(std::string_view sql, IUnknown* object,
                                     ZefListPtrIUnknown*& objects) {
  return Answer([&] {
    const DatabaseProcess* const process = Own(object);
    if (!process) return E_FAIL;
    std::vector<Handle<DatabaseProcess>> found;
    Query query(*connection_, sql, process->Identifier());
    for (const std::string& identifier : query.Texts()) found.push_back(ObjectOf(identifier));
    objects = NewList(std::move(found));
    return S_OK;
  });
}

HRESULT ProcessDatabase::ListParents(IUnknown* iObject, ZefListPtrIUnknown*& oParents,
                                     [[maybe_unused]] int iMode) {
  return ListObjects("SELECT parent FROM parent WHERE process = ?1 ORDER BY position", iObject,
                     oParents);
}

HRESULT ProcessDatabase::ListRelatedVersions(IUnknown* iObject, ZefListPtrIUnknown*& oVersions) {
  return ListObjects("SELECT version FROM related_version WHERE process = ?1 ORDER BY position",
                     iObject, oVersions);
}

std::string ProcessDatabase::Label(const std::string& iProcess) {
  Query query(*connection_, "SELECT label FROM process WHERE identifier = ?1", iProcess);
  return query.Next() ? query.Text(0) : std::string();
}

HRESULT ProcessDatabase::IsAssigned(const std::string& iWeld) {
  return Answer([&] {
    Query query(*connection_, "SELECT 1 FROM assignment WHERE weld = ?1 LIMIT 1", iWeld);
    return query.Next() ? S_OK : E_FAIL;
  });
}

HRESULT ProcessDatabase::ListAssignments(const std::string& iWeld,
                                         ZefListValZefUnicodeString& ioIdentifiers) {
  return Answer([&] {
    Query query(*connection_, "SELECT process FROM assignment WHERE weld = ?1 ORDER BY position",
                iWeld);
    for (const std::string& identifier : query.Texts()) ioIdentifiers.Append(identifier);
    return S_OK;
  });
}

HRESULT ProcessDatabase::ListVersionLists(const std::string& iWeld,
                                          ZefListPtrZefListValZefUnicodeString& ioLists) {
  return Answer([&] {
    Query query(*connection_,
                "SELECT list, version FROM version_list LEFT JOIN version_list_entry"
                " USING (weld, list) WHERE weld = ?1 ORDER BY list, position",
                iWeld);
    std::vector<std::unique_ptr<ZefListValZefUnicodeString>> lists;
    std::int64_t last = 0;
    while (query.Next()) {
      if (query.Integer(0) != last) lists.push_back(std::make_unique<ZefListValZefUnicodeString>());
      last = query.Integer(0);
      if (const auto version = query.Text(1); !version.empty()) lists.back()->Append(version);
    }
    for (auto& list : lists) ioLists.Append(list.release());
    return S_OK;
  });
}

}  // namespace embedded
