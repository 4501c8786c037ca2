#include "planner/history/Database.h"

#include <new>
#include <sqlite3.h>
#include <utility>

#include "embedded/Error.h"
#include "embedded/storage/OrdinaryFile.h"
#include "planner/history/Damage.h"

namespace biwplan {

namespace {

constexpr int kBusyMilliseconds = 10'000;

std::string Explain(int code, const char* message) {
  switch (code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return "is being written by another program";
    case SQLITE_READONLY:
    case SQLITE_PERM:
      return "is write-protected";
    case SQLITE_CANTOPEN:
      return "cannot be opened or made";
    case SQLITE_FULL:
    case SQLITE_IOERR:
      return "cannot be read or written; the disk may be full";
    default:
      return std::string("cannot be used: ") + message;
  }
}

int Flags(Database::Access access) {
  switch (access) {
    case Database::Access::Read:
      return SQLITE_OPEN_READONLY;
    case Database::Access::Write:
      return SQLITE_OPEN_READWRITE;
    default:
      return SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
  }
}

}  // namespace

Database::Database(const std::filesystem::path& iFile, Access iAccess) {
  try {
    embedded::RequireOrdinaryJournals(iFile);
  } catch (const embedded::InputError& error) {
    throw DatabaseFault("cannot be used: " + std::string(error.what()));
  }
  // A full path is never taken for one of the names that stand for a database in memory.
  const std::string path = std::filesystem::absolute(iFile).string();
  const int code =
      sqlite3_open_v2(path.c_str(), &database_, Flags(iAccess) | SQLITE_OPEN_EXRESCODE, nullptr);
  try {
    Check(code);
    sqlite3_busy_timeout(database_, kBusyMilliseconds);
    // Nothing in a file of unknown origin runs by itself.
    sqlite3_db_config(database_, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(database_, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_db_config(database_, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    for (const char* const setting : {"PRAGMA trusted_schema = OFF", "PRAGMA cell_size_check = ON",
                                      // While the file is open the journal stays beside it: making
                                      // and removing it costs more than a step.
                                      "PRAGMA journal_mode = PERSIST"}) {
      Run(setting);
    }
  } catch (...) {
    Close();
    throw;
  }
}

Database::~Database() { Close(); }

void Database::Close() {
  for (const auto& [sql, statement] : statements_) sqlite3_finalize(statement);
  statements_.clear();
  if (hasFailed_) {
    // One that has failed may take the journal away although the file is to be mended with it.
    const char* const name = sqlite3_db_filename(database_, "main");
    const std::string file = name ? name : "";
    sqlite3_close(std::exchange(database_, nullptr));
    sqlite3_open_v2(file.c_str(), &database_, SQLITE_OPEN_READWRITE, nullptr);
    sqlite3_exec(database_, "PRAGMA journal_mode = PERSIST", nullptr, nullptr, nullptr);
  }
  // Removes the journal, unless somebody else writes.
  sqlite3_busy_timeout(database_, 0);
  sqlite3_exec(database_, "PRAGMA journal_mode = DELETE", nullptr, nullptr, nullptr);
  sqlite3_close(std::exchange(database_, nullptr));
}

void Database::Check(int iCode) {
  switch (iCode & 0xFF) {
    case SQLITE_OK:
    case SQLITE_ROW:
    case SQLITE_DONE:
      return;
    case SQLITE_NOMEM:
      hasFailed_ = true;
      throw std::bad_alloc();
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_MISMATCH:
    case SQLITE_CONSTRAINT:
      hasFailed_ = true;
      throw DamagedHistory();
    default:
      hasFailed_ = true;
      throw DatabaseFault(Explain(iCode, sqlite3_errmsg(database_)));
  }
}

sqlite3_stmt* Database::Statement(const char* iSql) {
  sqlite3_stmt*& statement = statements_[iSql];
  if (statement) return statement;
  const int code = sqlite3_prepare_v2(database_, iSql, -1, &statement, nullptr);
  // A table or a column is missing, which was there when the file was made.
  if (code == SQLITE_ERROR) throw DamagedHistory();
  Check(code);
  return statement;
}

void Database::Run(const char* iSql) {
  Check(sqlite3_exec(database_, iSql, nullptr, nullptr, nullptr));
}

Statement::~Statement() {
  sqlite3_reset(statement_);
  sqlite3_clear_bindings(statement_);
}

void Statement::Bind(int position, std::string_view bytes) {
  // An empty text is not null.
  const char* const data = bytes.empty() ? "" : bytes.data();
  database_.Check(sqlite3_bind_blob64(statement_, position, data, bytes.size(), SQLITE_STATIC));
}

void Statement::Bind(int position, std::int64_t number) {
  database_.Check(sqlite3_bind_int64(statement_, position, number));
}

bool Statement::Next() {
  const int code = sqlite3_step(statement_);
  database_.Check(code);
  return code == SQLITE_ROW;
}

std::int64_t Statement::Integer(int iColumn) const {
  return sqlite3_column_int64(statement_, iColumn);
}

std::string_view Statement::Bytes(int iColumn) const {
  const void* const data = sqlite3_column_blob(statement_, iColumn);
  const int size = sqlite3_column_bytes(statement_, iColumn);
  return data ? std::string_view(static_cast<const char*>(data), static_cast<std::size_t>(size))
              : std::string_view();
}

Transaction::Transaction(Database& ioDatabase) : database_(ioDatabase) {
  database_.Run("BEGIN IMMEDIATE");
}

Transaction::~Transaction() {
  if (!isOpen_) return;
  try {
    database_.Run("ROLLBACK");
  } catch (const std::exception&) {
    // A fault of the disk has rolled it back already.
  }
}

void Transaction::Commit() {
  database_.Run("COMMIT");
  isOpen_ = false;
}

}  // namespace biwplan
