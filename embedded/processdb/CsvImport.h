#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace embedded {

class ProcessDatabase;

struct ImportedFile {
  std::filesystem::path file;
  long rows;
};

// Adds what lists in CSV hold: processes.csv, parents.csv, versions.csv, activities.csv,
// assignments.csv and version_lists.csv, whose columns docs/process-database.md gives. A source is
// a directory with any of them or one of them. Processes are read first, whatever the order of the
// sources. All or nothing: InputError names file and line of the first row that cannot be used.
std::vector<ImportedFile> ImportCsv(ProcessDatabase& ioDatabase,
                                    const std::vector<std::filesystem::path>& iSources);

// The same into a new database. Its file appears at the end, whole, or not at all.
std::vector<ImportedFile> CreateFromCsv(const std::filesystem::path& iDatabase,
                                        const std::vector<std::filesystem::path>& iSources);

}  // namespace embedded
