#include <filesystem>

#include "embedded/processdb/ProcessDatabase.h"
#include "services/TuvBIWServices.h"
#include "tests/support/HostFailures.h"
#include "tests/support/PlantTest.h"

namespace {

using Services = TuvBIWServices;
using namespace tests;

// A process of a database that is made up: it hands out what it is told to.
class Process : public ComponentObject<ZefIIPDDataMgt> {
 public:
  explicit Process(const char* iName) : name(iName) {}
  ZefMetaClass* GetMetaObject() const override { return ZefBaseUnknown::MetaObject(); }
  HRESULT ListParents(IUnknown* iObject, ZefListPtrIUnknown*& oParents, int iMode) override {
    EXPECT_EQ(iObject, static_cast<IUnknown*>(this));
    EXPECT_EQ(iMode, 0);
    if (parents.empty()) return S_OK;
    oParents = new ZefListPtrIUnknown;
    for (Process* const parent : parents) {
      if (parent) parent->AddRef();
      oParents->Append(parent);
    }
    return E_FAIL;  // the list counts
  }

  const char* name;
  std::vector<Process*> parents;
  Process* base = this;  // what it is accepted as; null when it is refused
};

class Adapter : public ComponentObject<ZefIIPDAdapter> {
 public:
  ZefMetaClass* GetMetaObject() const override { return ZefBaseUnknown::MetaObject(); }
  HRESULT GetIPDObject(const ZefBaseUnknown_var&, IUnknown*&) override { return E_FAIL; }
  HRESULT GetObjectFromID(const ZefUnicodeString&, IUnknown*&) override { return E_FAIL; }
  HRESULT GetObjectID(IUnknown*, ZefUnicodeString&) override { return E_FAIL; }
  HRESULT GetBaseProcess(IUnknown* iParent, IUnknown*& oBase) override {
    Process* const base = static_cast<Process*>(iParent)->base;
    if (!base) return E_FAIL;
    base->AddRef();
    oBase = base;
    return 1;
  }
  HRESULT GetIDString(IUnknown* iObject, ZefUnicodeString*& oIdentifier) override {
    const char* const name = static_cast<Process*>(iObject)->name;
    if (name) oIdentifier = new ZefUnicodeString(name);
    return E_FAIL;  // the text counts
  }
};

Strings Texts(const ZefListValZefUnicodeString& list) {
  Strings texts;
  for (int i = 1; i <= list.Size(); ++i) texts.push_back(list[i].ConvertToChar());
  return texts;
}

Strings NamesOf(const ZefListPtrIUnknown& list) {
  Strings names;
  for (int i = 1; i <= list.Size(); ++i) names.push_back(static_cast<Process*>(list[i])->name);
  return names;
}

class PaskWalkTest : public ReferenceAudit {
 protected:
  // What a walk from the object gives, both ways; every reference is given back.
  Strings Upwards(Process* from) {
    ZefListPtrIUnknown objects;
    Services::GetListPaskObjectsTillRoot(from, adapter, objects);
    const Strings names = NamesOf(objects);
    Services::ClearUnknownList(&objects);
    EXPECT_EQ(objects.Size(), 0);
    return names;
  }
  Strings Downwards(Process* from) {
    ZefListValZefUnicodeString identifiers;
    identifiers.Append("left from before");
    Services::GetListPaskObjectIDsTillRoot(from, adapter, identifiers);
    return Texts(identifiers);
  }
  void TearDown() override {
    EXPECT_EQ(snapshot.Differences(), "");
    EXPECT_EQ(trace.Lines(), Strings());
    for (auto* const process : {&line, &cell, &note, &task}) *process = nullptr;
    adapter = nullptr;
    ReferenceAudit::TearDown();
  }

  Handle<Process> line = Make<Process>("LINE"), cell = Make<Process>("CELL"),
                  note = Make<Process>("NOTE"), task = Make<Process>("TASK");
  ZefIIPDAdapter_var adapter = AdoptAs<ZefIIPDAdapter>(new Adapter);
  ReferenceSnapshot snapshot{line, cell, note, task, adapter};
  TraceRecorder trace;
};

TEST_F(PaskWalkTest, TheParentIsTheFirstThatIsAcceptedAndTheWalkGoesUpThroughIt) {
  note->base = nullptr;
  task->parents = {nullptr, note, cell, line};
  cell->parents = {line, note};
  EXPECT_EQ(Upwards(task), (Strings{"TASK", "CELL", "LINE"}));
  EXPECT_EQ(Downwards(task), (Strings{"LINE", "CELL", "TASK"}));
  EXPECT_EQ(Downwards(line), Strings{"LINE"});
  cell->name = nullptr;
  EXPECT_EQ(Downwards(task), (Strings{"LINE", "TASK"}));
  cell->name = "CELL";
  // The walk goes on from what the adapter makes of the parent.
  note->base = line;
  EXPECT_EQ(Upwards(task), (Strings{"TASK", "LINE"}));
  task->parents = {nullptr};
  EXPECT_EQ(Services::GetParentErgoCompBaseProcess(task, adapter), nullptr);
}

TEST_F(PaskWalkTest, NothingIsAboveNullOrAnObjectWithoutHierarchy) {
  task->parents = {cell};
  EXPECT_EQ(Services::GetParentErgoCompBaseProcess(nullptr, adapter), nullptr);
  EXPECT_EQ(Services::GetParentErgoCompBaseProcess(task, nullptr), nullptr);
  EXPECT_EQ(Services::GetParentErgoCompBaseProcess(adapter, adapter), nullptr);
  EXPECT_EQ(Downwards(nullptr), Strings());
  EXPECT_EQ(Upwards(nullptr), Strings());
  adapter = nullptr;
  EXPECT_EQ(Downwards(task), Strings());
  EXPECT_EQ(Upwards(task), Strings());
  adapter = AdoptAs<ZefIIPDAdapter>(new Adapter);
  snapshot = {line, cell, note, task};
}

TEST_F(PaskWalkTest, AWalkInACircleEndsWhereItWouldBeginAgain) {
  task->parents = {cell};
  cell->parents = {line};
  line->parents = {cell};
  EXPECT_EQ(Upwards(task), (Strings{"TASK", "CELL", "LINE"}));
  EXPECT_EQ(Downwards(task), (Strings{"LINE", "CELL", "TASK"}));
  line->parents = {line};
  EXPECT_EQ(Upwards(line), Strings{"LINE"});
}

TEST_F(PaskWalkTest, TheListIsReleasedBeforeItIsFilledEvenIfItAloneKeepsTheObject) {
  auto only = Make<Process>("ONLY");
  Process* const object = only;
  ZefListPtrIUnknown objects;
  objects.Append(nullptr);
  objects.Append(only.Detach());
  for (Process* const former : {task.Get(), task.Get()}) {
    former->AddRef();
    objects.Append(former);
  }
  Services::GetListPaskObjectsTillRoot(object, adapter, objects);
  EXPECT_EQ(NamesOf(objects), Strings{"ONLY"});
  EXPECT_EQ(snapshot.Differences(), "");
  Services::GetListPaskObjectsTillRoot(object, nullptr, objects);
  EXPECT_EQ(objects.Size(), 0);
  Services::ClearUnknownList(nullptr);
}

// The document has a database in a file: of its welds, SW-1 is assigned to two processes there.
class PaskServicesTest : public PlantTest {
 protected:
  void SetUp() override {
    std::filesystem::remove(file);
    auto made = embedded::ProcessDatabase::Create(file);
    for (const char* const name : {"LINE", "CELL", "TASK"}) made->AddProcess(name, "", true);
    made->AddProcess("NOTE", "", false);
    made->AddParent("TASK", "NOTE");
    made->AddParent("TASK", "CELL");
    made->AddParent("CELL", "LINE");
    made->Assign("SW-1", "TASK");
    made->Assign("SW-1", "CELL");
    plant.Document()->AttachDatabase(std::move(made));
  }
  void TearDown() override {
    plant.Document()->AttachDatabase(nullptr);
    std::filesystem::remove(file);
    PlantTest::TearDown();
  }

  // Tests of one program may run at the same time.
  std::filesystem::path file =
      std::filesystem::path(testing::TempDir()) /
      (std::string(testing::UnitTest::GetInstance()->current_test_info()->name()) + ".sqlite");
  embedded::SpotWeld& assigned = plant.Weld("SW-1");
  ZefBaseUnknown* const weld = assigned.Identity();
};

TEST_F(PaskServicesTest, AssignmentsAreCountedAndAddedToTheText) {
  ZefBaseUnknown* const free = plant.Weld("SW-2").Identity();
  ZefBaseUnknown* const seam = plant.Seam("SEAM-1").Identity();
  const ReferenceSnapshot before{weld, free, seam};
  const struct {
    ZefBaseUnknown* weld;
    int isAssigned, count;
    const char *text, *extended;
    HRESULT result;
  } cases[] = {
      {weld, 1, 2, "", "TASK;CELL", S_OK},
      {weld, 1, 2, "T", "T;TASK;CELL", S_OK},
      {free, 0, 0, "T", "T", E_FAIL},
      {seam, 0, 0, "", "", E_FAIL},
      {plant.Document()->Identity(), 0, 0, "T", "T", E_FAIL},
      {nullptr, 0, 0, "T", "T", E_FAIL},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    ZefUnicodeString text = c.text;
    EXPECT_EQ(Services::AddPaskAssignmentToText(c.weld, text), c.result);
    EXPECT_EQ(text, c.extended);
    EXPECT_EQ(Services::GetNumberOfPaskAssignments(c.weld), c.count);
    EXPECT_EQ(Services::IsWeldAssignedInPask(c.weld), c.isAssigned);
  }
  assigned.AnswerInterface(IID_TuvISpotWeld, false);
  EXPECT_EQ(Services::IsWeldAssignedInPask(weld), 0);
  EXPECT_EQ(before.Differences(), "");
  EXPECT_EQ(trace.Lines(), Strings());
}

TEST_F(PaskServicesTest, NoFailureOfTheDatabaseLosesAReferenceOrTheAnswerAfterwards) {
  const ZefIIPDAdapter_var adapter = plant.Document()->Identity();
  Handle<IUnknown> task;
  ASSERT_EQ(adapter->GetObjectFromID("TASK", task.Put()), S_OK);
  ZefListPtrIUnknown objects;
  ZefListValZefUnicodeString identifiers;
  ZefUnicodeString text;
  int count = 0;
  const auto ask = [&] {
    text = "";
    Services::AddPaskAssignmentToText(weld, text);
    count = Services::GetNumberOfPaskAssignments(weld) + Services::IsWeldAssignedInPask(weld);
    (void)Adopt(Services::GetParentErgoCompBaseProcess(task, adapter));
    Services::GetListPaskObjectIDsTillRoot(task, adapter, identifiers);
    Services::GetListPaskObjectsTillRoot(task, adapter, objects);
  };
  const long alive = CountLiveObjects();
  const ReferenceSnapshot before{weld, adapter};
  const long met = ForEachHostFailure(ask, [&] {
    Services::ClearUnknownList(&objects);
    ASSERT_EQ(CountLiveObjects(), alive);
    ASSERT_EQ(before.Differences(), "");
    ask();
    ASSERT_EQ(text, "TASK;CELL");
    ASSERT_EQ(count, 3);
    ASSERT_EQ(Texts(identifiers), (Strings{"LINE", "CELL", "TASK"}));
    ASSERT_EQ(objects.Size(), 3);
    Services::ClearUnknownList(&objects);
  });
  RecordProperty("host_failures", static_cast<int>(met));
  EXPECT_GT(met, 50);
}

}  // namespace
