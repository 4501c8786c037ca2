#include <cmath>
#include <gtest/gtest.h>

#include "tests/support/HostFailures.h"
#include "tests/support/Plant.h"
#include "tests/support/ReferenceAudit.h"
#include "tests/support/TraceRecorder.h"
#include "visu/TuvBIWCustomRep.h"

namespace {

using Strings = std::vector<std::string>;

const Strings kConstruction = {"TuvBIWCustomRep --> IN", "TuvBIWCustomRep::Build --> IN",
                               "TuvBIWCustomRep::Build --> OUT", "TuvBIWCustomRep <-- OUT"};

// Its name can be changed, unlike that of a weld of the model.
class NamedThing : public ComponentObject<ZefIAlias> {
 public:
  ZefMetaClass* GetMetaObject() const override { return ZefBaseUnknown::MetaObject(); }
  ZefUnicodeString GetAlias() override { return name; }
  ZefUnicodeString name = "THING";
};

embedded::SpotWeld& WeldAt(tests::Plant& plant, const std::array<double, 6>& position) {
  embedded::SpotWeldData data;
  data.key = "SW-" + std::to_string(plant.Document()->Features().size());
  data.position = position;
  return plant.Document()->AddSpotWeld(data);
}

// The texts of a representation with their places, as "TEXT x y z".
Strings TextsOf(const Zef3DCustomRep& rep) {
  Strings texts;
  for (const auto& drawn : rep.Primitives()) {
    const auto& text = dynamic_cast<const Zef3DAnnotationTextGP&>(*drawn.primitive);
    std::ostringstream line;
    const ZefMathPointf& at = text.GetPosition();
    // Adding zero takes the sign off a zero.
    line << text.GetText() << " " << at.GetX() + 0.0f << " " << at.GetY() + 0.0f << " "
         << at.GetZ() + 0.0f;
    texts.push_back(line.str());
  }
  return texts;
}

class TuvBIWCustomRepTest : public tests::ReferenceAudit {
 protected:
  static Strings TextsFor(ZefBaseUnknown* weld) { return TextsOf(*Make<TuvBIWCustomRep>(weld)); }
};

TEST_F(TuvBIWCustomRepTest, TheTextOfAnyFastenerStandsWhereItsKindPutsIt) {
  tests::Plant plant;
  EXPECT_EQ(TextsFor(WeldAt(plant, {}).Identity()), (Strings{"SW-0 0 0 0"}));
  EXPECT_EQ(TextsFor(WeldAt(plant, {10, 20, 30, 0, 0, 0}).Identity()), Strings{"SW-1 -10 -20 -30"});
  EXPECT_EQ(TextsFor(plant.Seam("SEAM", {{1, 2, 3.5}, {4, 5, 6}}).Identity()),
            Strings{"SEAM 1 2 3.5"});
  EXPECT_EQ(TextsFor(plant.Seam("POINTLESS").Identity()), Strings{"POINTLESS 0 0 0"});
  EXPECT_EQ(TextsFor(plant.Part("PART").Identity()), Strings{"PART 0 0 0"});
}

// The frame of a weld turns about X, then Y, then Z, and moves: it must move the text of the weld
// into the origin.
TEST_F(TuvBIWCustomRepTest, TheTextOfATurnedWeldStandsAtTheOriginOfTheInverseFrame) {
  const auto turn = [](double& a, double& b, double degrees) {
    const double angle = degrees * std::acos(-1.0) / 180, first = a;
    a = std::cos(angle) * first - std::sin(angle) * b;
    b = std::sin(angle) * first + std::cos(angle) * b;
  };
  tests::Plant plant;
  for (const std::array<double, 6>& frame : {std::array<double, 6>{10, 0, 0, 0, 0, 90},
                                             {10, 20, 30, 90, 0, 0},
                                             {10, 20, 30, 0, 90, 0},
                                             {812.5, -430.25, 977, 30, -45, 110},
                                             {-3, 4, 5, 200, 81, -17}}) {
    const auto rep = Make<TuvBIWCustomRep>(WeldAt(plant, frame).Identity());
    const ZefMathPointf& text = rep->Get3DAnnotation()->GetPosition();
    double x = text.GetX(), y = text.GetY(), z = text.GetZ();
    turn(y, z, frame[3]);
    turn(z, x, frame[4]);
    turn(x, y, frame[5]);
    EXPECT_NEAR(x, -frame[0], 1e-3);
    EXPECT_NEAR(y, -frame[1], 1e-3);
    EXPECT_NEAR(z, -frame[2], 1e-3);
  }
}

TEST_F(TuvBIWCustomRepTest, TheColourIsPackedByComponentAndDrawnWithTheText) {
  tests::Plant plant;
  ZefBaseUnknown* const weld = plant.Weld("SW-1").Identity();
  const struct {
    std::array<int, 4> rgba;
    std::uint32_t color;
  } cases[] = {{{300, 10, 20, 300}, 0x000A14FFu},
               {{-1, 0, 0, 128}, 0xFF000080u},
               {{255, 256, -256, 255}, 0xFF0000FFu},
               {{1, 2, 3, 4}, 0x01020304u},
               {{0, -254, 1 << 24, 256}, 0x000200FFu}};
  for (const auto& c : cases) {
    std::array<int, 4> rgba = c.rgba;
    const auto rep = Make<TuvBIWCustomRep>(weld, rgba.data());
    EXPECT_EQ(rep->GetAttributeSet(), (ZefGraphicAttributeSet{0xFF040400u, c.color}));
    EXPECT_EQ(rep->Primitives().at(0).attributes, rep->GetAttributeSet());
  }
  for (const auto& rep :
       {Make<TuvBIWCustomRep>(weld), Make<TuvBIWCustomRep>(weld, static_cast<int*>(nullptr))}) {
    EXPECT_EQ(rep->Primitives().at(0).attributes, (ZefGraphicAttributeSet{0xFD040400u, 0xFFu}));
  }
}

TEST_F(TuvBIWCustomRepTest, ConstructionBuildsAndTheTextIsPlainAtItsBaseLine) {
  tests::Plant plant;
  ZefBaseUnknown* const weld = plant.Weld("SW-1").Identity();
  const tests::ReferenceSnapshot before{weld};
  tests::TraceRecorder trace;
  auto rep = Make<TuvBIWCustomRep>(weld);
  EXPECT_EQ(trace.Take(), kConstruction);
  EXPECT_EQ(before.Differences(), "") << "the weld is not counted";
  const Zef3DAnnotationTextGP* const text = rep->Get3DAnnotation();
  ASSERT_EQ(rep->Primitives().size(), 1u);
  EXPECT_EQ(rep->Primitives()[0].primitive.get(), text);
  EXPECT_EQ(text->GetAnchor(), BASE_LEFT);
  EXPECT_EQ(text->GetHeight(), 0.0f);
  EXPECT_EQ(text->GetStyle(), 0);
  EXPECT_EQ(rep->GetID(), "SW-1");
  EXPECT_EQ(rep->GetWeld(), weld);
  rep = nullptr;
  EXPECT_EQ(trace.Take(), Strings{"TuvBIWCustomRep <-- OUT"});
}

TEST_F(TuvBIWCustomRepTest, NothingIsDrawnOfNoWeldOrAWeldWithoutName) {
  const auto nameless = embedded::MakeOwned<NamedThing>();
  nameless->name = "";
  for (ZefBaseUnknown* const weld : {static_cast<ZefBaseUnknown*>(nullptr), nameless->Identity()}) {
    tests::TraceRecorder trace;
    const auto rep = Make<TuvBIWCustomRep>(weld);
    EXPECT_EQ(trace.Take(), kConstruction);
    EXPECT_EQ(rep->Build(), E_FAIL);
    EXPECT_EQ(trace.Take(), (Strings{kConstruction[1], kConstruction[2]}));
    EXPECT_EQ(rep->GetWeld(), weld);
    EXPECT_EQ(rep->GetID(), "");
    EXPECT_EQ(rep->Get3DAnnotation(), nullptr);
    EXPECT_TRUE(rep->Primitives().empty());
  }
}

TEST_F(TuvBIWCustomRepTest, BuildingAgainAddsATextAndWithoutANameForgetsIt) {
  const auto thing = embedded::MakeOwned<NamedThing>();
  const auto rep = Make<TuvBIWCustomRep>(thing->Identity());
  thing->name = "OTHER";
  EXPECT_EQ(rep->Build(), E_FAIL);
  EXPECT_EQ(TextsOf(*rep), (Strings{"THING 0 0 0", "OTHER 0 0 0"}));
  const auto* const second = rep->Get3DAnnotation();
  EXPECT_EQ(second, rep->Primitives()[1].primitive.get());
  thing->name = "";
  EXPECT_EQ(rep->Build(), E_FAIL);
  EXPECT_EQ(rep->GetID(), "");
  EXPECT_EQ(rep->Get3DAnnotation(), second);
  EXPECT_EQ(rep->Primitives().size(), 2u);
}

TEST_F(TuvBIWCustomRepTest, AFailingHostCostsTheTextOrItsPlaceOnly) {
  tests::Plant plant;
  const struct {
    ZefBaseUnknown* weld;
    Strings afterFailure[5];  // of the 1st, 2nd, ... operation
  } cases[] = {{plant.Weld("SW", {1, 2, 3}).Identity(),
                {{}, {}, {"SW 0 0 0"}, {"SW 0 0 0"}, {"SW -1 -2 -3"}}},
               {plant.Seam("SEAM", {{1, 2, 3}}).Identity(),
                {{}, {}, {"SEAM 1 2 3"}, {"SEAM 0 0 0"}, {"SEAM 0 0 0"}}}};
  for (const auto& c : cases) {
    const tests::ReferenceSnapshot before{c.weld};
    for (int nth = 1; nth <= 5; ++nth) {
      SCOPED_TRACE(nth);
      Strings texts;
      tests::RunWithFailure([&] { texts = TextsFor(c.weld); }, nth, false);
      EXPECT_EQ(texts, c.afterFailure[nth - 1]);
      EXPECT_EQ(before.Differences(), "");
    }
  }
}

TEST_F(TuvBIWCustomRepTest, WithoutMemoryForTheTextTheRepresentationStaysEmpty) {
  tests::Plant plant;
  ZefBaseUnknown* const weld = plant.Weld("SW-1").Identity();
  const auto rep = Make<TuvBIWCustomRep>(weld);
  FailAllocation(1);
  EXPECT_EQ(rep->Build(), E_FAIL);
  EXPECT_EQ(rep->Get3DAnnotation(), nullptr);
  EXPECT_EQ(rep->GetID(), "SW-1");
  EXPECT_EQ(rep->Primitives().size(), 1u);
  FailAllocation(1);
  EXPECT_FALSE(Make<TuvBIWCustomRep>(weld));
}

// A weld that ends takes its label with it, since the label points at it.
TEST_F(TuvBIWCustomRepTest, TheLabelEndsWithItsWeld) {
  tests::Plant plant;
  ZefBaseUnknown_var weld = WeldAt(plant, {}).Identity();
  auto* const bag = dynamic_cast<Zef3DBagRep*>(ZefI3DGeoVisu_var(weld)->GetRep());
  ASSERT_TRUE(bag);
  const Handle<Zef3DBagRep> kept = bag;
  {
    const auto label = Make<TuvBIWCustomRep>(weld);
    bag->AddChild(label);
  }
  EXPECT_EQ(bag->GetChildren()->Size(), 1);
  plant.Document()->RemoveFeature(weld);
  tests::TraceRecorder trace;
  weld = nullptr;
  EXPECT_EQ(bag->GetChildren()->Size(), 0);
  EXPECT_EQ(trace.Lines(), Strings{"TuvBIWCustomRep <-- OUT"});
}

}  // namespace
