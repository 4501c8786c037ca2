#include <fstream>
#include <memory>
#include <set>
#include <thread>

#include "embedded/processdb/ProcessDatabase.h"
#include "host/HostApplication.h"
#include "host/fastening/TuvIBIWFeatureContainer.h"
#include "host/processdb/ProcessDb.h"
#include "manufassly/TuvEUpdateManufAssly.h"
#include "services/TuvBIWServices.h"
#include "tests/contract/World.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/SourceFiles.h"

// What the headers in host/ promise of an application and of what surrounds it.

namespace {

using namespace tests;
using Texts = std::set<std::string>;

// An application that writes down which messages are asked for, and has those that it is given.
class Librarian : public HostApplication {
 public:
  explicit Librarian(World& iWorld) : world_(iWorld) { Install(this); }
  ~Librarian() override { Install(&world_.application); }
  ZefFrmEditor* CurrentEditor() override { return world_.application.CurrentEditor(); }
  ZefApplicationFrame* Frame() override { return world_.application.Frame(); }
  int ShowDialog(const DialogRequest& iRequest) override {
    shown.push_back(iRequest.title + "|" + iRequest.message);
    return 0;
  }
  bool HasCatalog(const std::string&) override { return hasCatalogs; }
  bool FindMessage(const std::string& iCatalog, const std::string& iKey,
                   std::string& oText) override {
    asked.insert(iCatalog + " " + iKey);
    if (iKey == missing || !hasCatalogs) return false;
    oText = "<" + iKey + ">";
    return true;
  }

  bool hasCatalogs = true;
  std::string missing;
  Texts asked;
  Strings shown;

 private:
  World& world_;
};

// Every warning of the library, each once.
void WarnOfEverything(World& world) {
  auto welds = ListOf(world.weld);
  TuvBIWServices::AssignListOfWelds(&welds, &world.op10, nullptr, 0);
  const auto update = Make<TuvEUpdateManufAssly>();
  for (const char* const id :
       {"MultipleActsInFlow", "MultipleProductOutput", "RemovedFirstAssign", "MAIsChild"}) {
    ZefUnicodeString names = "A$B", message = id;
    update->DisplayWarningWindow(names, message);
  }
}

const Strings kAssignmentKeys = {"TitleDuplicateWarningId", "DuplicateWarningId"};
const Strings kUpdateKeys = {
    "ErrorMessage.Title",      "WarningMessage.Title",     "ErrorMessageProcessFlow",
    "ErrorMessageProductFlow", "ErrorMessageForRecursion", "WarningMessageInputRemoved",
    "MultipleActsInFlow",      "MultipleProductOutput",    "MAIsChild"};

TEST(ApplicationContractTest, TheMessagesThatTheHeaderNamesAreTheOnesAskedFor) {
  World world;
  Texts named;
  for (const std::string& key : kAssignmentKeys) named.insert("TuvKelBIWAssignWeldDlg " + key);
  for (const std::string& key : kUpdateKeys) named.insert("TuvBIWUpdateManufAssemblyCmd " + key);
  Librarian librarian(world);
  WarnOfEverything(world);
  EXPECT_EQ(librarian.asked, named);
  EXPECT_EQ(librarian.shown.size(), 5u);
  std::string header;
  std::getline(std::ifstream(SourceFile("host/HostApplication.h")), header, '\0');
  for (const Strings* const keys : {&kAssignmentKeys, &kUpdateKeys}) {
    for (const std::string& key : *keys) EXPECT_NE(header.find(key), std::string::npos) << key;
  }
}

TEST(ApplicationContractTest, WithoutMessagesATextStandsInOrItsPlaceStaysEmpty) {
  World world;
  Librarian librarian(world);
  librarian.missing = "MAIsChild";
  WarnOfEverything(world);
  EXPECT_EQ(librarian.shown.back(), "<ErrorMessage.Title>|<ErrorMessageForRecursion>A\nB");
  librarian.shown.clear();
  librarian.hasCatalogs = false;
  WarnOfEverything(world);
  ASSERT_EQ(librarian.shown.size(), 5u);
  EXPECT_EQ(
      librarian.shown[0],
      "WARNING|Duplicated weld assignements to \nthe SAME activity are illegal and\nignored.");
  for (std::size_t i = 1; i < 5; ++i) EXPECT_EQ(librarian.shown[i], "|");
}

TEST(ApplicationContractTest, ADatabaseObjectIsOneWhileItIsHeldAndANullFeatureIsUnknown) {
  const ScratchFolder folder;
  World world;
  auto made = embedded::ProcessDatabase::Create(folder.Path() / "processes.sqlite");
  made->AddProcess("LINE", "", true);
  made->AddProcess("CELL", "", true);
  made->AddParent("CELL", "LINE");
  made->Assign("SW-1", "CELL");
  made->AddVersionList("SW-1", {"LINE", "CELL"});
  made->LinkActivity("OP10", "CELL");
  world.plant.Document()->AttachDatabase(std::move(made));
  const ZefIIPDAdapter_var adapter = world.plant.Document()->Identity();
  Handle<IUnknown> line, again, cell, ofActivity, base;
  adapter->GetObjectFromID("LINE", line.Put());
  adapter->GetObjectFromID("LINE", again.Put());
  adapter->GetObjectFromID("CELL", cell.Put());
  adapter->GetIPDObject(world.op10.Identity(), ofActivity.Put());
  adapter->GetBaseProcess(line, base.Put());
  ASSERT_TRUE(line && cell);
  EXPECT_EQ(again.Get(), line.Get());
  EXPECT_EQ(base.Get(), line.Get());
  EXPECT_EQ(ofActivity.Get(), cell.Get());
  ZefListPtrIUnknown* parents = nullptr;
  ZefIIPDDataMgt_var(cell)->ListParents(cell, parents, 0);
  const std::unique_ptr<ZefListPtrIUnknown> list(parents);
  ASSERT_TRUE(list && list->Size() == 1);
  EXPECT_EQ(Adopt((*list)[1]).Get(), line.Get());

  world.weld.AnswerInterface(IID_TuvIBIWFeature, false);
  const TuvIBIWFeatureContainer_var container = world.plant.Document()->FeatureContainerObject();
  ZefListPtrZefListValZefUnicodeString versions;
  ZefListValZefUnicodeString assignments;
  container->ListProcessVersionIDs(TuvIBIWFeature_var(world.weld.Identity()), versions);
  container->ListPaskAssignmentIDs(TuvIBIWFeature_var(world.weld.Identity()), assignments);
  EXPECT_EQ(versions.Size() + assignments.Size(), 0);
}

#if !defined(NDEBUG) && GTEST_HAS_DEATH_TEST
TEST(InteractiveThreadDeathTest, IsTheFirstThatCountsAReference) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto object = Make<ZefNotification>();
  object->AddRef();
  object->Release();
  EXPECT_DEATH(std::thread([&] { object->AddRef(); }).join(), "objects belong to one thread");
}
#endif

}  // namespace
