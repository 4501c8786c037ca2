#include <gmock/gmock.h>
#include <set>

#include "embedded/processdb/CsvImport.h"
#include "tests/fuzz/Targets.h"
#include "tests/processdb/Databases.h"

namespace tests {

using embedded::ProcessDatabase;
using testing::HasSubstr;

namespace {

const std::set<std::string, std::less<>> kDatabaseLists = {"processes.csv",   "parents.csv",
                                                           "versions.csv",    "activities.csv",
                                                           "assignments.csv", "version_lists.csv"};

std::string StoryOf(const std::filesystem::path& file) {
  return Story(*ProcessDatabase::Open(file));
}

}  // namespace

std::string ChangedBytes(const std::filesystem::path& iFile, const std::string& iStatements,
                         const std::string& iBytes) {
  ChangeAsOthers(iFile, iStatements);
  std::string changed = BytesOf(iFile);
  for (std::size_t i = 0; i + 2 < iBytes.size() && !changed.empty(); i += 3) {
    const auto number = [&](std::size_t at) { return static_cast<unsigned char>(iBytes[at]); };
    char& byte = changed[(number(i) * 256U + number(i + 1)) % changed.size()];
    byte = static_cast<char>(byte ^ iBytes[i + 2]);
  }
  return changed;
}

void FuzzDatabaseLists(std::string_view iBytes) {
  const ScratchFolder scratch;
  const auto file = scratch.Path() / "plant.sqlite";
  for (const auto& [name, text] : FilesIn(iBytes)) {
    if (kDatabaseLists.contains(name)) scratch.Write("lists/" + name, text);
  }
  std::filesystem::create_directory(scratch.Path() / "lists");
  const std::string error =
      ErrorOf([&] { embedded::CreateFromCsv(file, {scratch.Path() / "lists"}); });
  if (!error.empty()) {
    EXPECT_THAT(error, HasSubstr("lists"));
    EXPECT_EQ(CountFiles(scratch.Path()), 1) << "only the lists are left";
    return;
  }
  const std::string story = StoryOf(file);
  const auto copy = ProcessDatabase::Create(scratch.Path() / "copy.sqlite");
  embedded::ImportCsv(*copy, {scratch.Path() / "lists"});
  EXPECT_EQ(Story(*copy), story);
}

void FuzzDatabase(std::string_view iBytes) {
  static const std::string whole = [] {
    const ScratchFolder scratch;
    WriteLists(scratch);
    embedded::CreateFromCsv(scratch.Path() / "plant.sqlite", {scratch.Path()});
    return BytesOf(scratch.Path() / "plant.sqlite");
  }();
  const ScratchFolder scratch;
  auto files = FilesIn(iBytes);
  const auto file = scratch.Write("plant.sqlite", whole);
  const std::string bytes = ChangedBytes(file, files[""], files["bytes"]);
  scratch.Write("plant.sqlite", bytes);
  std::string story;
  const std::string error = ErrorOf([&] { story = StoryOf(file); });
  if (!error.empty()) {
    EXPECT_THAT(error, AllOf(HasSubstr("plant.sqlite' "), HasSubstr("; ")));
    EXPECT_EQ(error.find('\n'), std::string::npos) << error;
    EXPECT_TRUE(BytesOf(file) == bytes) << "a file that is refused is left alone";
    return;
  }
  EXPECT_EQ(StoryOf(file), story);
  const bool isAssigned =
      ErrorOf([&] { ProcessDatabase::Open(file)->Assign("SW-2", "LINE"); }).empty();
  EXPECT_EQ(StoryOf(file) == story, !isAssigned);
}

}  // namespace tests
