#include <memory>
#include <optional>

#include "embedded/model/ObjectClass.h"
#include "embedded/processdb/ProcessDatabase.h"
#include "host/document/Document.h"
#include "services/TuvBIWServices.h"
#include "tests/support/PlantTest.h"
#include "tests/support/ScratchFolder.h"

namespace {

using namespace tests;
using Services = TuvBIWServices;
using List = ZefListValZefBaseUnknown_var;

class FastenerValidationTest : public PlantTest {
 protected:
  ZefBaseUnknown* Fastener(const std::string& key, const std::string& type,
                           const std::vector<embedded::Product*>& parts) {
    embedded::SpotWeldData data;
    data.key = key;
    data.type = type;
    data.parts = parts;
    return plant.Document()->AddSpotWeld(data).Identity();
  }

  embedded::Product& p1 = plant.Part("P1");
  embedded::Product& p2 = plant.Part("P2");
  embedded::Product& p3 = plant.Part("P3");
};

TEST_F(FastenerValidationTest, TheListMustHoldEveryPartThatTheWeldJoins) {
  ZefBaseUnknown* const weld = Fastener("SW-1", "endo", {&p1, &p2, &p1});
  ZefBaseUnknown* const loose = Fastener("SW-2", "spot", {});
  List all = ListOf(p2, nullptr, p1), half = ListOf(p2), empty;
  const Strings in{"TuvBIWServices::ArePartsLoaded -- in"};
  const Strings both{in[0], "TuvBIWServices::ArePartsLoaded -- out"};
  const struct {
    ZefBaseUnknown* weld;
    List* parts;
    bool held;
  } cases[] = {
      {weld, &all, true},     {weld, &half, false},         {weld, &empty, false},
      {loose, &empty, true},  {weld, nullptr, false},       {loose, nullptr, false},
      {nullptr, &all, false}, {p1.Identity(), &all, false},
  };
  for (const auto& [asked, parts, held] : cases) {
    const TuvIBIWFastener_var fastener = asked;
    EXPECT_EQ(Services::KoraWeldJointedPartsInList(fastener, parts), held ? S_OK : E_FAIL);
    EXPECT_EQ(trace.Take(), Strings());
    EXPECT_EQ(Services::ArePartsLoaded(asked, parts), held ? 1 : 0);
    EXPECT_EQ(trace.Take(), held ? in : both);
  }
}

TEST_F(FastenerValidationTest, FastenersWithoutTheirPartsAreTakenOutIfTheSettingAsksForIt) {
  auto& op = plant.Operation("OP10");
  auto& bare = plant.Operation("OP20");
  plant.Assign(op, p1);
  plant.Assign(op, p2);
  List all = ListOf(p3, nullptr);
  all.Append(Fastener("NONE", "spot", {&p3}));
  all.Append(Fastener("HALF", "spot", {&p1, &p3}));
  all.Append(Fastener("ALL", "spot", {&p2, &p1}));
  all.Append(Fastener("ENDO-HALF", "endo", {&p3, &p1}));
  all.Append(Fastener("ENDO-NONE", "endo", {&p3}));
  all.Append(Fastener("ENDOS-HALF", "endos", {&p3, &p1}));
  all.Append(Fastener("NO-PART", "endo", {}));
  all.Append(List(all));
  const auto valid = [&](ZefISPPActivity* activity) {
    List list = all;
    Services::ValidateListOfFastenersForAssignmentToActivity(list, activity);
    return Names(list);
  };
  for (const std::optional<bool> setting : {std::optional<bool>(), std::optional(false)}) {
    application.SetPartLoadConstraint(setting);
    EXPECT_EQ(valid(&bare), Names(all));
  }
  EXPECT_EQ(trace.Take(), Strings());
  application.SetPartLoadConstraint(true);
  EXPECT_EQ(valid(&op),
            (Strings{"P3", "null", "ALL", "ENDO-HALF", "P3", "null", "ALL", "ENDO-HALF"}));
  EXPECT_EQ(trace.Take(), Strings(2, "TuvBIWServices::GetAssignedParts -- OUT"));
  EXPECT_EQ(valid(&bare), Strings()) << "nothing is valid where nothing is loaded";
  EXPECT_EQ(valid(nullptr), Strings());
  all.RemoveAll();
  EXPECT_EQ(valid(&op), Strings());
}

// A database in a file: LINE, CELL below it and TASK below that, each with two more versions.
class ProcessVersionTest : public PlantTest {
 protected:
  using Lists = std::vector<Strings>;

  void SetUp() override {
    auto made = embedded::ProcessDatabase::Create(folder->Path() / "versions.sqlite");
    embedded::ProcessDatabase::Transaction filling(*made);
    for (const std::string name : {"LINE", "CELL", "TASK"}) {
      made->AddProcess(name, "", true);
      for (const char* const version : {".2", ".3"}) {
        made->AddProcess(name + version, "", true);
        made->RelateVersions(name, name + version);
      }
    }
    made->AddProcess("ALONE", "", true);
    made->AddParent("TASK", "CELL");
    made->AddParent("CELL", "LINE");
    made->LinkActivity("OP10", "TASK");
    made->LinkActivity("OP20", "ALONE");
    filling.Commit();
    database = made.get();
    plant.Document()->AttachDatabase(std::move(made));
  }
  void TearDown() override {
    EXPECT_EQ(trace.Lines(), Strings());
    plant.Document()->AttachDatabase(nullptr);
    folder.reset();
    PlantTest::TearDown();
  }
  int Judge(embedded::Activity& activity, embedded::SpotWeld& weld) {
    TuvIBIWFastener_var fastener = weld.Identity();
    const ReferenceSnapshot before{weld.Identity(), activity.Identity(),
                                   plant.Document()->Identity()};
    const int valid = Services::IsValidProcessVersion(activity.Identity(), fastener);
    EXPECT_EQ(before.Differences(), "");
    return valid;
  }
  // Judges a new fastener with these version lists.
  int Judge(embedded::Activity& activity, const Lists& lists) {
    const std::string key = "SW-" + std::to_string(++welds);
    for (const Strings& list : lists) database->AddVersionList(key, list);
    return Judge(activity, plant.Weld(key));
  }

  std::unique_ptr<ScratchFolder> folder = std::make_unique<ScratchFolder>();
  embedded::ProcessDatabase* database = nullptr;
  embedded::Activity& op = plant.Operation("OP10");
  embedded::Activity& alone = plant.Operation("OP20");
  int welds = 0;
};

TEST_F(ProcessVersionTest, TheFirstIdentifierThatDiffersIsOfARelatedVersion) {
  const struct {
    Lists lists;
    int valid;
  } cases[] = {
      {{}, 1},
      // Lists within the chain or around it say nothing.
      {{{"LINE"}, {}, {"LINE", "CELL", "TASK"}, {"TASK", "ALONE", "CELL", "LINE"}}, 0},
      {{{"LINE", "CELL.2"}}, 1},
      {{{"LINE", "CELL.3", "TASK.2"}}, 1},
      {{{"LINE.2"}}, 1},
      {{{"LINE", "TASK.2"}}, 0},
      {{{"LINE", "ALONE"}}, 0},
      // What is common is counted, wherever it stands.
      {{{"LINE", "CELL.2", "TASK"}}, 0},
      {{{"CELL.2", "TASK.2", "LINE"}}, 0},
      {{{"TASK", "CELL.2"}}, 1},
      // Every list must pass; those that say nothing neither help nor harm.
      {{{"LINE"}, {"LINE", "CELL.2"}, {}, {"LINE", "CELL.3"}}, 1},
      {{{"LINE", "CELL.2"}, {"LINE", "ALONE"}, {"LINE.2"}}, 0},
  };
  for (const auto& [lists, valid] : cases) {
    EXPECT_EQ(Judge(op, lists), valid) << testing::PrintToString(lists);
  }
  EXPECT_EQ(Judge(alone, {{"LINE"}}), 0) << "no related version at all";
  EXPECT_EQ(Judge(alone, Lists()), 1);
}

TEST_F(ProcessVersionTest, AnActivityWithoutProcessTakesThatOfTheNearestAbove) {
  auto& task = plant.Operation("TASK", Plant::Task::Welding, &op);
  auto& step = plant.Operation("STEP", Plant::Task::Welding, &task);
  EXPECT_EQ(Judge(step, {{"LINE.2"}}), 1);
  EXPECT_EQ(Judge(plant.Root(), Lists()), 0) << "no process up to the root";
  task.AnswerInterface(IID_ZefISPPAbstractActivity, false);
  EXPECT_EQ(Judge(step, Lists()), 0);
}

TEST_F(ProcessVersionTest, WhatIsAskedMustBeThereAndTheDocumentManaged) {
  embedded::Document& document = *plant.Document();
  auto& weld = plant.Weld("WELD");
  TuvIBIWFastener_var fastener = weld.Identity(), none;
  EXPECT_EQ(Services::IsValidProcessVersion(nullptr, fastener), 0);
  EXPECT_EQ(Services::IsValidProcessVersion(op.Identity(), none), 0);
  for (const _GUID& interface : {IID_ZefIIPDAdapter, IID_ZefIIPDVersionMgt, IID_ZefIIPDDataMgt}) {
    document.AnswerInterface(interface, false);
    EXPECT_EQ(Judge(op, weld), interface == IID_ZefIIPDDataMgt ? 1 : 0);
    document.AnswerInterface(interface, true);
  }
  AnswerInterface(document.FeatureContainerObject(), IID_TuvIBIWFeatureContainer, false);
  EXPECT_EQ(Judge(op, {{"LINE", "ALONE"}}), 1) << "nothing is known of its versions";
  weld.AnswerInterface(IID_ZefILinkableObject, false);
  EXPECT_EQ(Judge(op, weld), 0) << "no document";
  document.AttachDatabase(nullptr);
  EXPECT_EQ(Judge(op, weld), 0);
  EXPECT_EQ(Judge(op, plant.Weld("FREE")), 1) << "not managed by a process database";
}

// Another host, all in one object: document, environment, containers, fastener and the process A,
// which has the version B. It says that it failed whenever something was handed out all the same.
class ForeignHost
    : public ComponentObject<ZefDocument, ZefIIPDAdapter, ZefIIPDVersionMgt, ZefICompoundContainer,
                             ZefIContainer, TuvIBIWFeatureContainer, TuvIBIWFastener,
                             TuvIBIWFeature, ZefILinkableObject> {
 public:
  ZefMetaClass* GetMetaObject() const override {
    return embedded::ObjectClass<ForeignHost>("IPDDocEnv");
  }
  ZefBaseUnknown* GetImpl(int) const override {
    return Odd("bare environment") ? nullptr : const_cast<ZefBaseUnknown*>(Identity());
  }
  ZefDocument* GetDocument() override { return this; }
  ZefIPointingHolder* GetPointingHolder() override { return nullptr; }
  ZefBaseUnknown_var GetCompoundContainer() override { return Identity(); }
  ZefIContainer* GetContainer(const ZefUnicodeString&) override { return Keep<ZefIContainer>(); }
  HRESULT ListMembersHere(const char*, _SEQUENCE_ZefBaseUnknown_ptr&) override { return E_FAIL; }
  HRESULT GetDocEnvironment(ZefBaseUnknown*& oEnvironment) override {
    if (!Odd("no environment")) oEnvironment = Keep<ZefDocument>();
    return E_FAIL;
  }
  HRESULT ListProcessVersionIDs(const TuvIBIWFeature_var&,
                                ZefListPtrZefListValZefUnicodeString& oLists) override {
    for (const char* const version : versions) {
      oLists.Append(version ? new ZefListValZefUnicodeString : nullptr);
      if (version) oLists[oLists.Size()]->Append(version);
    }
    return E_FAIL;
  }
  HRESULT ListPaskAssignmentIDs(const TuvIBIWFeature_var&, ZefListValZefUnicodeString&) override {
    return E_FAIL;
  }
  HRESULT GetIPDObject(const ZefBaseUnknown_var&, IUnknown*& oObject) override {
    if (!Odd("process without object")) oObject = Keep<ZefDocument>();
    return Odd("failure with object") ? E_FAIL : S_OK;
  }
  HRESULT GetObjectFromID(const ZefUnicodeString&, IUnknown*& oObject) override {
    ++looked;
    if (!Odd("identifier of nothing")) oObject = Keep<ZefDocument>();
    return Odd("unknown identifier") ? E_FAIL : S_OK;
  }
  HRESULT GetObjectID(IUnknown* iObject, ZefUnicodeString& oIdentifier) override {
    EXPECT_TRUE(iObject);
    oIdentifier = "B";
    return S_OK;
  }
  HRESULT GetIDString(IUnknown*, ZefUnicodeString*& oIdentifier) override {
    if (!Odd("no identifiers")) oIdentifier = new ZefUnicodeString("A");
    return E_FAIL;
  }
  HRESULT GetBaseProcess(IUnknown*, IUnknown*&) override { return E_FAIL; }
  HRESULT ListRelatedVersions(IUnknown* iObject, ZefListPtrIUnknown*& oVersions) override {
    EXPECT_TRUE(iObject);
    if (Odd("no related list")) return S_OK;
    oVersions = new ZefListPtrIUnknown;
    oVersions->Append(nullptr);
    if (!Odd("related to nothing")) oVersions->Append(Keep<ZefDocument>());
    return E_FAIL;
  }
  HRESULT GetRepresentedObject(ZefBaseUnknown*&) override { return E_FAIL; }
  HRESULT SetDisplayStatus(int, int) override { return E_FAIL; }
  HRESULT GetJointedParts(List&) override { return E_FAIL; }
  HRESULT GetFastenerType(ZefUnicodeString&) override { return E_FAIL; }

  std::string odd;
  std::vector<const char*> versions;
  int looked = 0;

 private:
  bool Odd(const char* what) const { return odd == what; }
  template <class I>
  I* Keep() {
    AddRef();
    return static_cast<I*>(this);
  }
};

TEST_F(FastenerValidationTest, OddAnswersOfAHostAreNoVersions) {
  const struct {
    const char* what;
    std::vector<const char*> versions;
    int valid;
  } cases[] = {
      {"null lists among others", {nullptr, "B", nullptr, "B"}, 1},
      {"null lists alone", {nullptr}, 0},
      {"no environment", {}, 0},
      {"bare environment", {"C"}, 1},
      {"process without object", {}, 0},
      {"failure with object", {}, 0},
      {"no identifiers", {}, 0},
      {"unknown identifier", {"B"}, 0},
      {"identifier of nothing", {"B"}, 0},
      {"no related list", {"B"}, 0},
      {"related to nothing", {"B"}, 0},
      {"one that fails after others", {"B", "B", "C", "B"}, 0},
  };
  for (const auto& [what, versions, valid] : cases) {
    SCOPED_TRACE(what);
    auto& op = plant.Root();
    const auto host = embedded::MakeOwned<ForeignHost>();
    host->odd = what;
    host->versions = versions;
    TuvIBIWFastener_var fastener = host->Identity();
    const ReferenceSnapshot before{host->Identity(), op.Identity()};
    EXPECT_EQ(Services::IsValidProcessVersion(op.Identity(), fastener), valid);
    EXPECT_EQ(before.Differences(), "");
    EXPECT_LE(host->looked, 1) << "the database is asked once for each identifier";
  }
}

}  // namespace
