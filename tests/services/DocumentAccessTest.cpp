#include "host/component/FaultPoint.h"
#include "host/document/Document.h"
#include "services/TuvBIWServices.h"
#include "tests/support/HostFailures.h"
#include "tests/support/PlantTest.h"

namespace {

using namespace tests;
using Services = TuvBIWServices;
using Kind = Plant::Kind;
using NewList = std::unique_ptr<ZefListValZefBaseUnknown_var>;

class DocumentAccessTest : public PlantTest {
 protected:
  ZefDocument* const document = plant.Document().Get();
};

TEST_F(DocumentAccessTest, TheCurrentDocumentIsTheEditorsAndIsNotCounted) {
  const ReferenceSnapshot before{document};
  EXPECT_EQ(Services::GetCurrentDocument(), document);
  EXPECT_EQ(before.Differences(), "");
  application.Edit({});
  EXPECT_EQ(Services::GetCurrentDocument(), nullptr);
  application.SetCurrentEditor(nullptr);
  EXPECT_EQ(Services::GetCurrentDocument(), nullptr);
  EXPECT_EQ(trace.Lines(),
            Lines({"GetCurrentDocument", "GetCurrentDocument", "GetCurrentDocument"}));
}

enum class Answer { Nothing, Root, Raises };

// What a service makes of a document whose root container has just one owner, itself.
template <class Service>
Answer Ask(const Service& service, ZefDocument* argument, const Plant& plant) {
  const ZefBaseUnknown* const root = plant.Document()->RootContainerObject();
  const ReferenceSnapshot before{root, plant.Document()->Identity()};
  try {
    const auto container = service(argument);
    if (!container) return Answer::Nothing;
    EXPECT_TRUE(container == root);
    EXPECT_EQ(root->ReferenceCount(), 2u) << "the handle's reference is the only one added";
    return Answer::Root;
  } catch (const ZefNullHandleException&) {
    EXPECT_EQ(before.Differences(), "");
    return Answer::Raises;
  }
}

TEST_F(DocumentAccessTest, RootContainersGoByTheKindOfTheCurrentDocumentAlone) {
  const struct {
    Kind kind;
    Answer process, product, processPassedIn, productPassedIn;
  } cases[] = {
      {Kind::Process, Answer::Root, Answer::Nothing, Answer::Root, Answer::Root},
      {Kind::Product, Answer::Nothing, Answer::Root, Answer::Raises, Answer::Root},
      {Kind::Neither, Answer::Nothing, Answer::Nothing, Answer::Raises, Answer::Root},
      {Kind::Both, Answer::Root, Answer::Root, Answer::Root, Answer::Root},
  };
  for (const auto& [kind, process, product, processPassedIn, productPassedIn] : cases) {
    SCOPED_TRACE(static_cast<int>(kind));
    const Plant other(kind);
    ZefDocument* const passed = other.Document().Get();
    EXPECT_EQ(Ask(Services::GetRootProcessContainer, passed, other), processPassedIn);
    EXPECT_EQ(Ask(Services::GetRootContainer, passed, other), productPassedIn);
    EXPECT_EQ(trace.Take(), Strings());
    application.Edit(other.Document());
    EXPECT_EQ(Ask(Services::GetRootProcessContainer, nullptr, other), process);
    EXPECT_EQ(Ask(Services::GetRootContainer, nullptr, other), product);
    EXPECT_EQ(trace.Take(), Lines({"GetCurrentDocument", "GetCurrentDocument"}));
  }
  application.Edit({});
  EXPECT_FALSE(Services::GetRootProcessContainer(nullptr));
  EXPECT_FALSE(Services::GetRootContainer(nullptr));
  plant.Document()->AnswerInterface(IID_ZefInit, false);
  EXPECT_EQ(Ask(Services::GetRootContainer, document, plant), Answer::Raises);
}

TEST_F(DocumentAccessTest, TheRootActivityComesWithAReference) {
  const Plant product(Kind::Product);
  const ReferenceSnapshot before{plant.Root().Identity()};
  ZefISPPActivity* root = nullptr;
  EXPECT_EQ(Services::GetRootActivity(root, nullptr), S_OK);
  EXPECT_EQ(root, static_cast<ZefISPPActivity*>(&plant.Root()));
  EXPECT_NE(before.Differences(), "");
  root->Release();
  EXPECT_EQ(before.Differences(), "");
  EXPECT_EQ(trace.Take(), Lines({"GetRootActivity>", "GetCurrentDocument", "<GetRootActivity"}));
  root = nullptr;
  // The kind of a document that is passed in is tested here.
  EXPECT_EQ(Services::GetRootActivity(root, product.Document().Get()), E_FAIL);
  application.Edit({});
  EXPECT_EQ(Services::GetRootActivity(root, nullptr), E_FAIL);
  EXPECT_EQ(root, nullptr);
}

TEST_F(DocumentAccessTest, ARootThatIsNoActivityFailsAndAMissingRootContainerRaises) {
  ZefISPPActivity* const untouched = &plant.Root();
  ZefISPPActivity* root = untouched;
  plant.Root().AnswerInterface(IID_ZefISPPActivityRoot, false);
  EXPECT_EQ(Services::GetRootActivity(root, document), E_FAIL);
  EXPECT_EQ(root, untouched);
  plant.Root().AnswerInterface(IID_ZefISPPActivityRoot, true);
  plant.Root().AnswerInterface(IID_ZefISPPActivity, false);
  EXPECT_EQ(Services::GetRootActivity(root, document), E_FAIL);
  EXPECT_EQ(root, nullptr) << "the failed query clears it";
  trace.Take();

  AnswerInterface(plant.Document()->RootContainerObject(), IID_ZefISPPProcessContainer, false);
  EXPECT_THROW(Services::GetRootActivity(root, document), ZefNullHandleException);
  ZefListValZefBaseUnknown_var* none = nullptr;
  EXPECT_THROW(Services::GetListOfAllActivities(none, nullptr), ZefNullHandleException);
  EXPECT_EQ(Services::GetAllProducts(none), E_FAIL);
  EXPECT_EQ(none, nullptr);
  // What is left by an exception writes no exit line.
  EXPECT_EQ(trace.Lines(),
            Lines({"GetRootActivity>", "GetListOfAllActivities>", "GetCurrentDocument",
                   "GetAllProducts>", "GetCurrentDocument", "<GetAllProducts"}));
}

TEST_F(DocumentAccessTest, AllActivitiesButTheFirstListedAreAppended) {
  ZefListValZefBaseUnknown_var* none = nullptr;
  EXPECT_EQ(Services::GetListOfAllActivities(none, nullptr), S_OK);
  EXPECT_EQ(none, nullptr) << "the root alone makes no list";
  plant.Station("ST10");
  auto& op10 = plant.Operation("OP10");
  plant.Operation("OP20");
  trace.Take();

  ZefListValZefBaseUnknown_var* created = nullptr;
  EXPECT_EQ(Services::GetListOfAllActivities(created, nullptr), S_OK);
  const NewList owner(created);
  EXPECT_EQ(Names(*created), (Strings{"ST10", "OP10", "OP20"}));
  auto extended = ListOf(op10, nullptr);
  auto* list = &extended;
  EXPECT_EQ(Services::GetListOfAllActivities(list, document), S_OK);
  EXPECT_EQ(Names(extended), (Strings{"OP10", "null", "ST10", "OP10", "OP20"}));
  EXPECT_EQ(trace.Lines(), Lines({"GetListOfAllActivities>", "GetCurrentDocument",
                                  "<GetListOfAllActivities", "GetListOfAllActivities"}));
  // A root that is no activity is not listed, so another one is the first.
  plant.Root().AnswerInterface(IID_ZefISPPActivity, false);
  extended.RemoveAll();
  EXPECT_EQ(Services::GetListOfAllActivities(list, nullptr), S_OK);
  EXPECT_EQ(Names(extended), (Strings{"OP10", "OP20"}));
}

TEST_F(DocumentAccessTest, WithoutRootOrContainerNoActivitiesAreListed) {
  plant.Operation("OP10");
  const Plant product(Kind::Product);
  ZefListValZefBaseUnknown_var* list = nullptr;
  EXPECT_EQ(Services::GetListOfAllActivities(list, product.Document().Get()), E_FAIL);
  for (const _GUID& withheld : {IID_ZefISPPActivityRoot, IID_ZefISpecObject}) {
    plant.Root().AnswerInterface(withheld, false);
    EXPECT_EQ(Services::GetListOfAllActivities(list, document), E_FAIL);
    plant.Root().AnswerInterface(withheld, true);
  }
  application.Edit({});
  EXPECT_EQ(Services::GetListOfAllActivities(list, nullptr), E_FAIL);
  EXPECT_EQ(list, nullptr);
  const std::string plain = "GetListOfAllActivities";
  EXPECT_EQ(trace.Lines(),
            Lines({plain, plain, plain, plain + ">", "GetCurrentDocument", "<" + plain}));
}

TEST_F(DocumentAccessTest, AHostWithoutProcessRootsIsNotedInTheTrace) {
  plant.Operation("OP10");
  int noted = 0;
  ForEachHostFailure(
      [&] {
        ZefListValZefBaseUnknown_var* list = nullptr;
        const HRESULT status = Services::GetListOfAllActivities(list, document);
        const NewList owner(list);
        const Strings lines = trace.Take();
        if (lines.size() == 2) return;
        ++noted;
        EXPECT_EQ(status, E_FAIL);
        EXPECT_EQ(lines,
                  Lines({"GetListOfAllActivities>", "=No process", "<GetListOfAllActivities"}));
      },
      [&] { trace.Take(); });
  EXPECT_EQ(noted, 2) << "once as the only failure, once as the first of many";
}

TEST_F(DocumentAccessTest, AllProductsAreThoseBelowTheReferenceOfTheRootProduct) {
  auto& door = plant.Part("DOOR");
  plant.Part("PANEL", &door);
  plant.Part("FRAME");
  ZefListValZefBaseUnknown_var* products = nullptr;
  EXPECT_EQ(Services::GetAllProducts(products), E_FAIL);
  NewList all(products);
  ASSERT_TRUE(all);
  EXPECT_EQ(Names(*all), (Strings{"DOOR", "PANEL", "FRAME"}));

  // An instance stands for its reference; the list that was passed in is not touched.
  auto& instance =
      plant.Document()->AddProduct(plant.Document()->RootProduct(), {.key = "D.1"}, &door);
  plant.Document()->SetProductRoots({&instance, &door});
  EXPECT_EQ(Services::GetAllProducts(products), E_FAIL);
  const NewList below(products);
  EXPECT_NE(below, all);
  EXPECT_EQ(Names(*below), Strings{"PANEL"});
  EXPECT_EQ(Names(*all), (Strings{"DOOR", "PANEL", "FRAME"}));
  EXPECT_EQ(trace.Take(), Lines({"GetAllProducts>", "GetCurrentDocument", "<GetAllProducts",
                                 "GetAllProducts>", "GetCurrentDocument", "<GetAllProducts"}));
}

TEST_F(DocumentAccessTest, NoProductListIsMadeWithoutRootProductOrProcess) {
  auto kept = ListOf(nullptr);
  auto* products = &kept;
  auto& part = plant.Part("P1");
  const auto ask = [&] {
    EXPECT_EQ(Services::GetAllProducts(products), E_FAIL);
    EXPECT_EQ(products, &kept);
  };
  plant.Document()->SetProductRoots({});
  ask();
  plant.Document()->SetProductRoots({&part});
  part.AnswerInterface(IID_ZefIProduct, false);
  ask();
  plant.Document()->AnswerInterface(IID_ZefInit, false);
  ask();
  const Plant product(Kind::Product);
  application.Edit(product.Document());
  ask();
  application.Edit({});
  ask();
}

TEST_F(DocumentAccessTest, FeaturesLeadToTheirDocumentAndItsFeatureContainer) {
  auto& weld = plant.Weld("SW-1");
  ZefBaseUnknown* const features = plant.Document()->FeatureContainerObject();
  EXPECT_EQ(Services::GetDocumentFromFeature(weld.Identity()), document);
  EXPECT_TRUE(Services::GetFeatContainerFromFeature(weld.Identity()) == features);
  EXPECT_TRUE(Services::GetFeatContainerFromDocument(document) == features);
  weld.AnswerInterface(IID_ZefILinkableObject, false);
  EXPECT_EQ(Services::GetDocumentFromFeature(weld.Identity()), nullptr);
  EXPECT_FALSE(Services::GetFeatContainerFromFeature(weld.Identity()));
  EXPECT_EQ(Services::GetDocumentFromFeature(nullptr), nullptr);
  EXPECT_FALSE(Services::GetFeatContainerFromFeature(nullptr));
  EXPECT_FALSE(Services::GetFeatContainerFromDocument(nullptr)) << "null is not the current one";
  AnswerInterface(features, IID_ZefIContainer, false);
  EXPECT_FALSE(Services::GetFeatContainerFromDocument(document));
  const ZefBaseUnknown_var compound = plant.Document()->GetCompoundContainer();
  AnswerInterface(compound, IID_ZefICompoundContainer, false);
  EXPECT_FALSE(Services::GetFeatContainerFromDocument(document));
  EXPECT_EQ(trace.Lines(), Strings());
}

TEST_F(DocumentAccessTest, FeaturesAreListedByKindAndAppendedWithAReferenceEach) {
  plant.Weld("SW-1");
  plant.Seam("SEAM-1");
  plant.Locator("LP-1");
  plant.Clamp("CP-1");
  plant.Weld("SW-2");
  const struct {
    void (*service)(_SEQUENCE_ZefBaseUnknown_ptr&);
    Strings names;
  } cases[] = {
      {Services::GetListOfAllFasteners, {"SW-1", "SEAM-1", "SW-2"}},
      {Services::GetListOfAllLocators, {"LP-1"}},
      {Services::GetListOfAllClamps, {"CP-1"}},
  };
  const auto take = [](_SEQUENCE_ZefBaseUnknown_ptr& sequence) {
    ZefListValZefBaseUnknown_var list;
    for (int i = 0; i < sequence.length(); ++i) list.Append(Adopt(sequence[i]));
    return Names(list);
  };
  for (const auto& [service, names] : cases) {
    _SEQUENCE_ZefBaseUnknown_ptr sequence;
    service(sequence);
    const int first = sequence.length();
    service(sequence);
    EXPECT_EQ(sequence.length(), 2 * first);
    Strings twice = names;
    twice.insert(twice.end(), names.begin(), names.end());
    EXPECT_EQ(take(sequence), twice);
  }
  const Strings points{"SW-1", "SW-2"};
  EXPECT_EQ(Names(Services::GetListOfAllPointFasteners(nullptr)), points);
  application.SetCurrentEditor(nullptr);
  EXPECT_EQ(Names(Services::GetListOfAllPointFasteners(nullptr)), Strings());
  EXPECT_EQ(Names(Services::GetListOfAllPointFasteners(document)), points);
  _SEQUENCE_ZefBaseUnknown_ptr untouched;
  for (const auto& [service, names] : cases) service(untouched);
  EXPECT_EQ(untouched.length(), 0);
  EXPECT_EQ(trace.Lines(), Strings());
}

}  // namespace
