#include <functional>
#include <gmock/gmock.h>

#include "embedded/processdb/CsvImport.h"
#include "services/TuvBIWServices.h"
#include "tests/processdb/Databases.h"
#include "tests/support/Plant.h"
#include "tests/support/ReferenceAudit.h"

namespace {

using embedded::ProcessDatabase;
using testing::HasSubstr;
using tests::ErrorOf;
using tests::kWholeStory;
using tests::Story;

class ProcessDatabaseTest : public tests::ReferenceAudit {
 protected:
  ProcessDatabaseTest() {
    tests::WriteLists(folder);
    embedded::CreateFromCsv(file, {folder.Path()});
    database = ProcessDatabase::Open(file);
  }
  void TearDown() override {
    database.reset();
    tests::ReferenceAudit::TearDown();
  }

  tests::ScratchFolder folder;
  std::filesystem::path file = folder.Path() / "plant.sqlite";
  std::unique_ptr<ProcessDatabase> database;
};

Handle<IUnknown> ObjectOf(ProcessDatabase& database, const char* process) {
  Handle<IUnknown> object;
  database.GetObjectFromID(process, object.Put());
  return object;
}

TEST_F(ProcessDatabaseTest, RefusesWhatIsUnknownOrNotItsOwnAndLeavesTheCallersPlaceAsItWas) {
  const auto other = ProcessDatabase::Open(file);
  const tests::Plant plant;
  const auto foreign = ObjectOf(*other, "TASK");
  const auto orphan = ObjectOf(*ProcessDatabase::Open(file), "TASK");
  IUnknown* const strangers[] = {nullptr, foreign, orphan, plant.Root().Identity()};
  for (IUnknown* const stranger : strangers) {
    IUnknown* object = foreign;
    ZefUnicodeString text("as it was");
    ZefUnicodeString* place = &text;
    ZefListPtrIUnknown none;
    ZefListPtrIUnknown* list = &none;
    EXPECT_EQ(database->GetBaseProcess(stranger, object), E_FAIL);
    EXPECT_EQ(database->GetObjectID(stranger, text), E_FAIL);
    EXPECT_EQ(database->GetIDString(stranger, place), E_FAIL);
    EXPECT_EQ(database->ListParents(stranger, list, 0), E_FAIL);
    EXPECT_EQ(database->ListRelatedVersions(stranger, list), E_FAIL);
    EXPECT_EQ(database->GetObjectFromID("task", object), E_FAIL);
    EXPECT_EQ(database->GetActivityObject("TASK", object), E_FAIL);
    EXPECT_EQ(object, foreign);
    EXPECT_EQ(text, "as it was");
    EXPECT_EQ(place, &text);
    EXPECT_EQ(list, &none);
  }
}

TEST_F(ProcessDatabaseTest, HasOneObjectPerProcessWhileItIsHeldAndNoneOnceItIsClosed) {
  const ZefIIPDDataMgt_var task = ObjectOf(*database, "TASK");
  Handle<IUnknown> again;
  database->GetActivityObject("OP10", again.Put());
  EXPECT_EQ(task.Get(), again.Get());
  ZefListPtrIUnknown* list = nullptr;
  EXPECT_EQ(task->ListParents(task, list, 0), S_OK);
  EXPECT_EQ(tests::Identifiers(*database, std::exchange(list, nullptr)), " NÖTE CELL LINE");
  database.reset();
  EXPECT_EQ(task->ListParents(task, list, 0), E_FAIL);
  EXPECT_EQ(list, nullptr);
}

TEST_F(ProcessDatabaseTest, AnswersForTheDocumentThatItIsAttachedTo) {
  tests::Plant plant;
  auto& op = plant.Operation("OP10");
  auto& weld = plant.Weld("SW-1");
  auto& document = *plant.Document();
  for (const bool attached : {false, true, false}) {
    document.AttachDatabase(attached ? ProcessDatabase::Open(file) : nullptr);
    ZefBaseUnknown_var environment;
    document.GetDocEnvironment(environment.Put());
    EXPECT_EQ(environment->GetImpl(0)->IsAKindOf("IPDDocEnv"), attached);
    Handle<IUnknown> object;
    EXPECT_EQ(document.GetIPDObject(weld.Identity(), object.Put()), E_FAIL);
    EXPECT_EQ(Succeeded(document.GetIPDObject(op.Identity(), object.Put())), attached);
    ZefListPtrIUnknown* parents = nullptr;
    EXPECT_EQ(document.ListParents(document.Identity(), parents, 0), E_FAIL);
    EXPECT_EQ(TuvBIWServices::IsWeldAssignedInPask(weld.Identity()), attached);
    EXPECT_EQ(TuvBIWServices::GetNumberOfPaskAssignments(weld.Identity()), attached ? 2 : 0);
    // Parents that run in a circle end the walk.
    if (attached) database->AddParent("LINE", "TASK");
    ZefListValZefUnicodeString chain;
    TuvBIWServices::GetListPaskObjectIDsTillRoot(object, document.Identity(), chain);
    EXPECT_EQ(chain.Size(), attached ? 3 : 0);
  }
}

TEST_F(ProcessDatabaseTest, UndoesWhatIsNotCommittedAtAnyDepth) {
  using Transaction = ProcessDatabase::Transaction;
  for (const bool isCommitted : {false, true}) {
    auto outer = std::make_unique<Transaction>(*database);
    database->AddProcess("NEW", "", true);
    auto undone = std::make_unique<Transaction>(*database);
    database->Assign("SW-1", "LINE");
    undone.reset();
    Transaction inner(*database);
    database->Assign("SW-2", "NEW");
    inner.Commit();
    if (isCommitted) outer->Commit();
    outer.reset();
    const std::string story = Story(*ProcessDatabase::Open(file));
    EXPECT_EQ(story == kWholeStory, !isCommitted);
    EXPECT_THAT(story, HasSubstr(isCommitted ? "SW-2 assigned [ NEW]" : "SW-2 not assigned []"));
    EXPECT_THAT(story, HasSubstr("SW-1 assigned [ TASK CELL]"));
  }
}

TEST_F(ProcessDatabaseTest, SaysWhyAnEntryIsRefusedAndStoresNothingOfIt) {
  const std::string large(std::size_t{2} << 20, 'x');
  const std::pair<std::function<void()>, const char*> cases[] = {
      {[&] { database->AddProcess("\xFF", "", true); }, "not UTF-8"},
      {[&] { database->AddProcess("A", std::string("a\0b", 3), true); }, "NUL"},
      {[&] { database->AddProcess("A", large, true); }, "more than 1 MiB"},
      {[&] { database->AddParent("GONE", "TASK"); }, "there is no process 'GONE'"},
      {[&] { database->AddParent("TASK", "TASK"); }, "its own parent"},
      {[&] { database->AddParent("TASK", "CELL"); }, "has the parent 'CELL' already"},
      {[&] { database->LinkActivity("OP20", "GONE"); }, "there is no process 'GONE'"},
      {[&] {
         database->AddVersionList("SW-2", {"LINE", "GONE"});
       },
       "'GONE'"},
      {[&] {
         database->AddVersionList("SW-2", {"LINE", "CELL", "LINE"});
       },
       "names 'LINE' already"},
      {[&] { ProcessDatabase::Create(file); }, "is there already"},
  };
  for (const auto& [action, sentence] : cases) EXPECT_THAT(ErrorOf(action), HasSubstr(sentence));
  EXPECT_EQ(Story(*ProcessDatabase::Open(file)), kWholeStory);
}

}  // namespace
