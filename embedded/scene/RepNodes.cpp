#include "embedded/scene/RepNodes.h"

#include <utility>

#include "host/visu/Zef3DAnnotationTextGP.h"
#include "host/visu/Zef3DBagRep.h"
#include "host/visu/Zef3DCustomRep.h"

namespace embedded {

namespace {

using Colour = std::optional<std::array<int, 3>>;

constexpr int kLabelPaletteIndex = 251;
constexpr std::array<int, 3> kLabelColour{240, 228, 66};

struct Step {
  Zef3DRep* rep;
  int depth;
  ZefMathTransformation place;  // of the bag above
};

Colour ColourOf(const Zef3DRep& rep) {
  if (rep.GetPaletteIndex() == kLabelPaletteIndex) return kLabelColour;
  const auto& [red, green, blue, alpha] = rep.GetColor();
  if (red < 0) return {};
  return {{red, green, blue}};
}

std::array<int, 3> ColourOf(const ZefGraphicAttributeSet& attributes) {
  const auto byte = [&](int shift) { return static_cast<int>(attributes.Color >> shift & 0xFFu); };
  return {byte(24), byte(16), byte(8)};
}

ZefMathVector Moved(const ZefMathTransformation& place, const ZefMathVector& point) {
  return place.GetMatrix() * point + place.GetVector();
}

// The place of what is in the bag.
ZefMathTransformation PlaceIn(const Zef3DBagRep& bag, const ZefMathTransformation& outside) {
  const Zef4x4Matrix& matrix = bag.GetMatrix();
  const auto column = [&](int i) {
    return ZefMathVector(matrix.At(0, i), matrix.At(1, i), matrix.At(2, i));
  };
  const ZefMath3x3Matrix turn(column(0), column(1), column(2));
  return {outside.GetMatrix() * turn, Moved(outside, column(3))};
}

void OpenChildren(Zef3DBagRep& bag, int depth, const ZefMathTransformation& place,
                  std::vector<Step>& ioOpen) {
  const list<Zef3DRep>* const children = bag.GetChildren();
  for (int i = children ? children->Size() - 1 : -1; i >= 0; --i) {
    ioOpen.push_back({(*children)[i], depth, place});
  }
}

// One node for each text that it draws, or one for itself.
void AppendLeaf(std::vector<SceneNode>& nodes, const Step& step, const std::string& labelKind) {
  const auto* const custom = dynamic_cast<const Zef3DCustomRep*>(step.rep);
  const std::size_t before = nodes.size();
  for (std::size_t i = 0; custom && i < custom->Primitives().size(); ++i) {
    const auto& [primitive, attributes] = custom->Primitives()[i];
    const auto* const text = dynamic_cast<const Zef3DAnnotationTextGP*>(primitive.get());
    if (!text) continue;
    SceneNode& node = nodes.emplace_back(SceneNode{step.depth, labelKind, text->GetText().Bytes()});
    const ZefMathPointf& point = text->GetPosition();
    node.place = Moved(step.place, {point.GetX(), point.GetY(), point.GetZ()});
    node.colour = ColourOf(*step.rep).value_or(ColourOf(attributes));
    node.representation = step.rep;
  }
  if (nodes.size() > before) return;
  nodes.emplace_back(SceneNode{step.depth, "representation", step.rep->IsA()}).colour =
      ColourOf(*step.rep);
}

void AppendAll(std::vector<SceneNode>& nodes, std::vector<Step> open,
               const std::string& labelKind) {
  while (!open.empty()) {
    const Step step = open.back();
    open.pop_back();
    auto* const bag = dynamic_cast<Zef3DBagRep*>(step.rep);
    if (!bag) {
      AppendLeaf(nodes, step, labelKind);
      continue;
    }
    const ZefMathTransformation place = PlaceIn(*bag, step.place);
    SceneNode& node = nodes.emplace_back(SceneNode{step.depth, "group", ""});
    node.place = place.GetVector();
    node.frame = place;
    node.representation = bag;
    node.colour = ColourOf(*bag);
    OpenChildren(*bag, step.depth + 1, place, open);
  }
}

}  // namespace

void AppendRep(std::vector<SceneNode>& ioNodes, Zef3DRep& iRep, int iDepth,
               const std::string& iLabelKind) {
  AppendAll(ioNodes, {{&iRep, iDepth, {}}}, iLabelKind);
}

void AppendBelow(std::vector<SceneNode>& ioNodes, Zef3DBagRep& iBag, int iDepth) {
  std::vector<Step> open;
  OpenChildren(iBag, iDepth, PlaceIn(iBag, {}), open);
  AppendAll(ioNodes, std::move(open), "label");
}

}  // namespace embedded
