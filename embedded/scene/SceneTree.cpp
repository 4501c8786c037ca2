#include "embedded/scene/SceneTree.h"

#include <unordered_set>
#include <utility>

#include "embedded/model/Document.h"
#include "embedded/scene/Place.h"
#include "embedded/scene/RepNodes.h"
#include "host/values/Each.h"
#include "host/visu/ZefISO.h"
#include "host/visu/ZefModelForRep3D.h"

namespace embedded {

namespace {

using Objects = std::unordered_set<const ZefBaseUnknown*>;

std::string KindOf(const ZefBaseUnknown* object) {
  if (ObjectAs<SpotWeld>(object)) return "spot weld";
  if (ObjectAs<CurveFastener>(object)) return "seam";
  if (ObjectAs<Product>(object)) return "product";
  if (ObjectAs<MfgAssembly>(object)) return "assembly";
  const auto* const point = ObjectAs<PointFeature>(object);
  if (!point) return "object";
  return point->Data().isClamp ? "clamping point" : "locating point";
}

std::string NameOf(const ZefBaseUnknown* object) {
  const auto* const named = ObjectAs<Aliased>(object);
  return named ? named->Key() : object->IsA();
}

// White stands for no colour of its own.
std::optional<std::array<int, 3>> ColourOf(const ZefBaseUnknown* object) {
  if (const auto* const product = ObjectAs<Product>(object)) {
    const auto& [red, green, blue] = product->Data().colour;
    if (red != 255 || green != 255 || blue != 255) return {{red, green, blue}};
  }
  const auto* const displayed = ObjectAs<Displayed>(object);
  if (!displayed || displayed->Display().Colour()[0] < 0) return {};
  return displayed->Display().Colour();
}

// The objects of a set, paths followed to their ends.
Objects ObjectsIn(const ZefSelectionSet* set, std::vector<std::string>& oNames) {
  Objects objects;
  if (!set) return objects;
  for (const auto& element : Each<ZefBaseUnknown>(set->Elements())) {
    const ZefBaseUnknown* const object = EndOfPath(element.Get());
    if (object && objects.insert(object).second) oNames.push_back(NameOf(object));
  }
  return objects;
}

class SceneWriter {
 public:
  SceneWriter(SceneTree& tree, const Viewpoint* viewpoint) : tree_(tree) {
    if (!viewpoint) return;
    highlighted_ = ObjectsIn(viewpoint->Highlighted(), tree_.highlighted);
    preselected_ = ObjectsIn(viewpoint->Preselected(), tree_.preselected);
  }

  void Add(const Document& document) {
    std::vector<std::pair<Product*, int>> open;
    const auto openBelow = [&open](const Product& parent, int depth) {
      const auto& children = parent.Children();
      for (auto i = children.rbegin(); i != children.rend(); ++i) open.emplace_back(*i, depth);
    };
    openBelow(document.RootProduct(), 0);
    while (!open.empty()) {
      const auto [product, depth] = open.back();
      open.pop_back();
      Add(product->Identity(), product->Display().MadeMain(), depth);
      openBelow(*product, depth + 1);
    }
    for (const ZefBaseUnknown_var& feature : document.Features()) {
      const auto* const displayed = ObjectAs<Displayed>(feature.Get());
      Add(feature.Get(), displayed ? displayed->Display().MadeMain() : nullptr, 0);
    }
  }

  void Add(const Viewpoint& viewpoint) {
    for (const auto& [order, shown] : viewpoint.Objects().InOrder()) {
      Add(shown.path->GetObject(), shown.representation.Get(), 0);
    }
    for (const auto& [order, rep] : viewpoint.Representations().InOrder()) {
      AppendRep(tree_.nodes, *rep, 0, "label");
    }
  }

  void Add(const ZefISO& temporary) {
    for (const auto& element : Each<ZefBaseUnknown>(temporary.Elements())) {
      const auto* const model = dynamic_cast<const ZefModelForRep3D*>(element.Get());
      if (!model) {
        Add(EndOfPath(element.Get()), nullptr, 0);
      } else if (model->GetRep()) {
        AppendRep(tree_.nodes, *model->GetRep(), 0, "temporary label");
      }
    }
  }

 private:
  // The object's own bag is not told apart from the object.
  void Add(ZefBaseUnknown* object, Zef3DRep* rep, int depth) {
    if (!object) return;
    SceneNode& node = tree_.nodes.emplace_back(SceneNode{depth, KindOf(object), NameOf(object)});
    const auto* const displayed = ObjectAs<Displayed>(object);
    node.object = object;
    node.place = PlaceOf(object);
    node.colour = ColourOf(object);
    node.hidden = displayed && displayed->Display().ShowAttribute() == 1;
    node.highlighted = highlighted_.contains(object);
    node.preselected = preselected_.contains(object);
    if (auto* const bag = dynamic_cast<Zef3DBagRep*>(rep)) {
      AppendBelow(tree_.nodes, *bag, depth + 1);
    } else if (rep) {
      AppendRep(tree_.nodes, *rep, depth + 1, "label");
    }
  }

  SceneTree& tree_;
  Objects highlighted_;
  Objects preselected_;
};

}  // namespace

SceneTree SceneOf(const Viewer& iViewer) {
  SceneTree tree;
  tree.framed = iViewer.Framed();
  const Viewpoint* const viewpoint = iViewer.MainViewpoint();
  SceneWriter writer(tree, viewpoint);
  if (iViewer.ShownDocument()) writer.Add(*iViewer.ShownDocument());
  if (viewpoint) writer.Add(*viewpoint);
  for (const ZefISO* const temporary : iViewer.InteractiveSets()) writer.Add(*temporary);
  return tree;
}

}  // namespace embedded
