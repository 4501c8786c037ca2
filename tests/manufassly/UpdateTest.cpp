#include "host/component/Callbacks.h"
#include "tests/manufassly/Line.h"

namespace {

using tests::Strings;

class UpdateTest : public tests::LineFixture {
 protected:
  TuvIUpdateManufAssly_var At(const std::string& key) { return line.At(key).Identity(); }
  static long Subscription(const TuvIUpdateManufAssly_var& update) {
    long identifier = -1;
    EXPECT_EQ(update->ReturnZefCallbackStatus(identifier), S_OK);
    return identifier;
  }
  void Tell(int kind, const ZefBaseUnknown_var& father, const ZefBaseUnknown_var& son) {
    const auto change = Make<ZefSPPActivityNotification>(father, son, kind);
    line.Update().UpdateAutoManufAsslyCB("", nullptr, change, nullptr, 0);
  }
};

TEST_F(UpdateTest, SwitchingOffEndsTheUpdateAndSwitchingOnAgainResumesIt) {
  EXPECT_GT(Subscription(At("A")), 0);
  EXPECT_EQ(At("A")->RemoveUpdateCallback(), S_OK);
  EXPECT_EQ(Subscription(At("A")), 0);
  line.Output("A");
  line.Drop("P1", "A");
  EXPECT_EQ(line.Children("A"), Strings{});
  EXPECT_EQ(At("A")->RemoveUpdateCallback(), S_OK) << "nothing is subscribed, nothing fails";
  EXPECT_EQ(At("A")->AddUpdateCallback(), S_OK);
  line.Drop("P2", "A");
  EXPECT_EQ(line.Children("A"), (Strings{"P1", "P2"}));
}

TEST_F(UpdateTest, AskingAnotherActivityForgetsTheSubscription) {
  const long first = Subscription(At("A"));
  EXPECT_EQ(Subscription(At("A")), first);
  const TuvIUpdateManufAssly_var other = At("B");
  EXPECT_EQ(Subscription(At("A")), 0) << "the identifier is one for all";
  EXPECT_EQ(other->AddUpdateCallback(), S_OK);
  EXPECT_EQ(Subscription(At("A")), Subscription(other));
}

TEST_F(UpdateTest, AnActivityWithoutContainerOrEventsCannotSubscribe) {
  const TuvIUpdateManufAssly_var update = At("A");
  const long before = Subscription(update);
  for (const _GUID& withheld : {IID_ZefISpecObject, IID_ZefISPPActivityModificationEvents}) {
    line.At("A").AnswerInterface(withheld, false);
    EXPECT_EQ(update->AddUpdateCallback(), E_FAIL);
    EXPECT_EQ(update->RemoveUpdateCallback(), E_FAIL);
    EXPECT_EQ(update->AddWeldColorUpdateCallback(), E_FAIL);
    line.At("A").AnswerInterface(withheld, true);
  }
  EXPECT_EQ(Subscription(update), before);
  const auto detached = Adopt(TuvEUpdateManufAssly::CreateItself());
  auto* const bare = static_cast<TuvEUpdateManufAssly*>(detached.Get());
  EXPECT_EQ(bare->AddUpdateCallback(), E_FAIL) << "it extends nothing";
  EXPECT_EQ(Subscription(update), 0) << "making one forgets the subscription";
}

TEST_F(UpdateTest, RemovingTheActivityThatSubscribedDoesNotEndTheUpdate) {
  line.plant.Document()->RemoveActivity(line.At("A"));
  line.Output("B");
  line.Drop("P1", "B");
  EXPECT_EQ(line.Children("B"), Strings{"P1"});
}

TEST_F(UpdateTest, EachKindOfChangeReachesItsHandler) {
  auto& assembly = line.Output("A");
  line.At("A").Link(line.Item("P1"), 2);
  const ZefBaseUnknown_var station = line.At("A").Identity();
  const ZefBaseUnknown_var output = line.At("A").Outputs()[0]->Identity();
  for (const int kind : {16, 19, 28, 31, 40, 0, -1}) Tell(kind, station, line.Item("P1"));
  EXPECT_EQ(line.Children("A"), Strings{});
  Tell(17, station, line.Item("P1"));
  EXPECT_EQ(line.Children("A"), Strings{"P1"}) << "a drop";
  Tell(18, station, line.Item("P1"));
  EXPECT_EQ(line.Children("A"), Strings{}) << "a drag";
  for (const int kind : {30, 39}) {
    assembly.DropChildren();
    Tell(kind, station, output);
    EXPECT_EQ(line.Children("A"), Strings{"P1"}) << "an output, kind " << kind;
  }
  line.Update().UpdateAutoManufAsslyCB("", nullptr, nullptr, nullptr, 0);
  const auto other = Make<ZefNotification>();
  line.Update().UpdateAutoManufAsslyCB("", nullptr, other, nullptr, 0);
  for (const int kind : {17, 18, 29, 30, 39}) Tell(kind, nullptr, nullptr);
  EXPECT_EQ(line.Children("A"), Strings{"P1"});
}

TEST_F(UpdateTest, TheWeldsOfARemovedActivityAreShownUnassigned) {
  EXPECT_EQ(At("A")->AddWeldColorUpdateCallback(), S_OK);
  auto& shown = line.plant.Weld("SW-1");
  auto& hidden = line.plant.Weld("SW-2");
  auto& other = line.plant.Weld("SW-3");
  hidden.SetRepresented(false);
  for (auto* const weld : {&shown, &hidden, &other}) weld->SetDisplayStatus(4, 1);
  for (auto* const weld : {&shown, &hidden}) line.plant.Assign(line.At("B"), *weld);
  line.plant.Assign(line.At("C"), other);
  line.Link("B", "C");
  line.Unlink("B", "C");
  EXPECT_EQ(shown.DisplayStatus(), 4) << "a flow is no activity";
  line.plant.Document()->RemoveActivity(line.At("B"));
  EXPECT_EQ(shown.DisplayStatus(), 1);
  EXPECT_EQ(hidden.DisplayStatus(), 4);
  EXPECT_EQ(other.DisplayStatus(), 4);
}

TEST_F(UpdateTest, RemovingWhatHoldsAStationWithdrawsItsAssemblyAndItsWelds) {
  embedded::Document& document = *line.plant.Document();
  embedded::Activity& zone = document.AddActivity(line.plant.Root(), {.key = "ZONE"});
  embedded::Activity& operation = document.AddActivity(zone, {.key = "OP"});
  document.AddActivity(zone, {.key = "S", .role = embedded::ActivityData::Role::Station});
  auto& weld = line.plant.Weld("SW-1");
  weld.SetDisplayStatus(4, 1);
  line.plant.Assign(operation, weld);
  EXPECT_EQ(At("A")->AddWeldColorUpdateCallback(), S_OK);
  line.Output("S");
  line.Output("B");
  line.Link("ZONE", "B");
  line.Drop("P1", "S");
  ASSERT_EQ(line.Children("B"), Strings{"MA-S"});
  document.RemoveActivity(zone);
  EXPECT_EQ(line.FirstAssigned("B"), Strings{});
  EXPECT_EQ(line.Children("B"), Strings{});
  EXPECT_EQ(weld.DisplayStatus(), 1);
  EXPECT_EQ(line.OutOfStep(), Strings{});
}

TEST_F(UpdateTest, NamesOfWhatHasNoneAreEmpty) {
  auto& update = line.Update();
  EXPECT_EQ(update.GetNameOfActivity(line.At("A").Identity()), "A");
  EXPECT_EQ(update.GetType(line.At("A").Identity()), "PhysicalActivity");
  const ZefBaseUnknown_var part = line.Item("P1");
  EXPECT_EQ(update.GetNameOfActivity(part), "");
  EXPECT_EQ(update.GetNameOfActivity(nullptr), "");
  EXPECT_EQ(update.GetType(nullptr), "");
}

class WarningTest : public tests::LineFixture {
 protected:
  Strings Warn(ZefUnicodeString names, ZefUnicodeString message) {
    EXPECT_EQ(line.Update().DisplayWarningWindow(names, message), S_OK);
    names_ = names.Bytes();
    return line.Warnings();
  }
  std::string names_;
};

TEST_F(WarningTest, EachMessageHasItsTitleAndItsTextsInTheUsersLanguage) {
  EXPECT_EQ(Warn("A", "nonsense"), Strings{"Product link refused: "});
  EXPECT_EQ(Warn("MA-1$MA-2", "MAIsChild"),
            Strings{"Product link refused: An assembly cannot become part of itself: MA-1\nIt is "
                    "already contained in MA-2"});
  EXPECT_EQ(names_, "MA-1$MA-2$");
  line.application.Catalogs().SetLanguage("de");
  EXPECT_EQ(Warn("A", "MultipleActsInFlow"),
            Strings{"Produktverknüpfung abgelehnt: Mehrere Aktivitäten könnten den Produktausgang "
                    "übernehmen von A\nKeine wurde gewählt. Ordnen Sie das Produkt einer von ihnen "
                    "zu, oder lassen Sie nur einen der Abläufe stehen."});
  EXPECT_EQ(Warn("\nB1", "RemovedFirstAssign"),
            Strings{"Produkte nicht mehr zugeordnet: Die Produkte sind nicht mehr erstzugeordnet "
                    "bei: \nB1\n"});
  EXPECT_EQ(names_, "\nB1");
}

TEST_F(WarningTest, NamesThatDoNotMakeAPairAreLeftOut) {
  const Strings without{
      "Product link refused: An assembly cannot become part of itself: \nIt is already contained "
      "in "};
  for (const char* const names : {"", "MA-1", "$", "$$", "MA-1$", "$MA-2"}) {
    EXPECT_EQ(Warn(names, "MAIsChild"), without) << names;
  }
  EXPECT_EQ(Warn("A$$B$C", "MAIsChild"),
            Strings{"Product link refused: An assembly cannot become part of itself: A\nIt is "
                    "already contained in B"});
}

TEST_F(WarningTest, UnattendedRunsShowNothingAndComposeAllTheSame) {
  for (const char* const value : {"1", ""}) {
    line.application.SetEnvironment("GORM_VIST_OUT", value);
    EXPECT_EQ(Warn("A$B", "MAIsChild"), Strings{});
    EXPECT_EQ(names_, "A$B$");
  }
  line.application.SetEnvironment("GORM_VIST_OUT", std::nullopt);
  EXPECT_EQ(Warn("A", "nonsense").size(), 1u);
}

TEST_F(WarningTest, WithoutFrameNothingIsShownAndWithoutCatalogTheTextsAreEmpty) {
  ZefUnicodeString names = "A$B";
  ZefUnicodeString message = "MAIsChild";
  line.application.SetWindowless(true);
  EXPECT_EQ(line.Update().DisplayWarningWindow(names, message), E_FAIL);
  EXPECT_EQ(names, "A$B");
  tests::Desk other;
  other.application.Catalogs().FallBackTo({});
  EXPECT_EQ(line.Update().DisplayWarningWindow(names, message), S_OK);
  ASSERT_EQ(other.dialogs.Shown().size(), 1u);
  EXPECT_EQ(other.dialogs.Shown()[0].title + other.dialogs.Shown()[0].message, "");
  EXPECT_EQ(other.dialogs.Shown()[0].name, "Warning");
  EXPECT_EQ(other.dialogs.Shown()[0].style, 0x04140200u);
  EXPECT_EQ(names, "A$B") << "composing needs the catalog";
}

}  // namespace
