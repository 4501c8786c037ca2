#include <memory>

#include "host/HostApplication.h"
#include "host/component/Callbacks.h"
#include "services/TuvBIWServices.h"
#include "tests/support/PlantTest.h"

namespace {

using namespace tests;
using embedded::MfgAssembly;
using Services = TuvBIWServices;
using List = ZefListValZefBaseUnknown_var;

// Hands out assemblies that are no items.
class ForeignFactory : public HostApplication {
 public:
  explicit ForeignFactory(MfgAssembly& iAssembly) : assembly_(iAssembly) {
    assembly_.AnswerInterface(IID_ZefISPPItem, false);
  }
  HRESULT CreateMfgAssembly(ZefDocument* iDocument, TuvIMfgAssembly** oAssembly) override {
    EXPECT_EQ(iDocument, nullptr);
    *oAssembly = TuvIMfgAssembly_var(assembly_.Identity()).Detach();
    return E_FAIL;  // the assembly counts
  }

 private:
  MfgAssembly& assembly_;
};

class ProductOutputsTest : public PlantTest {
 protected:
  void SetUp() override {
    auto* const dispatcher = plant.Document()->Dispatcher();
    AddCallback(nullptr, dispatcher, dispatcher->GetSPPViewsChange(), &Record, &changes);
  }
  void TearDown() override {
    EXPECT_EQ(trace.Lines(), Strings());
    PlantTest::TearDown();
  }
  static void Record(const char*, void*, ZefNotification* notification, void* data, long) {
    auto& change = static_cast<ZefSPPActivityNotification&>(*notification);
    ZefBaseUnknown_var son = change.GetSon();
    const auto* const output = embedded::ObjectAs<embedded::ProductOutput>(son.Get());
    if (output) son = output->OwnProduct();
    List named;
    named.Append(son);
    static_cast<Strings*>(data)->push_back(std::to_string(change.GetNotificationKind()) + " " +
                                           Names(named)[0]);
  }
  // The assemblies that the call made.
  List Create() {
    ZefISPPActivity_var activity = station.Identity();
    List outputs;
    Services::CreateProductOutput(activity, outputs);
    return outputs;
  }
  void Assign(List& products) {
    ZefISPPActivity_var activity = station.Identity();
    Services::AssignProductsAsFirstAssign(activity, products);
  }
  Strings Linked(int selector) {
    return Names(*std::unique_ptr<List>(station.GetItems("Item", selector)));
  }

  embedded::Activity& station =
      plant.Document()->AddActivity(plant.Root(), {.key = "ST10", .label = "Frame"});
  Strings changes;  // kind, and the item or the output's product
};

TEST_F(ProductOutputsTest, AnActivityGetsAnAssemblyOfItsNameAsOutput) {
  ZefISPPActivity_var activity = station.Identity();
  List outputs = ListOf(nullptr);
  Services::CreateProductOutput(activity, outputs);
  Services::CreateProductOutput(activity, outputs);
  EXPECT_EQ(Names(outputs), (Strings{"null", "MA-1", "MA-2"}));
  ASSERT_EQ(station.Outputs().size(), 2u);
  for (const int i : {0, 1}) {
    const auto index = static_cast<std::size_t>(i);
    EXPECT_EQ(station.Outputs()[index]->OwnProduct(), outputs[i + 2]);
    EXPECT_EQ(plant.Document()->Assemblies()[index]->OwnName(), "Frame");
  }
  EXPECT_EQ(station.Redraws(), 2);
  EXPECT_EQ(changes, (Strings{"39 MA-1", "39 MA-2"}));
}

TEST_F(ProductOutputsTest, TheAssemblyIsListedWhateverItAndTheActivityLack) {
  station.AnswerInterface(IID_ZefIRedrawEvent, false);
  Create();
  EXPECT_EQ(station.Redraws(), 0);
  station.AnswerInterface(IID_ZefISPPAbstractActivity, false);
  Create();
  EXPECT_EQ(plant.Document()->Assemblies().back()->OwnName(), "");
  EXPECT_EQ(changes, (Strings{"39 MA-1", "39 MA-2"}));
  station.AnswerInterface(IID_ZefISPPFlowMgt, false);
  EXPECT_EQ(Names(Create()), Strings{"MA-3"});
  station.AnswerInterface(IID_ZefISPPFlowMgt, true);
  ForeignFactory foreign(plant.Document()->AddAssembly());
  HostApplication::Install(&foreign);
  EXPECT_EQ(Names(Create()), Strings{"MA-4"}) << "no item, so it cannot be an output's product";
  HostApplication::Install(nullptr);
  EXPECT_EQ(Names(Create()), Strings()) << "no application";
  HostApplication::Install(&application);
  EXPECT_EQ(station.Outputs().size(), 2u);
}

TEST_F(ProductOutputsTest, WithoutEditedDocumentTheAssemblyBelongsToNone) {
  application.Edit({});
  const List outputs = Create();
  ASSERT_EQ(outputs.Size(), 1);
  EXPECT_EQ(Services::GetDocumentFromFeature(outputs[1].Get()), nullptr);
  EXPECT_EQ(plant.Document()->Assemblies().size(), 0u);
  EXPECT_EQ(station.Outputs().at(0)->OwnProduct(), outputs[1].Get());
}

TEST_F(ProductOutputsTest, EveryProductThatIsAnItemIsLinkedOnceForEachTimeItIsListed) {
  auto& part = plant.Part("P1");
  auto& other = plant.Part("P2");
  auto& hidden = plant.Part("P3");
  hidden.AnswerInterface(IID_ZefISPPItem, false);
  plant.Assign(station, other);
  auto products = ListOf(part, nullptr, hidden, plant.Root(), other, part);
  Assign(products);
  EXPECT_EQ(Linked(2), (Strings{"P1", "P2", "P1"}));
  EXPECT_EQ(Linked(0), (Strings{"P2", "P1", "P2", "P1"}));
  EXPECT_EQ(Names(products), (Strings{"P1", "null", "P3", "Process", "P2", "P1"}));
  EXPECT_EQ(changes, (Strings{"17 P1", "17 P2"})) << "what is first assigned already is no change";
  List none;
  Assign(none);
  EXPECT_EQ(Linked(2).size(), 3u);
  EXPECT_EQ(station.Redraws(), 0);
}

TEST_F(ProductOutputsTest, ALinkKnowsTheOutputThatTheItemComesFrom) {
  auto& before = plant.Document()->AddActivity(plant.Root(), {.key = "ST20"});
  ZefISPPActivity_var activity = before.Identity();
  List made;
  Services::CreateProductOutput(activity, made);
  made.Append(plant.Part("P1").Identity());
  Assign(made);
  std::vector<const embedded::ItemLink*> links;
  station.Links().ForEach([&](const embedded::ItemLink& link) { links.push_back(&link); });
  ASSERT_EQ(links.size(), 2u);
  EXPECT_EQ(links[0]->details.source, before.Outputs().at(0)->Identity());
  EXPECT_EQ(links[1]->details.source, nullptr);
  for (const auto* const link : links) {
    EXPECT_EQ(link->details.name, "");
    EXPECT_EQ(link->details.fixed, 1);
  }
}

TEST_F(ProductOutputsTest, WhatIsAppendedMeanwhileIsLinkedToo) {
  auto products = ListOf(plant.Part("P1"));
  auto& late = plant.Part("P2");
  station.OnItemChange([&](embedded::Activity&) {
    if (products.Size() == 1) products.Append(late.Identity());
  });
  Assign(products);
  EXPECT_EQ(Linked(2), (Strings{"P1", "P2"}));
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
  EXPECT_EQ(Linked(0), Strings());
  EXPECT_EQ(changes, Strings());
}

}  // namespace
