#include "planner/history/HistoryFile.h"

#include <algorithm>

#include "planner/history/Compression.h"
#include "planner/history/Damage.h"

namespace biwplan {

namespace {

constexpr std::int64_t kMostBytes = std::int64_t{64} << 20;

// Tells the file from other databases.
constexpr std::int64_t kApplication = 1651079016;
constexpr std::int64_t kVersion = 1;

constexpr char kSchema[] =
    "CREATE TABLE plan (id INTEGER PRIMARY KEY CHECK (id = 1), pointer INTEGER NOT NULL, digest "
    "BLOB NOT NULL, pending INTEGER NOT NULL, origin INTEGER NOT NULL, most_steps INTEGER NOT "
    "NULL);"
    "CREATE TABLE snapshot (id INTEGER PRIMARY KEY CHECK (id = 1), number INTEGER NOT NULL, text "
    "BLOB NOT NULL);"
    "CREATE TABLE step (number INTEGER PRIMARY KEY AUTOINCREMENT, work INTEGER NOT NULL, at "
    "INTEGER NOT NULL, user BLOB NOT NULL, command BLOB NOT NULL, outside INTEGER NOT NULL, names "
    "BLOB NOT NULL, delta BLOB NOT NULL, digest_before BLOB NOT NULL, digest_after BLOB NOT NULL, "
    "size INTEGER NOT NULL);"
    "CREATE INDEX step_of_work ON step (work, number, size);"
    "CREATE TABLE work (id INTEGER PRIMARY KEY AUTOINCREMENT, user BLOB NOT NULL, host BLOB NOT "
    "NULL, process INTEGER NOT NULL, since BLOB NOT NULL, at INTEGER NOT NULL, is_shell INTEGER "
    "NOT NULL, base INTEGER NOT NULL, base_digest BLOB NOT NULL, branch INTEGER NOT NULL, current "
    "INTEGER NOT NULL, digest BLOB NOT NULL);"
    "PRAGMA application_id = 1651079016;"
    "PRAGMA user_version = 1;";

constexpr char kStepsOf[] =
    "SELECT number, at, user, command, outside, names, delta, digest_before, digest_after FROM "
    "step WHERE work = ?1 AND number <= ?2 ORDER BY number";
constexpr char kFirst[] =
    "SELECT number, at, user, command, outside, names, delta, digest_before, digest_after FROM "
    "step WHERE work = 0 AND number > ?1 AND number <= ?2 ORDER BY number LIMIT 1";
constexpr char kLast[] =
    "SELECT number, at, user, command, outside, names, delta, digest_before, digest_after FROM "
    "step WHERE work = 0 AND number <= ?1 ORDER BY number DESC LIMIT 1";
constexpr char kAllWork[] =
    "SELECT id, user, host, process, since, at, is_shell, base, base_digest, branch, current, "
    "digest FROM work WHERE ?1 = 0 OR id = ?1 ORDER BY id";

Step StepIn(const Statement& row) {
  Step step;
  step.number = row.Integer(0);
  step.at = row.Integer(1);
  step.user = row.Text(2);
  step.command = row.Text(3);
  step.isOutside = row.Integer(4) != 0;
  step.names = row.Text(5);
  step.delta = row.Text(6);
  step.before = row.Text(7);
  step.after = row.Text(8);
  return step;
}

Work WorkIn(const Statement& row) {
  Work work;
  work.id = row.Integer(0);
  work.worker = {row.Text(1), row.Text(2), row.Integer(3), row.Text(4)};
  work.at = row.Integer(5);
  work.isShell = row.Integer(6) != 0;
  work.base = row.Integer(7);
  work.baseDigest = row.Text(8);
  work.branch = row.Integer(9);
  work.current = row.Integer(10);
  work.digest = row.Text(11);
  return work;
}

std::int64_t Single(Database& database, const char* sql) {
  Statement statement(database, sql);
  return statement.Next() ? statement.Integer(0) : 0;
}

}  // namespace

HistoryFile::HistoryFile(const std::filesystem::path& iFile, Database::Access iAccess)
    : database_(iFile, iAccess) {
  Prepare();
}

void HistoryFile::Prepare() {
  const std::int64_t application = Single(database_, "PRAGMA application_id");
  const std::int64_t version = Single(database_, "PRAGMA user_version");
  if (application == kApplication && version > kVersion) {
    throw DatabaseFault("was written by a newer version of biwplan");
  }
  if (application == kApplication) return;
  const bool isNew =
      application == 0 && Single(database_, "SELECT count(*) FROM sqlite_schema") == 0;
  if (!isNew) throw DamagedHistory();
  Transaction transaction = Begin();
  // Somebody else may have made it meanwhile.
  if (Single(database_, "SELECT count(*) FROM sqlite_schema") == 0) database_.Run(kSchema);
  transaction.Commit();
}

PlanState HistoryFile::State() {
  Statement row(database_, "SELECT pointer, digest, pending, origin, most_steps FROM plan");
  if (!row.Next()) return {};
  for (const int column : {0, 2, 3, 4}) {
    if (row.Integer(column) < 0) throw DamagedHistory();
  }
  return {row.Integer(0), row.Text(1), row.Integer(2), row.Integer(3), row.Integer(4)};
}

void HistoryFile::SetState(const PlanState& iState) {
  Statement(database_, "INSERT OR REPLACE INTO plan VALUES (1, ?1, ?2, ?3, ?4, ?5)", iState.pointer,
            iState.digest, iState.pending, iState.origin, iState.mostSteps)
      .Run();
}

std::optional<Step> HistoryFile::One(Statement& statement) {
  return statement.Next() ? std::optional(StepIn(statement)) : std::nullopt;
}

std::optional<Step> HistoryFile::First(std::int64_t iAbove, std::int64_t iUpTo) {
  Statement statement(database_, kFirst, iAbove, iUpTo);
  return One(statement);
}

std::optional<Step> HistoryFile::Last(std::int64_t iUpTo) {
  Statement statement(database_, kLast, iUpTo);
  return One(statement);
}

std::vector<Step> HistoryFile::StepsOf(std::int64_t iWork, std::int64_t iUpTo) {
  std::vector<Step> steps;
  for (Statement row(database_, kStepsOf, iWork, iUpTo); row.Next();) steps.push_back(StepIn(row));
  return steps;
}

HistoryFile::Amount HistoryFile::Count(std::int64_t iWork, std::int64_t iAbove,
                                       std::int64_t iUpTo) {
  Statement row(database_,
                "SELECT count(*), total(size) FROM step WHERE work = ?1 AND number > ?2 AND number "
                "<= ?3",
                iWork, iAbove, iUpTo);
  return row.Next() ? Amount{row.Integer(0), row.Integer(1)} : Amount{0, 0};
}

std::int64_t HistoryFile::Add(const Step& iStep, std::int64_t iWork) {
  Statement(database_, "INSERT INTO step VALUES (NULL, ?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10)",
            iWork, iStep.at, iStep.user, iStep.command, std::int64_t{iStep.isOutside}, iStep.names,
            iStep.delta, iStep.before, iStep.after, static_cast<std::int64_t>(iStep.Size()))
      .Run();
  return Single(database_, "SELECT last_insert_rowid()");
}

void HistoryFile::DropAbove(std::int64_t iNumber, std::int64_t iWork) {
  Statement(database_, "DELETE FROM step WHERE number > ?1 AND work = ?2", iNumber, iWork).Run();
}

std::int64_t HistoryFile::NextNumber() {
  return Single(database_, "SELECT seq FROM sqlite_sequence WHERE name = 'step'") + 1;
}

void HistoryFile::Keep(Work& ioWork) {
  const Worker& worker = ioWork.worker;
  if (ioWork.id == 0) {
    ioWork.id = Single(database_, "SELECT seq FROM sqlite_sequence WHERE name = 'work'") + 1;
  }
  Statement(database_,
            "INSERT OR REPLACE INTO work VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, "
            "?12)",
            ioWork.id, worker.user, worker.host, worker.process, worker.since, ioWork.at,
            std::int64_t{ioWork.isShell}, ioWork.base, ioWork.baseDigest, ioWork.branch,
            ioWork.current, ioWork.digest)
      .Run();
}

std::optional<Work> HistoryFile::FindWork(std::int64_t iId) {
  Statement row(database_, kAllWork, iId);
  return row.Next() ? std::optional(WorkIn(row)) : std::nullopt;
}

std::vector<Work> HistoryFile::AllWork() {
  std::vector<Work> all;
  for (Statement row(database_, kAllWork, std::int64_t{0}); row.Next();) {
    all.push_back(WorkIn(row));
  }
  return all;
}

void HistoryFile::DropWork(std::int64_t iId) {
  DropAbove(0, iId);
  Statement(database_, "DELETE FROM work WHERE id = ?1", iId).Run();
}

void HistoryFile::Confirm(const Work& iWork) {
  // Without steps of its own it has only moved.
  const bool hasSteps = !StepsOf(iWork.id).empty();
  if (hasSteps) DropAbove(iWork.branch, kSaved);
  Statement(database_, "UPDATE step SET work = 0 WHERE work = ?1", iWork.id).Run();
  PlanState state = State();
  state.pointer = iWork.current;
  state.digest = iWork.digest;
  state.pending = 0;
  SetState(state);
}

std::optional<HistoryFile::Snapshot> HistoryFile::FindSnapshot() {
  Statement row(database_, "SELECT number, text FROM snapshot");
  if (!row.Next()) return std::nullopt;
  return Snapshot{row.Integer(0), Decompress(row.Bytes(1))};
}

void HistoryFile::SetSnapshot(std::int64_t iNumber, const std::string& iText) {
  const std::string packed = Compress(iText);
  Statement(database_, "INSERT OR REPLACE INTO snapshot VALUES (1, ?1, ?2)", iNumber, packed).Run();
}

void HistoryFile::Trim(const std::string& iText) {
  PlanState state = State();
  auto [steps, bytes] = Count(kSaved);
  const bool isFull = steps > state.mostSteps || bytes > kMostBytes;
  for (Statement oldest(database_, "SELECT number, size FROM step WHERE work = 0 ORDER BY number");
       (steps > state.mostSteps || (bytes > kMostBytes && steps > 1)) && oldest.Next(); --steps) {
    state.origin = oldest.Integer(0);
    bytes -= oldest.Integer(1);
  }
  if (isFull) {
    Statement(database_, "DELETE FROM step WHERE work = 0 AND number <= ?1", state.origin).Run();
    state.pointer = std::max(state.pointer, state.origin);
    SetState(state);
  }
  if (!IsSnapshotNear(state)) SetSnapshot(state.pointer, iText);
}

void HistoryFile::Clear() {
  DropAbove(0, kSaved);
  Statement(database_, "DELETE FROM snapshot").Run();
}

bool HistoryFile::IsSnapshotNear(const PlanState& state) {
  Statement row(
      database_,
      "SELECT number, length(text), (SELECT total(size) FROM step WHERE step.number > "
      "snapshot.number), number IN (SELECT number FROM step WHERE work = 0) FROM snapshot");
  if (!row.Next()) return false;
  const bool isInLine = row.Integer(0) == state.origin || row.Integer(3) != 0;
  return isInLine && row.Integer(2) <= row.Integer(1);
}

}  // namespace biwplan
