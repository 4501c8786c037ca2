#include <memory>
#include <utility>

#include "embedded/model/ObjectClass.h"
#include "host/document/Document.h"
#include "host/process/Process.h"
#include "services/Received.h"
#include "services/TuvBIWServices.h"
#include "tests/support/PlantTest.h"

// What the services ask of a host, and how, seen by hosts of a few lines that write it down.

namespace {

using namespace tests;
using Services = TuvBIWServices;
using List = ZefListValZefBaseUnknown_var;
using NewList = Received<List>;

class HostDemandsTest : public PlantTest {};

// A document, its root container, its root activity and that one's container in one. It lists
// itself and then a member that is not there.
class Gap : public ComponentObject<ZefDocument, ZefInit, ZefISPPProcessContainer, ZefISPPActivity,
                                   ZefISPPActivityRoot, ZefISpecObject, ZefIContainer> {
 public:
  ZefMetaClass* GetMetaObject() const override {
    return embedded::ObjectClass<Gap>("Gap", "ZefProcess");
  }
  ZefBaseUnknown_var GetCompoundContainer() override { return {}; }
  HRESULT GetDocEnvironment(ZefBaseUnknown*&) override { return E_FAIL; }
  ZefBaseUnknown* GetRootContainer(const char* iName) override { return QueryInterface(iName); }
  List* GetProcessRoots() override { return std::make_unique<List>(ListOf(*this)).release(); }
  List* GetProductRoots() override { return nullptr; }
  HRESULT GetParentActivity(ZefISPPAbstractActivity_var&) override { return E_FAIL; }
  ZefUnicodeString GetLabel() override { return "gap"; }
  ZefBaseUnknown* GetFather() override { return nullptr; }
  HRESULT GetFeatContainer(ZefIContainer_var& oContainer) override {
    oContainer = Identity();
    return S_OK;
  }
  HRESULT ListMembersHere(const char* iType, _SEQUENCE_ZefBaseUnknown_ptr& ioMembers) override {
    ioMembers.append(QueryInterface(iType));
    ioMembers.append(nullptr);
    return S_OK;
  }
};

TEST_F(HostDemandsTest, AMemberThatIsNotThereMakesTheListAllTheSame) {
  const auto gap = embedded::MakeOwned<Gap>();
  NewList activities;
  EXPECT_EQ(Services::GetListOfAllActivities(activities.Out(), gap.Get()), S_OK);
  ASSERT_TRUE(activities);
  EXPECT_EQ(activities->Size(), 0);
}

// A product that writes down how often its text is asked for.
class AskedProduct : public ComponentObject<ZefIProduct, ZefISPPItem> {
 public:
  ZefMetaClass* GetMetaObject() const override {
    return embedded::ObjectClass<AskedProduct>("AskedProduct");
  }
  HRESULT GetReferenceProduct(ZefIProduct_var&) override { return E_FAIL; }
  int GetChildrenCount() override { return 0; }
  List* GetAllChildren(const char*) override { return nullptr; }
  HRESULT GetProductText(ZefUnicodeString&) override { return ++asked, E_FAIL; }
  ZefUnicodeString GetPartNumber() override { return "P"; }
  int asked = 0;
};

TEST_F(HostDemandsTest, TheProductOfAnOutputIsAskedForItsTextOnce) {
  const auto product = embedded::MakeOwned<AskedProduct>();
  auto& operation = plant.Operation("OP10");
  for (int i = 0; i < 2; ++i) {
    ZefISPPProductIO_var output;
    operation.AddProductOutput(output.Put(), ZefISPPItem_var(product->Identity()));
  }
  NewList parts;
  Services::GetProductOutputsFromActivity(operation.Identity(), parts.Out());
  EXPECT_EQ(product->asked, 2);
  EXPECT_EQ(parts->Size(), 2);
}

// An activity whose child is no activity by its class, and which writes down what is asked for.
class Keeper : public ComponentObject<ZefISPPActivity, ZefISPPChildManagement> {
 public:
  explicit Keeper(ZefBaseUnknown_var iChild) : child_(std::move(iChild)) {}
  ZefMetaClass* GetMetaObject() const override { return embedded::ObjectClass<Keeper>("Keeper"); }
  HRESULT GetParentActivity(ZefISPPAbstractActivity_var&) override { return E_FAIL; }
  ZefUnicodeString GetLabel() override { return "keeper"; }
  List* GetChildren(const ZefUnicodeString& iType) override {
    asked.emplace_back(iType.ConvertToChar());
    auto children = std::make_unique<List>();
    if (iType == "") children->Append(child_);
    return children.release();
  }
  Strings asked;

 private:
  ZefBaseUnknown_var child_;
};

TEST_F(HostDemandsTest, ChildrenOfEveryKindAreAskedFor) {
  const auto child = embedded::MakeOwned<Keeper>(nullptr);
  const auto keeper = embedded::MakeOwned<Keeper>(child->Identity());
  const ZefISPPActivity_var top = keeper->Identity();
  List below;
  EXPECT_EQ(Services::GetDescendants(top, below), S_OK);
  EXPECT_EQ(below.Size(), 1);
  NewList welds;
  Services::GetWeldFromActivity(top, welds.Out(), 1, -1);
  List parts;
  List* collected = &parts;
  Services::GetPartsFromChildrenActs(top, collected);
  EXPECT_EQ(keeper->asked, Strings(3, ""));
  EXPECT_EQ(child->asked, Strings(3, ""));
}

TEST_F(HostDemandsTest, PreviousActivitiesOfEveryKindCount) {
  auto& logical = plant.Document()->AddActivity(
      plant.Root(), {.key = "WAIT", .kind = embedded::ActivityData::Kind::Logical});
  auto& operation = plant.Operation("OP10");
  plant.Flow(logical, operation);
  auto& part = plant.Part("P1");
  plant.Assign(logical, part);
  const ZefISPPActivity_var activity = operation.Identity();
  List direct, all, loaded;
  List* collected = &loaded;
  Services::GetPredecessors(activity, direct);
  Services::GetAllPredecessors(activity, all);
  Services::GetLoadedParts(activity, collected);
  NewList none;
  EXPECT_EQ(Services::GetPredecessorActivity(activity, none.Out()), logical.Identity());
  EXPECT_EQ(Names(direct), Strings{"WAIT"});
  EXPECT_EQ(Names(all), Strings{"WAIT"});
  EXPECT_EQ(Names(loaded), Strings{"P1"});
}

}  // namespace
