#include "embedded/processdb/Sqlite.h"

#include <new>
#include <sqlite3.h>
#include <utility>

#include "embedded/Error.h"
#include "embedded/storage/OrdinaryFile.h"
#include "host/component/Interruption.h"

namespace embedded {

namespace {

constexpr int kBusyMilliseconds = 2000;
constexpr int kPauseMilliseconds = 20;
constexpr int kStepsBetweenLooks = 10'000;
constexpr int kLongestText = 1 << 20;

// What is wrong with the file and what would be right, in words that follow its name.
std::string Explain(int code, const char* message) {
  if (code == SQLITE_READONLY_DBMOVED) {
    return "was deleted or moved while it was open; nothing can be written until it is opened "
           "again";
  }
  switch (code & 0xFF) {
    case SQLITE_NOTADB:
      return "is not a process database; give a file that was created as one";
    case SQLITE_CORRUPT:
      return "is damaged; restore it from a copy or create it again from its lists";
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return "is being written by another program; try again when that has ended";
    case SQLITE_READONLY:
    case SQLITE_PERM:
      return "is write-protected; writing needs a file that may be changed";
    case SQLITE_CANTOPEN:
      return "cannot be opened; its directory must be there, and both must be yours to read and "
             "write";
    case SQLITE_FULL:
      return "cannot grow because the disk is full; free some space first";
    case SQLITE_TOOBIG:
      return "takes no text of more than 1 MiB; names and labels are shorter";
    default:
      return std::string("cannot be used (") + message + "); restore it from a copy";
  }
}

int WantsToEnd(void*) { return Interruption::IsRequested() && !Interruption::IsDeferred() ? 1 : 0; }

// Waits for another program that writes; 0 gives up.
int Wait(void*, int attempt) {
  constexpr int kPauses = kBusyMilliseconds / kPauseMilliseconds;
  if (attempt >= kPauses || WantsToEnd(nullptr)) return 0;
  sqlite3_sleep(kPauseMilliseconds);
  return 1;
}

int Flags(Connection::Mode mode) {
  const int create = mode == Connection::Mode::Create ? SQLITE_OPEN_CREATE : 0;
  return SQLITE_OPEN_READWRITE | SQLITE_OPEN_EXRESCODE | create;
}

}  // namespace

Connection::Connection(const std::filesystem::path& iFile, Mode iMode) : name_(iFile.string()) {
  RequireOrdinaryJournals(iFile);
  // A full path is never taken for one of the names that stand for a database in memory.
  const std::string path = std::filesystem::absolute(iFile).string();
  const int code = sqlite3_open_v2(path.c_str(), &database_, Flags(iMode), nullptr);
  try {
    Check(code);
    BePatient(true);
    sqlite3_progress_handler(database_, kStepsBetweenLooks, WantsToEnd, nullptr);
    sqlite3_limit(database_, SQLITE_LIMIT_LENGTH, kLongestText);
    Run("PRAGMA foreign_keys = ON");
    Run("PRAGMA trusted_schema = OFF");
    Run("PRAGMA cell_size_check = ON");
  } catch (...) {
    Close();
    throw;
  }
}

Connection::~Connection() { Close(); }

void Connection::Close() {
  for (const auto& [sql, statement] : statements_) sqlite3_finalize(statement);
  statements_.clear();
  sqlite3_close(std::exchange(database_, nullptr));
}

void Connection::Fail(const std::string& iWhat) const {
  throw InputError("'" + name_ + "' " + iWhat);
}

void Connection::Check(int iCode) {
  if (iCode == SQLITE_OK || iCode == SQLITE_ROW || iCode == SQLITE_DONE) return;
  if (iCode == SQLITE_INTERRUPT) Interruption::Check();
  if (iCode == SQLITE_NOMEM) throw std::bad_alloc();
  Fail(Explain(iCode, sqlite3_errmsg(database_)));
}

void Connection::BePatient(bool patient) {
  if (patient == isPatient_) return;
  isPatient_ = patient;
  sqlite3_busy_handler(database_, patient ? Wait : nullptr, nullptr);
}

int Connection::Step(sqlite3_stmt* iStatement) {
  const int code = sqlite3_step(iStatement);
  BePatient((code & 0xFF) != SQLITE_BUSY);
  return code;
}

sqlite3_stmt* Connection::Compile(std::string_view sql) {
  sqlite3_stmt* statement = nullptr;
  Check(
      sqlite3_prepare_v2(database_, sql.data(), static_cast<int>(sql.size()), &statement, nullptr));
  return statement;
}

sqlite3_stmt* Connection::Statement(std::string_view iSql) {
  sqlite3_stmt*& statement = statements_[iSql];
  if (!statement) statement = Compile(iSql);
  return statement;
}

void Connection::Run(const std::string& iSql) {
  sqlite3_stmt* const statement = Compile(iSql);
  while (sqlite3_step(statement) == SQLITE_ROW) continue;
  Check(sqlite3_finalize(statement));
}

Query::~Query() {
  sqlite3_reset(statement_);
  sqlite3_clear_bindings(statement_);
}

void Query::Bind(int position, std::string_view text) {
  connection_.Check(sqlite3_bind_text(statement_, position, text.data(),
                                      static_cast<int>(text.size()), SQLITE_TRANSIENT));
}

void Query::Bind(int position, std::int64_t number) {
  connection_.Check(sqlite3_bind_int64(statement_, position, number));
}

bool Query::Next() {
  const int code = connection_.Step(statement_);
  connection_.Check(code);
  return code == SQLITE_ROW;
}

std::string Query::Text(int iColumn) const {
  const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, iColumn));
  if (!text) return {};
  return {text, static_cast<std::size_t>(sqlite3_column_bytes(statement_, iColumn))};
}

std::int64_t Query::Integer(int iColumn) const { return sqlite3_column_int64(statement_, iColumn); }

std::vector<std::string> Query::Texts() {
  std::vector<std::string> texts;
  while (Next()) texts.push_back(Text(0));
  return texts;
}

bool Query::Change() {
  const int code = connection_.Step(statement_);
  if (code == SQLITE_CONSTRAINT_UNIQUE || code == SQLITE_CONSTRAINT_PRIMARYKEY) return false;
  connection_.Check(code);
  return true;
}

}  // namespace embedded
