#include <memory>

#include "host/HostApplication.h"
#include "host/component/Callbacks.h"
#include "services/TuvBIWServices.h"
#include "tests/support/PlantTest.h"

namespace {

using namespace tests;
using Services = TuvBIWServices;
using List = ZefListValZefBaseUnknown_var;

// Hands out one assembly, which is no item, and says that it failed: the assembly counts.
class ForeignFactory : public HostApplication {
 public:
  explicit ForeignFactory(embedded::MfgAssembly& iAssembly) : assembly_(iAssembly) {
    assembly_.AnswerInterface(IID_ZefISPPItem, false);
  }
  HRESULT CreateMfgAssembly(ZefDocument* iDocument, TuvIMfgAssembly** oAssembly) override {
    EXPECT_EQ(iDocument, nullptr);
    *oAssembly = TuvIMfgAssembly_var(assembly_.Identity()).Detach();
    return E_FAIL;
  }

 private:
  embedded::MfgAssembly& assembly_;
};

class ProductOutputsTest : public PlantTest {
 protected:
  void TearDown() override {
    EXPECT_EQ(trace.Lines(), Strings());
    PlantTest::TearDown();
  }
  // The assemblies that the call made.
  Strings Create() {
    ZefISPPActivity_var activity = station.Identity();
    List outputs;
    Services::CreateProductOutput(activity, outputs);
    return Names(outputs);
  }
  void Assign(List& products) {
    ZefISPPActivity_var activity = station.Identity();
    Services::AssignProductsAsFirstAssign(activity, products);
  }
  std::vector<const embedded::ItemLink*> Links() {
    std::vector<const embedded::ItemLink*> links;
    station.Links().ForEach([&](const embedded::ItemLink& link) { links.push_back(&link); });
    return links;
  }

  embedded::Activity& station =
      plant.Document()->AddActivity(plant.Root(), {.key = "ST10", .label = "Frame"});
};

TEST_F(ProductOutputsTest, AnActivityGetsAnAssemblyOfItsNameAsOutput) {
  EXPECT_EQ(Create(), Strings{"MA-1"});
  EXPECT_EQ(Create(), Strings{"MA-2"});
  ASSERT_EQ(station.Outputs().size(), 2u);
  for (const std::size_t i : {0u, 1u}) {
    const auto& assembly = plant.Document()->Assemblies()[i];
    EXPECT_EQ(station.Outputs()[i]->OwnProduct(), assembly->Identity());
    EXPECT_EQ(assembly->OwnName(), "Frame");
  }
  EXPECT_EQ(station.Redraws(), 2);
}

TEST_F(ProductOutputsTest, TheOutputIsNotifiedOnceWhenItHasItsProduct) {
  Strings told;
  const auto hear = [](const char*, void*, ZefNotification* notification, void* data, long) {
    auto* const change = static_cast<ZefSPPActivityNotification*>(notification);
    ZefBaseUnknown_var product;
    ZefISPPProductIO_var(change->GetSon())->GetProduct(product.Put());
    static_cast<Strings*>(data)->push_back(
        std::to_string(change->GetNotificationKind()) + " " +
        Names(ListOf(*embedded::ObjectAs<embedded::MfgAssembly>(product.Get())))[0]);
  };
  auto* const dispatcher = plant.Document()->Dispatcher();
  const long callback = AddCallback(nullptr, dispatcher, dispatcher->GetSPPViewsChange(),
                                    ZefCallbackMethod(+hear), &told);
  Create();
  RemoveCallback(nullptr, dispatcher, callback);
  EXPECT_EQ(told, Strings{"39 MA-1"});
}

TEST_F(ProductOutputsTest, TheAssemblyIsListedWhateverItAndTheActivityLack) {
  station.AnswerInterface(IID_ZefIRedrawEvent, false);
  station.AnswerInterface(IID_ZefISPPAbstractActivity, false);
  EXPECT_EQ(Create(), Strings{"MA-1"});
  EXPECT_EQ(plant.Document()->Assemblies().back()->OwnName(), "");
  EXPECT_EQ(station.Redraws(), 0);
  EXPECT_EQ(station.Outputs().size(), 1u);
  station.AnswerInterface(IID_ZefISPPFlowMgt, false);
  EXPECT_EQ(Create(), Strings{"MA-2"});
  station.AnswerInterface(IID_ZefISPPFlowMgt, true);
  ForeignFactory foreign(plant.Document()->AddAssembly());
  HostApplication::Install(&foreign);
  EXPECT_EQ(Create(), Strings{"MA-3"});
  HostApplication::Install(nullptr);
  EXPECT_EQ(Create(), Strings());
  HostApplication::Install(&application);
  EXPECT_EQ(station.Outputs().size(), 1u);
}

TEST_F(ProductOutputsTest, EveryItemIsLinkedOnceForEachTimeItIsListedAsFirstAssigned) {
  auto& part = plant.Part("P1");
  auto& other = plant.Part("P2");
  auto& hidden = plant.Part("P3");
  hidden.AnswerInterface(IID_ZefISPPItem, false);
  auto& assembly = plant.Document()->AddAssembly("MA");
  auto& before = plant.Operation("OP10");
  ZefISPPProductIO_var output;
  before.AddProductOutput(output.Put(), ZefISPPItem_var(assembly.Identity()));
  station.Link(other.Identity(), embedded::ItemLink::FirstAssigned);
  auto products = ListOf(part, nullptr, hidden, plant.Root(), other, part);
  // What is appended meanwhile is linked, too.
  station.OnItemChange([&](embedded::Activity&) {
    if (products.Size() == 6) products.Append(assembly.Identity());
  });
  Assign(products);
  EXPECT_EQ(Names(products), (Strings{"P1", "null", "P3", "Process", "P2", "P1", "MA"}));
  EXPECT_EQ(Names(*std::unique_ptr<List>(station.GetItems("Item", 2))),
            (Strings{"P2", "P1", "P2", "P1", "MA"}));
  EXPECT_EQ(Links().back()->OwnDetails().source, output);
  EXPECT_EQ(Links()[1]->OwnDetails().source, nullptr);
  for (const std::size_t i : {1u, 4u}) {
    EXPECT_EQ(Links()[i]->OwnDetails().name, "");
    EXPECT_EQ(Links()[i]->OwnDetails().fixed, 1);
  }
}

TEST_F(ProductOutputsTest, NothingHappensWithoutActivityItemsOrFlow) {
  auto products = ListOf(plant.Part("P1"));
  ZefISPPActivity_var none;
  Services::CreateProductOutput(none, products);
  Services::AssignProductsAsFirstAssign(none, products);
  for (const _GUID& interface : {IID_ZefISPPItemMgt, IID_ZefISPPFlowMgt}) {
    station.AnswerInterface(interface, false);
    Assign(products);
    station.AnswerInterface(interface, true);
  }
  EXPECT_EQ(Names(products), Strings{"P1"});
  EXPECT_TRUE(Links().empty());
}

}  // namespace
