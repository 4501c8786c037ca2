#include "embedded/Error.h"
#include "embedded/processdb/ProcessDatabase.h"
#include "embedded/processdb/Sqlite.h"
#include "embedded/storage/Utf8.h"

namespace embedded {

namespace {

void RequireText(const std::string& text) {
  if (!IsUtf8(text) || text.find('\0') != std::string::npos) {
    throw InputError("a text is not UTF-8; names and labels are UTF-8 text without NUL bytes");
  }
}

void RequireName(const std::string& name) {
  if (name.empty()) throw InputError("a name is empty; processes, activities and welds have one");
  RequireText(name);
}

[[noreturn]] void Twice(const std::string& what) {
  throw InputError(what + " already; enter it once");
}

}  // namespace

// The savepoints of nested transactions may share one name: the latest is meant.
ProcessDatabase::Transaction::Transaction(ProcessDatabase& iDatabase)
    : connection_(*iDatabase.connection_) {
  // Taking back must not want for memory.
  connection_.Statement("ROLLBACK TO change");
  connection_.Statement("RELEASE change");
  Query(connection_, "SAVEPOINT change").Change();
}

ProcessDatabase::Transaction::~Transaction() {
  if (!isOpen_) return;
  try {
    Query(connection_, "ROLLBACK TO change").Change();
    Query(connection_, "RELEASE change").Change();
  } catch (const std::exception&) {
    // SQLite has rolled everything back by itself, or will when the file is opened next.
  }
}

void ProcessDatabase::Transaction::Commit() {
  Query(connection_, "RELEASE change").Change();
  isOpen_ = false;
}

void ProcessDatabase::RequireProcess(const std::string& identifier) {
  RequireName(identifier);
  Query query(*connection_, "SELECT 1 FROM process WHERE identifier = ?1", identifier);
  if (!query.Next()) {
    throw InputError("there is no process '" + identifier + "'; enter the process first");
  }
}

void ProcessDatabase::AddProcess(const std::string& iIdentifier, const std::string& iLabel,
                                 bool iIsBase) {
  RequireName(iIdentifier);
  RequireText(iLabel);
  Query query(*connection_, "INSERT INTO process VALUES (?1, ?2, ?3)", iIdentifier, iLabel,
              std::int64_t{iIsBase});
  if (!query.Change()) Twice("process '" + iIdentifier + "' is there");
}

void ProcessDatabase::AddPair(std::string_view sql, const std::string& subject,
                              const std::string& process, const std::string& relation) {
  RequireName(subject);
  RequireProcess(process);
  if (Query(*connection_, sql, subject, process).Change()) return;
  Twice("'" + subject + "' " + relation + " '" + process + "'");
}

void ProcessDatabase::AddParent(const std::string& iProcess, const std::string& iParent) {
  RequireProcess(iProcess);
  if (iProcess == iParent) {
    throw InputError("process '" + iProcess + "' is named as its own parent; name another one");
  }
  AddPair(
      "INSERT INTO parent SELECT ?1, coalesce(max(position), 0) + 1, ?2"
      " FROM parent WHERE process = ?1",
      iProcess, iParent, "has the parent");
}

void ProcessDatabase::RelateVersions(const std::string& iProcess, const std::string& iVersion) {
  RequireProcess(iProcess);
  AddPair(
      "INSERT INTO related_version SELECT ?1, coalesce(max(position), 0) + 1, ?2"
      " FROM related_version WHERE process = ?1",
      iProcess, iVersion, "has the related version");
}

void ProcessDatabase::LinkActivity(const std::string& iActivity, const std::string& iProcess) {
  RequireName(iActivity);
  RequireProcess(iProcess);
  Query query(*connection_, "INSERT INTO activity VALUES (?1, ?2)", iActivity, iProcess);
  if (!query.Change()) Twice("activity '" + iActivity + "' belongs to a process");
}

void ProcessDatabase::Assign(const std::string& iWeld, const std::string& iProcess) {
  AddPair(
      "INSERT INTO assignment SELECT ?1, coalesce(max(position), 0) + 1, ?2"
      " FROM assignment WHERE weld = ?1",
      iWeld, iProcess, "is assigned to");
}

void ProcessDatabase::AddVersionList(const std::string& iWeld,
                                     const std::vector<std::string>& iIdentifiers) {
  RequireName(iWeld);
  for (const std::string& identifier : iIdentifiers) RequireProcess(identifier);
  Transaction transaction(*this);
  Query(*connection_,
        "INSERT INTO version_list SELECT ?1, coalesce(max(list), 0) + 1"
        " FROM version_list WHERE weld = ?1",
        iWeld)
      .Change();
  std::int64_t position = 0;
  for (const std::string& identifier : iIdentifiers) {
    Query entry(*connection_,
                "INSERT INTO version_list_entry SELECT weld, max(list), ?2, ?3"
                " FROM version_list WHERE weld = ?1",
                iWeld, ++position, identifier);
    if (!entry.Change()) Twice("the version list of '" + iWeld + "' names '" + identifier + "'");
  }
  transaction.Commit();
}

}  // namespace embedded
