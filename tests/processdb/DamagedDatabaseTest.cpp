#include <chrono>
#include <csignal>
#include <gmock/gmock.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include "embedded/processdb/CsvImport.h"
#include "tests/processdb/Databases.h"
#include "tests/support/SourceFiles.h"

namespace {

using embedded::ProcessDatabase;
using testing::HasSubstr;
using tests::BytesOf;
using tests::ErrorOf;
using tests::kWholeStory;
using tests::Story;

class DamagedDatabaseTest : public testing::Test {
 protected:
  DamagedDatabaseTest() {
    tests::WriteLists(folder);
    embedded::CreateFromCsv(file, {folder.Path()});
  }
  std::string OpenError() const {
    return ErrorOf([this] { ProcessDatabase::Open(file); });
  }

  tests::ScratchFolder folder;
  std::filesystem::path file = folder.Path() / "plant.sqlite";
};

// One sentence: the file, what is wrong, what would be right.
auto IsSentence() {
  return AllOf(HasSubstr("plant.sqlite' "), HasSubstr("; "), testing::Not(HasSubstr("\n")));
}

TEST_F(DamagedDatabaseTest, SaysWhatIsWrongOfATruncatedFileAndLeavesItAlone) {
  const std::string whole = BytesOf(file);
  for (std::size_t size = 0; size < whole.size(); size += size < 110 ? 1 : 509) {
    folder.Write("plant.sqlite", whole.substr(0, size));
    EXPECT_THAT(OpenError(), IsSentence()) << size;
    EXPECT_EQ(BytesOf(file), whole.substr(0, size)) << size;
  }
}

TEST_F(DamagedDatabaseTest, SaysWhatIsWrongOfAFileThatOthersMade) {
  const std::string rules =
      "PRAGMA foreign_keys=OFF; PRAGMA ignore_check_constraints=ON; PRAGMA writable_schema=ON;";
  const std::string master = rules + "UPDATE sqlite_master SET sql=";
  const std::string lax = rules + "UPDATE sqlite_master SET sql=replace(sql,'STRICT, ','');";
  const std::string strict =
      rules + "UPDATE sqlite_master SET sql=replace(sql,') WITHOUT',') STRICT, WITHOUT');";
  const struct {
    std::vector<std::string> changes;
    const char* sentence;
  } cases[] = {
      {{"PRAGMA user_version=2"}, "of version 2, and this program reads version 1"},
      {{"PRAGMA user_version=0"}, "is damaged"},
      {{"PRAGMA application_id=7"}, "is not a process database"},
      {{"DROP TABLE version_list_entry"}, "lacks the table 'version_list_entry'"},
      {{"CREATE TABLE extra(x)"}, "has a table 'extra' besides"},
      {{"CREATE INDEX extra ON assignment(process)"}, "has an index 'extra' besides"},
      {{"CREATE TRIGGER t AFTER INSERT ON process BEGIN SELECT 1; END"}, "a trigger 't' besides"},
      {{"CREATE TRIGGER t AFTER INSERT ON process BEGIN SELECT 1; END",
        rules + "UPDATE sqlite_master SET name='sqlite_t',"
                "sql=replace(sql,'TRIGGER t','TRIGGER sqlite_t') WHERE name='t'"},
       "has a trigger 'sqlite_t' besides"},
      {{"ALTER TABLE process DROP COLUMN label"},
       "lacks the column 'label' in the table 'process'"},
      {{"ALTER TABLE process ADD COLUMN note TEXT"}, "has a column 'note' in the table 'process'"},
      {{master + "replace(sql,'label TEXT NOT NULL','label TEXT')"},
       "'label' of the table 'process' as 'label TEXT' in place of 'label TEXT NOT NULL'"},
      {{master + "replace(sql,'parent <> process','parent > process')"},
       "lacks the rule 'CHECK (parent <> process)' in the table 'parent'"},
      {{lax}, "has the table 'process' with 'WITHOUT ROWID' in place of 'STRICT, WITHOUT ROWID'"},
      {{master + "replace(sql,'STRICT, WITHOUT','STRICT,  WITHOUT')"},
       "has the table 'process' written in other words or blanks"},
      {{rules + "INSERT INTO assignment VALUES('SW',1,'GONE')"}, "in table 'assignment'"},
      {{rules + "INSERT INTO version_list_entry VALUES('SW',1,1,'LINE')"}, "'version_list_entry'"},
      {{rules + "INSERT INTO process VALUES('X','x',7)"}, "is damaged"},
      {{lax, "INSERT INTO assignment VALUES('SW','first','LINE')", strict}, "is damaged"},
      {{lax, "INSERT INTO process VALUES('X',x'00ff',1)", strict}, "is damaged"},
      {{"INSERT INTO process VALUES(CAST(x'ff' AS TEXT),'',1)"}, "is not UTF-8"},
      {{"INSERT INTO process VALUES('X','a'||char(0)||'b',1)"}, "is not UTF-8"},
      {{"INSERT INTO process VALUES('X',hex(zeroblob(1000000)),1)"}, "more than 1 MiB"},
      {{"PRAGMA journal_mode=WAL", "PRAGMA user_version=3"}, "of version 3"},
  };
  const std::string whole = BytesOf(file);
  for (const auto& c : cases) {
    folder.Write("plant.sqlite", whole);
    for (const std::string& change : c.changes)
      EXPECT_EQ(tests::ChangeAsOthers(file, change), "") << change;
    EXPECT_THAT(OpenError(), AllOf(IsSentence(), HasSubstr(c.sentence))) << c.changes.front();
  }
}

TEST_F(DamagedDatabaseTest, TheTablesOfTheGuideMakeOne) {
  const std::string guide = BytesOf(tests::SourceFile("docs/process-database.md"));
  const std::size_t begin = guide.find("```sql\n") + 7;
  const std::filesystem::path made = folder.Path() / "made.sqlite";
  const std::string tables = guide.substr(begin, guide.find("```", begin) - begin);
  const std::string marks = "PRAGMA application_id = 0x42495750; PRAGMA user_version = 1";
  EXPECT_EQ(tests::ChangeAsOthers(made, tables + marks), "");
  EXPECT_EQ(ErrorOf([&] { ProcessDatabase::Open(made)->AddProcess("LINE", "", true); }), "");
}

TEST_F(DamagedDatabaseTest, SaysWhatIsWrongOfWhatIsNoDatabase) {
  folder.Write("plant.sqlite", "weld,process\nSW-1,LINE\n" + std::string(2000, 'x'));
  EXPECT_THAT(OpenError(), AllOf(IsSentence(), HasSubstr("is not a process database")));
  for (const auto& path : {folder.Path(), folder.Path() / "none",
                           std::filesystem::path("/dev/zero"), std::filesystem::path(":memory:")}) {
    EXPECT_THAT(ErrorOf([&] { ProcessDatabase::Open(path); }), HasSubstr("is not a file"));
  }
}

TEST_F(DamagedDatabaseTest, AnswersOnFromADeletedFileAndRefusesToWriteIt) {
  const auto database = ProcessDatabase::Open(file);
  for (const bool replaced : {false, true}) {
    std::filesystem::remove(file);
    if (replaced) folder.Write("plant.sqlite", "of another program");
    EXPECT_EQ(Story(*database), kWholeStory);
    const std::string error = ErrorOf([&] { database->Assign("SW-2", "LINE"); });
    EXPECT_THAT(error, AllOf(IsSentence(), HasSubstr("was deleted or moved")));
    EXPECT_EQ(BytesOf(file), replaced ? "of another program" : "");
  }
}

// Has the file to itself until it is killed.
pid_t StartLocker(const std::filesystem::path& file) {
  int ready[2];
  EXPECT_EQ(pipe(ready), 0);
  const pid_t locker = fork();
  if (locker == 0) {
    sqlite3* database = nullptr;
    sqlite3_open(file.c_str(), &database);
    sqlite3_exec(database, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
    close(ready[1]);
    while (true) pause();
  }
  close(ready[1]);
  char byte = 0;
  EXPECT_EQ(read(ready[0], &byte, 1), 0);
  close(ready[0]);
  return locker;
}

TEST_F(DamagedDatabaseTest, WaitsForALockedFileOnceAndLosesNothing) {
  const auto database = ProcessDatabase::Open(file);
  const auto begin = std::chrono::steady_clock::now();
  const pid_t locker = StartLocker(file);
  for (int i = 0; i < 100; ++i) EXPECT_EQ(database->IsAssigned("SW-1"), E_FAIL);
  const std::string error = ErrorOf([&] { database->Assign("SW-2", "LINE"); });
  EXPECT_THAT(error, AllOf(IsSentence(), HasSubstr("is being written by another program")));
  EXPECT_EQ(OpenError(), error);
  kill(locker, SIGKILL);
  waitpid(locker, nullptr, 0);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
  EXPECT_EQ(Story(*database), kWholeStory);
  database->Assign("SW-2", "LINE");
  EXPECT_EQ(database->IsAssigned("SW-2"), S_OK);
}

}  // namespace
