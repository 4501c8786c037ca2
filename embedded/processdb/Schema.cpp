#include "embedded/processdb/Schema.h"

#include <array>
#include <string>
#include <vector>

#include "embedded/processdb/SchemaDifference.h"
#include "embedded/processdb/Sqlite.h"
#include "embedded/storage/Utf8.h"

namespace embedded {

namespace {

constexpr std::int64_t kApplicationId = 0x42495750;  // "BIWP"
constexpr std::int64_t kVersion = 1;

// docs/process-database.md explains these tables; a change is a new version.
constexpr std::array kTables = {
    R"(CREATE TABLE process (
  identifier TEXT NOT NULL PRIMARY KEY CHECK (identifier <> ''),
  label TEXT NOT NULL,
  is_base INTEGER NOT NULL CHECK (is_base IN (0, 1))
) STRICT, WITHOUT ROWID)",
    R"(CREATE TABLE parent (
  process TEXT NOT NULL REFERENCES process,
  position INTEGER NOT NULL CHECK (position > 0),
  parent TEXT NOT NULL REFERENCES process,
  PRIMARY KEY (process, position),
  UNIQUE (process, parent),
  CHECK (parent <> process)
) STRICT, WITHOUT ROWID)",
    R"(CREATE TABLE related_version (
  process TEXT NOT NULL REFERENCES process,
  position INTEGER NOT NULL CHECK (position > 0),
  version TEXT NOT NULL REFERENCES process,
  PRIMARY KEY (process, position),
  UNIQUE (process, version)
) STRICT, WITHOUT ROWID)",
    R"(CREATE TABLE activity (
  activity TEXT NOT NULL PRIMARY KEY CHECK (activity <> ''),
  process TEXT NOT NULL REFERENCES process
) STRICT, WITHOUT ROWID)",
    R"(CREATE TABLE assignment (
  weld TEXT NOT NULL CHECK (weld <> ''),
  position INTEGER NOT NULL CHECK (position > 0),
  process TEXT NOT NULL REFERENCES process,
  PRIMARY KEY (weld, position),
  UNIQUE (weld, process)
) STRICT, WITHOUT ROWID)",
    R"(CREATE TABLE version_list (
  weld TEXT NOT NULL CHECK (weld <> ''),
  list INTEGER NOT NULL CHECK (list > 0),
  PRIMARY KEY (weld, list)
) STRICT, WITHOUT ROWID)",
    R"(CREATE TABLE version_list_entry (
  weld TEXT NOT NULL,
  list INTEGER NOT NULL,
  position INTEGER NOT NULL CHECK (position > 0),
  version TEXT NOT NULL REFERENCES process,
  PRIMARY KEY (weld, list, position),
  UNIQUE (weld, list, version),
  FOREIGN KEY (weld, list) REFERENCES version_list
) STRICT, WITHOUT ROWID)",
};

constexpr char kDamaged[] = "is damaged; restore it from a copy or create it again from its lists";

std::int64_t Number(Connection& connection, std::string_view sql) {
  Query query(connection, sql);
  return query.Next() ? query.Integer(0) : 0;
}

void CheckMarks(Connection& connection) {
  if (Number(connection, "PRAGMA application_id") != kApplicationId) {
    connection.Fail("is not a process database; give a file that was created as one");
  }
  const std::int64_t version = Number(connection, "PRAGMA user_version");
  if (version < 1) connection.Fail(kDamaged);
  if (version > kVersion) {
    connection.Fail("is a process database of version " + std::to_string(version) +
                    ", and this program reads version " + std::to_string(kVersion) +
                    "; use a newer program");
  }
}

// Views and triggers would run statements of whoever made the file: nothing but the tables and the
// indices of their keys, which have no statement.
void CheckTables(Connection& connection) {
  Query query(connection,
              "SELECT type, name, sql FROM sqlite_master WHERE type <> 'index' OR sql IS NOT NULL "
              "ORDER BY rowid");
  std::vector<SchemaEntry> found;
  while (query.Next()) found.push_back({query.Text(0), query.Text(1), query.Text(2)});
  const std::string difference = DifferenceFrom(kTables, found);
  if (difference.empty()) return;
  connection.Fail(difference +
                  "; create it again from its lists, or with the tables of the guide to process "
                  "databases");
}

void CheckContent(Connection& connection) {
  Query pages(connection, "PRAGMA integrity_check(1)");
  if (!pages.Next() || pages.Text(0) != "ok") connection.Fail(kDamaged);
  Query references(connection, "PRAGMA foreign_key_check");
  if (references.Next()) {
    connection.Fail("names a process in table '" + references.Text(0) +
                    "' that it does not hold; create it again from its lists");
  }
}

// Every other text refers to one of these.
void CheckTexts(Connection& connection) {
  Query query(connection,
              "SELECT identifier FROM process UNION ALL SELECT label FROM process UNION ALL "
              "SELECT activity FROM activity UNION ALL SELECT weld FROM assignment UNION ALL "
              "SELECT weld FROM version_list");
  while (query.Next()) {
    const std::string text = query.Text(0);
    if (!IsUtf8(text) || text.find('\0') != std::string::npos) {
      connection.Fail("holds a name that is not UTF-8 text; create it again from its lists");
    }
  }
}

}  // namespace

void CreateSchema(Connection& iConnection) {
  iConnection.Run("BEGIN");
  for (const char* const table : kTables) iConnection.Run(table);
  iConnection.Run("PRAGMA application_id = " + std::to_string(kApplicationId));
  iConnection.Run("PRAGMA user_version = " + std::to_string(kVersion));
  iConnection.Run("COMMIT");
}

void CheckDatabase(Connection& iConnection) {
  CheckMarks(iConnection);
  CheckTables(iConnection);
  CheckContent(iConnection);
  CheckTexts(iConnection);
}

}  // namespace embedded
