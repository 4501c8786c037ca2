#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/model/Document.h"

namespace tests {

// Each takes any bytes and expects of the product what must hold whatever they are, with the
// assertions of the tests.
void FuzzDocument(std::string_view iBytes);
void FuzzLists(std::string_view iBytes);
void FuzzDatabaseLists(std::string_view iBytes);
void FuzzDatabase(std::string_view iBytes);
void FuzzMesh(std::string_view iBytes);
void FuzzCatalog(std::string_view iBytes);
void FuzzCommands(std::string_view iBytes);
void FuzzHistory(std::string_view iBytes);
void FuzzGestures(std::string_view iBytes);

struct FuzzTarget {
  const char* name;
  void (*run)(std::string_view);
  // How many mutations of its corpus the tests try.
  int mutations;
};
extern const std::vector<FuzzTarget> kFuzzTargets;

// Runs a target, which throws nothing and leaves no object alive.
void RunTarget(const FuzzTarget& iTarget, std::string_view iBytes);

// Decisions, one for each byte; 0 once there are no more.
class Choices {
 public:
  explicit Choices(std::string_view iBytes) : rest_(iBytes) {}
  bool IsEmpty() const { return rest_.empty(); }
  std::size_t Below(std::size_t iLimit) {
    if (rest_.empty()) return 0;
    const auto byte = static_cast<unsigned char>(rest_.front());
    rest_.remove_prefix(1);
    return byte % iLimit;
  }

 private:
  std::string_view rest_;
};

// Several files in one: each begins after a line "%% name". What stands before the first has no
// name.
std::map<std::string, std::string, std::less<>> FilesIn(std::string_view iBytes);

// A database that others change as the statements say, and then the bytes: three of them are a
// place and what is another there. Answers what it then would hold.
std::string ChangedBytes(const std::filesystem::path& iFile, const std::string& iStatements,
                         const std::string& iBytes);

// The plan is written, and read and written again, as it was.
void ExpectStored(const embedded::Document& iDocument);

}  // namespace tests
