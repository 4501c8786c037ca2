#include <filesystem>
#include <gtest/gtest.h>

#include "embedded/processdb/ProcessDatabase.h"
#include "services/TuvBIWServices.h"
#include "tests/support/HostFailures.h"
#include "tests/support/Plant.h"
#include "tests/support/ReferenceAudit.h"
#include "tests/support/TraceRecorder.h"

namespace {

using Services = TuvBIWServices;
using Strings = std::vector<std::string>;

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

class PaskWalkTest : public tests::ReferenceAudit {
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
    tests::ReferenceAudit::TearDown();
  }

  Handle<Process> line = Make<Process>("LINE"), cell = Make<Process>("CELL"),
                  note = Make<Process>("NOTE"), task = Make<Process>("TASK");
  ZefIIPDAdapter_var adapter = AdoptAs<ZefIIPDAdapter>(new Adapter);
  tests::ReferenceSnapshot snapshot{line, cell, note, task, adapter};
  tests::TraceRecorder trace;
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

// A document with a database in a file: of its welds, SW-1 is assigned to two processes there.
class PaskRoom {
 public:
  PaskRoom() {
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
  ~PaskRoom() {
    plant.Document()->AttachDatabase(nullptr);
    std::filesystem::remove(file);
  }

  Handle<IUnknown> ObjectOf(const char* process) {
    Handle<IUnknown> object;
    plant.Document()->GetObjectFromID(process, object.Put());
    return object;
  }

  std::filesystem::path file = std::filesystem::path(testing::TempDir()) / "pask-services.sqlite";
  tests::Plant plant;
  embedded::SpotWeld& weld = plant.Weld("SW-1");
  embedded::SpotWeld& free = plant.Weld("SW-2");
  embedded::CurveFastener& seam = plant.Seam("SEAM-1");
  ZefIIPDAdapter_var adapter = plant.Document()->Identity();
};

class PaskServicesTest : public tests::ReferenceAudit {};

TEST_F(PaskServicesTest, AssignmentsAreCountedAndAddedToTheText) {
  PaskRoom room;
  const tests::TraceRecorder trace;
  const tests::ReferenceSnapshot before{room.weld.Identity(), room.free.Identity(),
                                        room.seam.Identity()};
  const struct {
    ZefBaseUnknown* weld;
    int isAssigned, count;
    const char *text, *extended;
    HRESULT result;
  } cases[] = {
      {room.weld.Identity(), 1, 2, "", "TASK;CELL", S_OK},
      {room.weld.Identity(), 1, 2, "T", "T;TASK;CELL", S_OK},
      {room.free.Identity(), 0, 0, "T", "T", E_FAIL},
      {room.seam.Identity(), 0, 0, "", "", E_FAIL},
      {room.plant.Document()->Identity(), 0, 0, "T", "T", E_FAIL},
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
  room.weld.AnswerInterface(IID_TuvISpotWeld, false);
  EXPECT_EQ(Services::IsWeldAssignedInPask(room.weld.Identity()), 0);
  room.weld.AnswerInterface(IID_TuvISpotWeld, true);
  EXPECT_EQ(before.Differences(), "");
  EXPECT_EQ(trace.Lines(), Strings());
}

TEST_F(PaskServicesTest, NoFailureOfTheDatabaseLosesAReferenceOrTheAnswerAfterwards) {
  PaskRoom room;
  ZefBaseUnknown* const weld = room.weld.Identity();
  const auto task = room.ObjectOf("TASK");
  ASSERT_TRUE(task);
  ZefListPtrIUnknown objects;
  ZefListValZefUnicodeString identifiers;
  ZefUnicodeString text;
  int count = 0;
  const auto ask = [&] {
    text = "";
    Services::AddPaskAssignmentToText(weld, text);
    count = Services::GetNumberOfPaskAssignments(weld) + Services::IsWeldAssignedInPask(weld);
    (void)Adopt(Services::GetParentErgoCompBaseProcess(task, room.adapter));
    Services::GetListPaskObjectIDsTillRoot(task, room.adapter, identifiers);
    Services::GetListPaskObjectsTillRoot(task, room.adapter, objects);
  };
  const long alive = CountLiveObjects();
  const tests::ReferenceSnapshot before{weld, room.adapter, room.plant.Document()->Identity()};
  const long met = tests::ForEachHostFailure(ask, [&] {
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
