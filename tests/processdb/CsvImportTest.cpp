#include <gmock/gmock.h>

#include "embedded/processdb/CsvImport.h"
#include "tests/processdb/Databases.h"

namespace {

using embedded::CreateFromCsv;
using embedded::ProcessDatabase;
using testing::HasSubstr;
using tests::ErrorOf;
using tests::kWholeStory;
using tests::Story;

class CsvImportTest : public testing::Test {
 protected:
  CsvImportTest() { tests::WriteLists(folder); }
  std::string CreationError(const std::string& target,
                            const std::vector<std::filesystem::path>& sources) const {
    return ErrorOf([&] { CreateFromCsv(folder.Path() / target, sources); });
  }

  tests::ScratchFolder folder;
  std::filesystem::path file = folder.Path() / "plant.sqlite";
};

TEST_F(CsvImportTest, FillsANewDatabaseFromADirectoryOrFromListsInAnyOrder) {
  std::string rows;
  for (const auto& list : CreateFromCsv(file, {folder.Path()})) {
    rows += list.file.stem().string() + std::to_string(list.rows);
  }
  EXPECT_EQ(rows, "processes5parents4versions2activities1assignments2version_lists3");
  EXPECT_EQ(Story(*ProcessDatabase::Open(file)), kWholeStory);
  const auto second = folder.Path() / "second.sqlite";
  CreateFromCsv(second, {folder.Path() / "assignments.csv", folder.Path() / "processes.csv"});
  EXPECT_THAT(Story(*ProcessDatabase::Open(second)), HasSubstr("SW-1 assigned [ TASK CELL]"));
}

TEST_F(CsvImportTest, NamesFileAndLineOfABadRowAndStoresNothing) {
  const struct {
    const char *list, *text, *sentence;
  } cases[] = {
      {"processes.csv", "", "is empty; its first row names the columns identifier, label, base"},
      {"processes.csv", "identifier,colour\n", "line 1: there is no column 'colour'"},
      {"processes.csv", "label\nx\n", "line 1: column 'identifier' is missing"},
      {"processes.csv", "identifier,Identifier\n",
       "line 1: column 'identifier' stands there twice"},
      {"processes.csv", "identifier,base\nA,perhaps\n", "line 2: 'perhaps' is no base flag"},
      {"processes.csv", "identifier\nA\nB,C\n", "line 3: the row has 2 fields; the header names 1"},
      {"processes.csv", "identifier\nA\n\n#\nLINE\n", "line 5: process 'LINE' is there already"},
      {"processes.csv", "identifier\n\xFF\n", "line 2: the text is not UTF-8"},
      {"processes.csv", "identifier\nA\n\"B\n", "line 3: the quote that opens here"},
      {"parents.csv", "process,parent\nLINE\n", "line 2: a name is empty"},
      {"parents.csv", "process,parent\nLINE,GONE\n", "line 2: there is no process 'GONE'"},
      {"versions.csv", "process,version\nCELL,CELL\n", "line 2: 'CELL' has the related version"},
      {"activities.csv", "activity,process\nOP10,LINE\n", "line 2: activity 'OP10' belongs"},
      {"assignments.csv", "weld,process\nA,LINE\nA,LINE\n", "line 3: 'A' is assigned to 'LINE'"},
      {"version_lists.csv", "weld,1\nSW-2,LINE\nA,LINE,,CELL\n", "line 3: a name is empty"},
      {"version_lists.csv", "list\nA\n", "line 1: there is no column 'list'"},
  };
  CreateFromCsv(file, {folder.Path()});
  const auto database = ProcessDatabase::Open(file);
  folder.Write("more/processes.csv", "identifier\nNEW\n");
  for (const auto& c : cases) {
    const auto bad = folder.Write(std::string("bad/") + c.list, c.text);
    const auto import = [&] { ImportCsv(*database, {folder.Path() / "more", bad}); };
    EXPECT_THAT(ErrorOf(import), AllOf(HasSubstr(c.list), HasSubstr(c.sentence))) << c.text;
    EXPECT_EQ(Story(*database), kWholeStory) << c.text;
  }
  ImportCsv(*database, {folder.Path() / "more"});
  EXPECT_EQ(ErrorOf([&] { database->Assign("SW-2", "NEW"); }), "");
}

TEST_F(CsvImportTest, LeavesNoFileBehindAndTouchesNoneThatIsThere) {
  const auto mine = folder.Write("there/plant.sqlite.new", "mine");
  const auto bad = folder.Write("assignments.csv", "weld,process\nSW-1,GONE\n");
  EXPECT_THAT(CreationError("there/plant.sqlite", {bad}), HasSubstr("line 2"));
  EXPECT_THAT(CreationError("there/plant.sqlite", {mine}), HasSubstr("gives no list"));
  EXPECT_THAT(CreationError("there/plant.sqlite", {"no/parents.csv"}), HasSubstr("is not a file"));
  EXPECT_THAT(CreationError("there/plant.sqlite.new", {folder.Path()}), HasSubstr("there already"));
  EXPECT_THAT(CreationError("none/plant.sqlite", {folder.Path()}), HasSubstr("directory"));
  const std::filesystem::directory_iterator files(folder.Path() / "there");
  EXPECT_THAT(std::vector(files, {}), testing::ElementsAre(mine));
  EXPECT_EQ(std::filesystem::file_size(mine), 4u);
}

}  // namespace
