#include <fstream>
#include <memory>

#include "embedded/model/ObjectClass.h"
#include "host/document/Document.h"
#include "host/process/Process.h"
#include "host/product/Product.h"
#include "manufassly/TuvIUpdateManufAssly.h"
#include "services/Members.h"
#include "tests/contract/World.h"
#include "tests/support/SourceFiles.h"

// What the headers in host/ promise of objects, kept by the embedded host.

namespace {

using namespace tests;

class ObjectsTest : public ReferenceAudit {
 protected:
  void TearDown() override {
    owner_.reset();
    ReferenceAudit::TearDown();
  }
  static bool Answers(const ZefBaseUnknown_var& object, const char* name) {
    return static_cast<bool>(Adopt(object->QueryInterface(name)));
  }

 private:
  std::unique_ptr<World> owner_ = std::make_unique<World>();

 protected:
  World& world = *owner_;
};

TEST_F(ObjectsTest, EveryInterfaceLeadsToOneIdentityWhichIsTheImplementation) {
  int asked = 0;
  for (const auto& [kind, object] : world.Specimens()) {
    SCOPED_TRACE(kind);
    std::ifstream lines(SourceFile("tests/host/interfaces.txt"));
    for (std::string name, rest; lines >> name; std::getline(lines, rest)) {
      const auto answer = Adopt(object->QueryInterface(name.c_str()));
      if (!answer) continue;
      ++asked;
      void* root = nullptr;
      ASSERT_EQ(answer->QueryInterface(IID_ZefBaseUnknown, &root), S_OK);
      const auto identity = Adopt(static_cast<ZefBaseUnknown*>(root));
      EXPECT_EQ(identity.Get(), object.Get()) << name;
      EXPECT_EQ(Adopt(answer->QueryInterface("ZefBaseUnknown")).Get(), identity.Get()) << name;
      EXPECT_EQ(answer->GetImpl(0), identity.Get()) << name;
      void* again = nullptr;
      object->QueryInterface(NameIdentifier(name.c_str()), &again);
      EXPECT_EQ(Adopt(static_cast<ZefBaseUnknown*>(again)).Get(), answer.Get()) << name;
    }
  }
  EXPECT_GT(asked, 150);
}

TEST_F(ObjectsTest, ClassesAreNamedAsFiltersAndHandlersLookForThem) {
  auto& logical = world.plant.Document()->AddActivity(
      world.plant.Root(), {.key = "WAIT", .kind = embedded::ActivityData::Kind::Logical});
  for (const auto* const physical : {&world.op10, &world.st10, &world.plant.Root()}) {
    EXPECT_STREQ(physical->GetMetaObject()->GetClassName(), "PhysicalActivity");
    EXPECT_STREQ(physical->GetMetaObject()->GetBase()->GetClassName(), "Activity");
  }
  EXPECT_STREQ(logical.GetMetaObject()->GetClassName(), "LogicalActivity");
  EXPECT_STREQ(logical.GetMetaObject()->GetBase()->GetClassName(), "Activity");
  EXPECT_TRUE(TuvIUpdateManufAssly_var(world.op10.Identity()));
  EXPECT_FALSE(TuvIUpdateManufAssly_var(logical.Identity()));
  EXPECT_STREQ(world.st10.Outputs()[0]->IsA(), "ProductOutput");
}

TEST_F(ObjectsTest, AssembliesAreItemsAndProductsAndStationsAloneHaveItemInformation) {
  for (const char* const name :
       {"ZefISPPItem", "ZefIProduct", "ZefINavigateObject", "ZefILinkableObject"}) {
    EXPECT_TRUE(Answers(world.assembly.Identity(), name)) << name;
  }
  for (const auto& activity : world.plant.Document()->Activities()) {
    EXPECT_EQ(Answers(activity->Identity(), "TuvIBIWItemInfo"), activity->IsStation())
        << activity->Key();
  }
}

TEST_F(ObjectsTest, AMemberOfAContainerIsTheInterfaceThatWasAskedFor) {
  for (const char* const type : {"ZefISPPActivity", "ZefISPPItemMgt", "ZefIAlias"}) {
    SCOPED_TRACE(type);
    ZefIContainer_var container = world.plant.Document()->RootContainerObject();
    Members members;
    container->ListMembersHere(type, members.Out());
    ASSERT_GE(members.Size(), 6);
    const auto& activities = world.plant.Document()->Activities();
    for (std::size_t i = 0; i < activities.size(); ++i) {
      const ZefBaseUnknown_var member = members.Take(static_cast<int>(i));
      EXPECT_EQ(member.Get(), Adopt(activities[i]->Identity()->QueryInterface(type)).Get());
    }
  }
}

TEST_F(ObjectsTest, AllChildrenComeDepthFirstAndAsOftenAsTheyAreMet) {
  auto& document = *world.plant.Document();
  auto& inner = world.plant.Part("INNER", &world.bolt);
  document.AddProduct(world.door, {.key = "BOLT.1"}, &world.bolt);
  const auto all = std::unique_ptr<ZefListValZefBaseUnknown_var>(
      document.RootProduct().GetAllChildren("ZefIProduct"));
  EXPECT_EQ(Names(*all), (Strings{"FRAME", "BOLT", "INNER", "DOOR", "BOLT.1", "INNER"}));
  inner.AnswerInterface(IID_ZefIMovable, false);
  const auto movable = std::unique_ptr<ZefListValZefBaseUnknown_var>(
      document.RootProduct().GetAllChildren("ZefIMovable"));
  EXPECT_EQ(Names(*movable), (Strings{"FRAME", "BOLT", "DOOR", "BOLT.1"}));
}

// An interface and an activity of a host that queries and counts on its own.
class Workshop : public Interface<Workshop> {
 public:
  static constexpr char Name[] = "WorkshopOfTheContractTest";
};

class Handmade : public ZefISPPActivity {
 public:
  static ZefMetaClass* Describe() {
    static ZefMetaClass* const meta = fct_RetrieveMetaObject(
        "HandmadeActivity", Implementation, FindMetaClass("PhysicalActivity"), nullptr, nullptr, 0);
    return meta;
  }
  explicit Handmade(bool& ended) : ended_(ended) {}
  ~Handmade() override { ended_ = true; }
  ZefMetaClass* GetMetaObject() const override { return Describe(); }
  ZefBaseUnknown* GetImpl(int) const override { return const_cast<Handmade*>(this); }
  HRESULT QueryInterface(const _GUID& iIID, void** oPtr) override {
    const bool own = iIID == IID_ZefBaseUnknown || iIID == IID_ZefISPPActivity;
    *oPtr = own ? this : FindOrCreateExtension(this, iIID);
    if (!*oPtr) return E_FAIL;
    AddRef();
    return S_OK;
  }
  unsigned int AddRef() override { return ++count_; }
  unsigned int Release() override {
    if (--count_ > 0) return count_;
    count_ = 1000;
    DestroyExtensions(this);
    delete this;
    return 0;
  }
  HRESULT GetParentActivity(ZefISPPAbstractActivity_var&) override { return E_FAIL; }
  ZefUnicodeString GetLabel() override { return "handmade"; }

 private:
  bool& ended_;
  unsigned int count_ = 1;
};

TEST_F(ObjectsTest, AnObjectThatCountsOnItsOwnHasExtensionsThroughTheirFunctions) {
  // Classes are found by name once somebody asked an object for its own.
  ASSERT_TRUE(Plant().Document()->Root()->GetMetaObject());
  const long alive = CountLiveObjects();
  bool ended = false;
  ZefBaseUnknown_var object = Adopt(static_cast<ZefBaseUnknown*>(new Handmade(ended)));
  TuvIUpdateManufAssly_var update = object;
  ASSERT_TRUE(update);
  EXPECT_EQ(CountLiveObjects(), alive + 2);
  EXPECT_EQ(TuvIUpdateManufAssly_var(object).Get(), update.Get()) << "the same again";
  EXPECT_EQ(update->GetImpl(0), object.Get());
  EXPECT_EQ(update, object);
  object = nullptr;
  EXPECT_FALSE(ended) << "the extension holds what it extends";
  EXPECT_EQ(update->AddUpdateCallback(), E_FAIL) << "it publishes nothing";
  update = nullptr;
  EXPECT_TRUE(ended);
  EXPECT_EQ(CountLiveObjects(), alive);
}

class Worker : public ComponentObject<Workshop> {
 public:
  ZefMetaClass* GetMetaObject() const override {
    return embedded::ObjectClass<Worker>("WorkerOfTheContractTest");
  }
};

TEST_F(ObjectsTest, NamesAreKnownOnceTheirMetaObjectsWereAskedFor) {
  EXPECT_EQ(FindInterface(Workshop::Name), nullptr);
  EXPECT_EQ(FindMetaClass("WorkerOfTheContractTest"), nullptr);
  const auto worker = embedded::MakeOwned<Worker>();
  EXPECT_TRUE(Handle<Workshop>(worker->Identity()));
  EXPECT_EQ(FindInterface(Workshop::Name), Workshop::MetaObject()) << "the first query asked";
  EXPECT_STREQ(worker->IsA(), "WorkerOfTheContractTest");
  EXPECT_EQ(FindMetaClass("WorkerOfTheContractTest"), worker->GetMetaObject());
}

}  // namespace
