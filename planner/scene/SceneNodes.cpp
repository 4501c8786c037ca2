#include "planner/scene/SceneNodes.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "embedded/model/Fasteners.h"
#include "embedded/scene/Place.h"
#include "planner/names/Names.h"
#include "planner/report/Describe.h"
#include "planner/scene/Shapes.h"

namespace biwplan {

namespace {

using embedded::CurveFastener;
using embedded::FastenerFacet;
using embedded::ObjectAs;
using embedded::PointFeature;
using embedded::SpotWeld;

constexpr Colour kLocating{0, 114, 178};
constexpr Colour kClamping{204, 121, 167};
constexpr Colour kLabel{0, 0, 0};
constexpr double kSpotDiameter = 6;  // mm, where a weld has none
constexpr double kSeamRadius = 2;

std::string HexOf(const Colour& colour) {
  char text[16];
  std::snprintf(text, sizeof text, "#%02X%02X%02X", static_cast<unsigned>(colour[0]) & 0xFFu,
                static_cast<unsigned>(colour[1]) & 0xFFu, static_cast<unsigned>(colour[2]) & 0xFFu);
  return text;
}

Json PointAsJson(const ZefMathVector& point) { return {point.GetX(), point.GetY(), point.GetZ()}; }

ZefMathTransformation At(const ZefMathVector& place) { return {ZefMath3x3Matrix(), place}; }

std::string StatusOf(std::size_t activities) {
  if (activities == 0) return "unassigned";
  return activities == 1 ? "assigned" : "several";
}

// The kind of the weld, what it is made with, and its size.
void Describe(const ZefBaseUnknown* object, Json& extras) {
  const auto* const spot = ObjectAs<SpotWeld>(object);
  const auto* const seam = ObjectAs<CurveFastener>(object);
  const auto* const point = ObjectAs<PointFeature>(object);
  if (point) extras["type"] = point->Data().isClamp ? "clamping" : "locating";
  if (spot) extras["type"] = "spot";
  if (spot && spot->Diameter() > 0) extras["diameter"] = spot->Diameter();
  if (seam) extras["type"] = "seam";
  if (seam) extras["length"] = seam->Length();
  const auto* const fastener = ObjectAs<FastenerFacet>(object);
  if (!fastener) return;
  extras["parts"] = NamesAsJson(&fastener->OwnParts());
  for (const std::string& part : fastener->Fastening().missingParts) extras["parts"] += part;
  if (!fastener->Fastening().type.empty()) extras["processType"] = fastener->Fastening().type;
}

Glb::Shape TubeAlong(const CurveFastener& seam, ShapeStore& shapes) {
  const auto& first = seam.Points().front();
  std::vector<Point> points;
  for (const auto& point : seam.Points()) {
    points.push_back({point[0] - first[0], point[1] - first[1], point[2] - first[2]});
  }
  return shapes.Add(Tube(points, kSeamRadius));
}

std::optional<Glb::Shape> ShapeOf(const ZefBaseUnknown* object, ShapeStore& shapes) {
  if (const auto* const spot = ObjectAs<SpotWeld>(object)) {
    return shapes.Ball(spot->Diameter() > 0 ? spot->Diameter() : kSpotDiameter);
  }
  const auto* const seam = ObjectAs<CurveFastener>(object);
  if (seam && !seam->Points().empty()) return TubeAlong(*seam, shapes);
  const auto* const point = ObjectAs<PointFeature>(object);
  if (!point) return std::nullopt;
  return point->Data().isClamp ? shapes.Clamp() : shapes.Locator();
}

Colour ColourOf(const embedded::SceneNode& node) {
  if (node.highlighted) return kHighlightColour;
  const auto* const point = ObjectAs<PointFeature>(node.object);
  return node.colour.value_or(point && point->Data().isClamp ? kClamping : kLocating);
}

bool IsShown(const embedded::SceneNode& node) {
  const auto* const displayed = ObjectAs<embedded::Displayed>(node.object);
  const auto* const fastener = ObjectAs<FastenerFacet>(node.object);
  return !node.hidden && (!displayed || displayed->Display().IsRepresented()) &&
         (!fastener || fastener->IsRepresented());
}

Surface SurfaceOf(const Colour& colour, bool isShown) {
  return {colour, isShown ? Surface::Kind::Solid : Surface::Kind::Hidden};
}

}  // namespace

std::vector<std::string> ActivityNames(ZefBaseUnknown* iObject) {
  const ZefListValZefBaseUnknown_var activities = ActivitiesOf(iObject);
  std::vector<std::string> names;
  for (std::string& name : NamesOf(&activities)) {
    const bool isNew = std::find(names.begin(), names.end(), name) == names.end();
    if (isNew) names.push_back(std::move(name));
  }
  return names;
}

// A box stands for a shape that nobody knows, so that what is inside is seen through it. The box of
// an assembly would only hide its parts.
Glb::Node PartNode(const ShownPart& iPart, ShapeStore& ioShapes) {
  const embedded::ProductData& data = iPart.product->Data();
  const bool hasMesh = !iPart.shape->mesh.empty();
  Glb::Node node{iPart.id, iPart.place};
  if (!iPart.isPattern && (hasMesh || !iPart.hasParts))
    node.shape = ioShapes.PartShape(*iPart.shape);
  node.surface = SurfaceOf(iPart.colour, iPart.isShown);
  if (!hasMesh && iPart.isShown) node.surface.kind = Surface::Kind::Glass;
  node.extras = {{"kind", "part"},
                 {"id", iPart.id},
                 {"name", data.name},
                 {"number", data.partNumber.empty() ? data.key : data.partNumber},
                 {"activities", ActivityNames(iPart.product->Identity())},
                 {"color", HexOf(iPart.colour)},
                 {"highlighted", iPart.isHighlighted},
                 {"shown", iPart.isShown}};
  return node;
}

Glb::Node WeldNode(const embedded::SceneNode& iNode, const ZefMathTransformation& iMove,
                   ShapeStore& ioShapes) {
  const std::optional<ZefMathVector> place = embedded::PlaceOf(iNode.object);
  const std::string name = NameOf(iNode.object);
  const Colour colour = ColourOf(iNode);
  const std::vector<std::string> activities = ActivityNames(iNode.object);
  Glb::Node node{name, Composed(iMove, At(place.value_or(ZefMathVector())))};
  node.shape = ShapeOf(iNode.object, ioShapes);
  node.surface = SurfaceOf(colour, IsShown(iNode));
  node.extras = {{"kind", "weld"},
                 {"type", "other"},
                 {"id", name},
                 {"name", name},
                 {"position", PointAsJson(node.place.GetVector())},
                 {"diameter", nullptr},
                 {"parts", Json::array()},
                 {"processType", nullptr},
                 {"activities", activities},
                 {"assigned", !activities.empty()},
                 {"status", StatusOf(activities.size())},
                 {"color", HexOf(colour)},
                 {"highlighted", iNode.highlighted},
                 {"shown", IsShown(iNode)}};
  Describe(iNode.object, node.extras);
  return node;
}

Glb::Node LabelNode(const embedded::SceneNode& iNode, ZefBaseUnknown* iWeld) {
  const auto own = iWeld ? embedded::PlaceOf(iWeld) : std::nullopt;
  const ZefMathVector place = own ? *own : iNode.place.value_or(ZefMathVector());
  const std::vector<std::string> activities =
      iWeld ? ActivityNames(iWeld) : std::vector<std::string>();
  Glb::Node node{iNode.name, At(place)};
  node.extras = {{"kind", "label"},
                 {"text", iNode.name},
                 {"weld", nullptr},
                 {"activity", nullptr},
                 {"position", PointAsJson(place)},
                 {"color", HexOf(iNode.colour.value_or(kLabel))}};
  if (iWeld) node.extras["weld"] = NameOf(iWeld);
  if (!activities.empty()) node.extras["activity"] = activities.front();
  return node;
}

}  // namespace biwplan
