#include "embedded/processdb/CsvImport.h"

#include <algorithm>
#include <fstream>
#include <optional>
#include <system_error>

#include "embedded/Error.h"
#include "embedded/processdb/ProcessDatabase.h"
#include "embedded/storage/CsvReader.h"
#include "embedded/storage/Draft.h"

namespace embedded {

namespace {

using Row = std::vector<std::string>;
using Path = std::filesystem::path;

std::string Lowered(std::string_view text) {
  std::string lowered(text);
  for (char& c : lowered) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lowered;
}

bool ParseFlag(const std::string& text) {
  const std::string flag = Lowered(text);
  if (flag == "yes" || flag == "true" || flag == "1") return true;
  if (flag == "no" || flag == "false" || flag == "0" || flag.empty()) return false;
  throw InputError("'" + text + "' is no base flag; write yes or no");
}

void StoreProcess(ProcessDatabase& database, const Row& row) {
  database.AddProcess(row[0], row[1], ParseFlag(row[2]));
}
void StoreParent(ProcessDatabase& database, const Row& row) { database.AddParent(row[0], row[1]); }
void StoreVersion(ProcessDatabase& database, const Row& row) {
  database.RelateVersions(row[0], row[1]);
}
void StoreActivity(ProcessDatabase& database, const Row& row) {
  database.LinkActivity(row[0], row[1]);
}
void StoreAssignment(ProcessDatabase& database, const Row& row) { database.Assign(row[0], row[1]); }
void StoreVersionList(ProcessDatabase& database, const Row& row) {
  database.AddVersionList(row[0], Row(row.begin() + 1, row.end()));
}

struct Table {
  const char* file;
  std::vector<std::string> columns;
  std::size_t required;
  // Any number of columns follow, whatever their names.
  bool goesOn;
  void (*store)(ProcessDatabase&, const Row&);
};

// In the order in which they are read: later tables refer to processes.
const std::vector<Table>& Tables() {
  static const std::vector<Table> tables = {
      {"processes.csv", {"identifier", "label", "base"}, 1, false, StoreProcess},
      {"parents.csv", {"process", "parent"}, 2, false, StoreParent},
      {"versions.csv", {"process", "version"}, 2, false, StoreVersion},
      {"activities.csv", {"activity", "process"}, 2, false, StoreActivity},
      {"assignments.csv", {"weld", "process"}, 2, false, StoreAssignment},
      {"version_lists.csv", {"weld"}, 1, true, StoreVersionList},
  };
  return tables;
}

std::string ColumnNames(const Table& table) {
  std::string names;
  for (const std::string& column : table.columns) names += (names.empty() ? "" : ", ") + column;
  return table.goesOn ? names + ", then one column for each identifier" : names;
}

// Where each column of the file goes in the row that is stored.
class Header {
 public:
  Header(const Table& table, const std::vector<std::string_view>& names) : table_(table) {
    for (const std::string_view name : names) AddColumn(Lowered(name));
    for (std::size_t i = 0; i < table_.required; ++i) {
      if (!Has(i)) Refuse("column '" + table_.columns[i] + "' is missing");
    }
  }

  Row Arrange(const std::vector<std::string_view>& fields) const {
    if (fields.size() > places_.size() && !table_.goesOn) {
      throw InputError("the row has " + std::to_string(fields.size()) +
                       " fields; the header names " + std::to_string(places_.size()));
    }
    Row row(std::max(table_.columns.size(), table_.goesOn ? fields.size() : 0));
    for (std::size_t i = 0; i < fields.size(); ++i) row[table_.goesOn ? i : places_[i]] = fields[i];
    return row;
  }

 private:
  [[noreturn]] void Refuse(const std::string& what) const {
    throw InputError(what + "; the columns of " + table_.file + " are " + ColumnNames(table_));
  }
  bool Has(std::size_t place) const {
    return std::find(places_.begin(), places_.end(), place) != places_.end();
  }
  void AddColumn(const std::string& name) {
    const auto& columns = table_.columns;
    if (table_.goesOn && places_.size() >= columns.size()) return;
    const auto found = std::find(columns.begin(), columns.end(), name);
    const auto place = static_cast<std::size_t>(found - columns.begin());
    if (found == columns.end()) Refuse("there is no column '" + name + "'");
    if (Has(place)) Refuse("column '" + name + "' stands there twice");
    places_.push_back(place);
  }

  const Table& table_;
  std::vector<std::size_t> places_;
};

// Runs what reads a row and says in its errors where the row stands.
template <class Use>
auto AtRow(const CsvReader& reader, const Use& use) {
  try {
    return use();
  } catch (const InputError& error) {
    throw InputError(reader.Place() + ": " + error.what());
  }
}

long ImportFile(ProcessDatabase& database, const Table& table, const Path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw InputError("'" + file.string() + "' cannot be opened; give a readable file");
  CsvReader reader(stream, file.string(), {.dropTrailingEmpty = true});
  if (!reader.Next()) {
    throw InputError("'" + file.string() + "' is empty; its first row names the columns " +
                     ColumnNames(table));
  }
  const Header header = AtRow(reader, [&] { return Header(table, reader.Fields()); });
  long rows = 0;
  for (; reader.Next(); ++rows) {
    AtRow(reader, [&] { table.store(database, header.Arrange(reader.Fields())); });
  }
  return rows;
}

bool Exists(const Path& path) {
  std::error_code ignored;
  return std::filesystem::exists(path, ignored);
}

bool IsDirectory(const Path& path) {
  std::error_code ignored;
  return std::filesystem::is_directory(path, ignored);
}

// The table's files among the sources.
std::vector<Path> FilesOf(const Table& table, const std::vector<Path>& sources) {
  std::vector<Path> files;
  for (const Path& source : sources) {
    if (IsDirectory(source)) {
      if (Exists(source / table.file)) files.push_back(source / table.file);
    } else if (source.filename() == table.file) {
      files.push_back(source);
    }
  }
  return files;
}

void RequireFiles(const Path& source) {
  bool isUseful = false;
  std::string names;
  for (const Table& table : Tables()) {
    for (const Path& file : FilesOf(table, {source})) {
      isUseful = true;
      std::error_code ignored;
      if (std::filesystem::is_regular_file(file, ignored)) continue;
      throw InputError("'" + file.string() + "' is not a file; give a list in CSV");
    }
    names += (names.empty() ? "" : ", ") + std::string(table.file);
  }
  if (isUseful) return;
  throw InputError("'" + source.string() + "' gives no list; give a directory with " + names +
                   " or one of these");
}

}  // namespace

std::vector<ImportedFile> ImportCsv(ProcessDatabase& ioDatabase,
                                    const std::vector<Path>& iSources) {
  for (const Path& source : iSources) RequireFiles(source);
  std::vector<ImportedFile> imported;
  ProcessDatabase::Transaction transaction(ioDatabase);
  for (const Table& table : Tables()) {
    for (const Path& file : FilesOf(table, iSources)) {
      imported.push_back({file, ImportFile(ioDatabase, table, file)});
    }
  }
  transaction.Commit();
  return imported;
}

std::vector<ImportedFile> CreateFromCsv(const Path& iDatabase, const std::vector<Path>& iSources) {
  if (Exists(iDatabase)) {
    throw InputError("'" + iDatabase.string() +
                     "' is there already; give a new database a path of its own");
  }
  Draft draft(iDatabase, std::nullopt);
  auto database = ProcessDatabase::Create(draft.Path());
  auto imported = ImportCsv(*database, iSources);
  database.reset();
  draft.Place(true);
  FlushFolderOf(iDatabase);
  return imported;
}

}  // namespace embedded
