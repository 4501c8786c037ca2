#include <algorithm>
#include <map>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "embedded/model/MfgAssembly.h"
#include "host/fastening/Fastening.h"
#include "host/product/Product.h"
#include "planner/report/Describe.h"
#include "planner/scene/ActivityOrder.h"
#include "planner/scene/SceneFile.h"
#include "planner/scene/SceneNodes.h"

namespace biwplan {

namespace {

using embedded::ObjectAs;
using embedded::SceneNode;

bool IsWeld(const ZefBaseUnknown* object) {
  return ObjectAs<embedded::FastenerFacet>(object) || ObjectAs<embedded::PointFeature>(object);
}

bool IsPart(const ZefBaseUnknown* object) {
  return ObjectAs<embedded::Product>(object) || ObjectAs<embedded::MfgAssembly>(object);
}

constexpr int kHidden = 1;

Json PointAsJson(const ZefMathVector& point) { return {point.GetX(), point.GetY(), point.GetZ()}; }

bool IsLabel(const SceneNode& node) {
  return node.kind == "label" || node.kind == "temporary label";
}

// Where a representation of the object's own has its shape's axes from: the object itself, but for
// a spot weld the part that carries it.
ZefMathTransformation OwnPlace(ZefBaseUnknown* object) {
  ZefIMovable_var placed = object;
  if (const TuvISpotWeld_var weld = object) {
    ZefBaseUnknown* carrier = nullptr;
    weld->GetCarrier(carrier);
    placed = carrier;
  }
  ZefMathTransformation place;
  if (placed) placed->GetAbsPosition(place);
  return place;
}

// The objects by their representations in further windows.
class FurtherOwners {
 public:
  explicit FurtherOwners(const embedded::Document& document) {
    for (const auto& product : document.Products()) Add(product->Identity());
    for (const auto& assembly : document.Assemblies()) Add(assembly->Identity());
    for (const ZefBaseUnknown_var& feature : document.Features()) Add(feature.Get());
  }

  // Null when there is none.
  ZefBaseUnknown* Find(const Zef3DRep* rep) const {
    const auto owner = owners_.find(rep);
    return owner == owners_.end() ? nullptr : owner->second;
  }

 private:
  void Add(ZefBaseUnknown* object) {
    const auto* const displayed = ObjectAs<embedded::Displayed>(object);
    const Zef3DRep* const rep = displayed ? displayed->Display().MadeFurther() : nullptr;
    if (rep) owners_.emplace(rep, object);
  }

  std::unordered_map<const Zef3DRep*, ZefBaseUnknown*> owners_;
};

// The parts at the top of the list that others are instances of, as long as nobody has given them
// a place or loads them.
ShownParts::Objects PatternsOf(const embedded::Document& document) {
  ShownParts::Objects patterns;
  for (const auto& instance : document.Products()) {
    embedded::Product* const product = instance->Reference();
    if (!product || product->Parent() != &document.RootProduct()) continue;
    const auto& position = product->Data().position;
    const bool isPlaced =
        std::any_of(position, position + 6, [](double part) { return part != 0; });
    if (!isPlaced && ActivityNames(product->Identity()).empty())
      patterns.insert(product->Identity());
  }
  return patterns;
}

class Drawing {
 public:
  Drawing(const embedded::Document& document, const std::string& name)
      : document_(document), name_(name), owners_(document), glb_(name), shapes_(glb_) {}

  void LeaveOutPatterns() { parts_.LeaveOut(PatternsOf(document_)); }

  // Parts first, then welds, then labels.
  void Add(const embedded::SceneTree& tree) {
    framed_ = tree.framed;
    HighlightParts(tree);
    for (const SceneNode& node : tree.nodes) {
      if (IsLabel(node)) {
        labels_.emplace_back(&node, node.depth > 0 ? weld_ : document_.FindFeature(node.name));
      } else {
        AddObject(node);
      }
    }
    for (const ShownPart& part : parts_.Parts()) glb_.AddNode(PartNode(part, shapes_));
    for (const auto& [node, move] : welds_) AddWeld(node, move);
    for (const auto& [node, weld] : labels_) glb_.AddNode(LabelNode(*node, weld));
  }

  SceneFile Finish() const {
    Json extras = {{"document", name_}, {"program", "biwplan"}, {"activities", Activities()}};
    if (framed_) extras["framed"] = {PointAsJson(framed_->low), PointAsJson(framed_->high)};
    return {parts_.Parts().size(), welds_.size(), labels_.size(), glb_.Bytes(extras)};
  }

 private:
  void HighlightParts(const embedded::SceneTree& tree) {
    ShownParts::Objects highlighted;
    for (const SceneNode& node : tree.nodes) {
      if (node.highlighted) highlighted.insert(node.object);
    }
    parts_.Highlight(std::move(highlighted));
  }

  void AddObject(SceneNode node) {
    ZefMathTransformation move;
    if (!node.object && (node.object = owners_.Find(node.representation))) {
      move = Composed(node.frame, OwnPlace(node.object).Inverse());
      const embedded::Look& look = ObjectAs<embedded::Displayed>(node.object)->Display();
      node.hidden = look.ShowAttribute() == kHidden;
      if (!node.colour && look.Colour()[0] >= 0) node.colour = look.Colour();
    }
    if (IsPart(node.object)) parts_.Add(node.object, move, node.colour);
    weld_ = IsWeld(node.object) ? node.object : nullptr;
    if (weld_ && seen_.insert(weld_).second) welds_.emplace_back(std::move(node), move);
  }

  void AddWeld(const SceneNode& node, const ZefMathTransformation& move) {
    Glb::Node shown = WeldNode(node, move, shapes_);
    for (const Json& activity : shown.extras.at("activities")) ++welded_[activity];
    glb_.AddNode(std::move(shown));
  }

  Json Activities() const {
    Json rows = Json::array();
    for (const embedded::Activity* const activity : InProcessOrder(document_)) {
      const auto welds = welded_.find(activity->Key());
      Json row = DescribeActivity(*activity);
      const std::string& role = row.at("role").get_ref<const std::string&>();
      const bool isPlain = role != "station" && role != "operation";
      rows.push_back({{"id", activity->Key()},
                      {"name", row.at("label")},
                      {"kind", isPlain ? "other" : role},
                      {"parent", nullptr},
                      {"welds", welds == welded_.end() ? 0 : welds->second}});
      if (activity->Parent()) rows.back()["parent"] = activity->Parent()->Key();
    }
    return rows;
  }

  const embedded::Document& document_;
  std::string name_;
  FurtherOwners owners_;
  Glb glb_;
  ShapeStore shapes_;
  ShownParts parts_;
  std::vector<std::pair<SceneNode, ZefMathTransformation>> welds_;
  std::unordered_set<const ZefBaseUnknown*> seen_;
  // The nodes are the tree's; a label's weld may be null.
  std::vector<std::pair<const SceneNode*, ZefBaseUnknown*>> labels_;
  // The weld whose labels follow.
  ZefBaseUnknown* weld_ = nullptr;
  std::map<std::string, int> welded_;
  std::optional<embedded::Box> framed_;
};

}  // namespace

SceneFile DrawScene(const embedded::Document& iDocument, const embedded::Viewer& iViewer,
                    const std::string& iName) {
  Drawing drawing(iDocument, iName);
  // Whoever chooses a pattern wants to see it.
  if (iViewer.ShownDocument()) drawing.LeaveOutPatterns();
  const embedded::SceneTree tree = embedded::SceneOf(iViewer);
  drawing.Add(tree);
  return drawing.Finish();
}

}  // namespace biwplan
