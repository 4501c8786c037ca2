#include "tests/storage/DocumentFileSample.h"

#include <span>
#include <sstream>

#include "tests/support/Plant.h"

namespace tests {

using namespace embedded;

namespace {

std::string NameOf(const Product* product) { return product ? product->Key() : "-"; }

std::string NameOf(const ZefBaseUnknown* object) {
  if (const auto* const named = ObjectAs<Aliased>(object)) return named->Key();
  const auto* const output = ObjectAs<ProductOutput>(object);
  if (!output) return object ? "?" : "-";
  const auto& outputs = output->OwnActivity()->Outputs();
  int number = 1;
  while (outputs[static_cast<std::size_t>(number - 1)].Get() != output) ++number;
  return output->OwnActivity()->Key() + "#" + std::to_string(number);
}

class Description {
 public:
  Description() { text_.precision(17); }
  template <class... Facts>
  void Line(const Facts&... facts) {
    (Put(facts), ...);
    text_ << "\n";
  }
  std::string Text() const { return text_.str(); }

 private:
  void Put(const Look& look) {
    Put(look.ShowAttribute());
    Put(look.IsRepresented());
    Put(look.Colour());
  }
  void Put(const ZefListValZefBaseUnknown_var& list) {
    for (int i = 1; i <= list.Size(); ++i) Put(NameOf(list[i].Get()));
  }
  template <class Fact>
  void Put(const Fact& fact) {
    if constexpr (requires { fact.begin(); } && !std::is_convertible_v<Fact, std::string>) {
      text_ << " (";
      for (const auto& part : fact) Put(part);
      text_ << " )";
    } else {
      text_ << " " << fact;
    }
  }

  std::ostringstream text_;
};

void Add(Description& to, const Activity& activity) {
  const ActivityData& data = activity.Data();
  to.Line("activity", data.key, data.label, static_cast<int>(data.kind),
          static_cast<int>(data.role), static_cast<int>(data.task), data.fixedSeconds,
          data.secondsPerWeld, data.speedMmPerSecond, activity.CycleTime());
  for (const Activity* const child : activity.Children()) to.Line("  child", child->Key());
  for (const auto* const flow : activity.FlowsIn()) to.Line("  from", flow->From().Key());
  for (const auto* const flow : activity.FlowsOut()) to.Line("  to", flow->To().Key());
  for (const auto& output : activity.Outputs())
    to.Line("  output", NameOf(output->OwnProduct().Get()));
  activity.Links().ForEach([&](const ItemLink& link) {
    to.Line("  item", NameOf(link.Item().Get()), link.GetSelector(),
            NameOf(link.details.source.Get()), link.details.name, link.details.fixed);
  });
}

void Add(Description& to, const Product& product) {
  const ProductData& data = product.Data();
  to.Line("product", data.key, data.partNumber, data.name, std::span(data.colour),
          std::span(data.position), std::span(data.boxMin), std::span(data.boxMax), data.geometry,
          NameOf(product.Reference()), product.Display());
  for (const Product* const child : product.Children()) to.Line("  child", child->Key());
}

void Add(Description& to, const MfgAssembly& assembly) {
  to.Line("assembly", assembly.Key(), assembly.OwnName(), assembly.OwnChildren(),
          assembly.Display());
  for (const auto* const output : assembly.ProducedBy())
    to.Line("  from", NameOf(output->Identity()));
}

void Add(Description& to, const FastenerFacet& fastener, const Look& look) {
  to.Line("  fastener", fastener.Fastening().type, fastener.OwnParts(),
          fastener.Fastening().missingParts, fastener.IsRepresented(), fastener.DisplayStatus(),
          look);
}

void Add(Description& to, const ZefBaseUnknown* feature) {
  to.Line("feature", NameOf(feature), feature->IsA());
  if (const auto* const weld = ObjectAs<SpotWeld>(feature)) {
    to.Line(weld->Position(), weld->Diameter());
    Add(to, *weld, weld->Display());
  } else if (const auto* const curve = ObjectAs<CurveFastener>(feature)) {
    to.Line(curve->Points());
    Add(to, *curve, curve->Display());
  } else if (const auto* const point = ObjectAs<PointFeature>(feature)) {
    to.Line(point->Data().position, point->Data().isClamp, point->Display());
  }
}

void AddPointers(Description& to, const ZefBaseUnknown* object) {
  for (const ItemLink* const link : ObjectAs<Linkable>(object)->Links()) {
    to.Line("linked", NameOf(object), link->OwnActivity()->Key(), link->GetSelector());
  }
}

void AddOutput(Activity& activity, const ZefBaseUnknown_var& product) {
  ZefISPPProductIO* added = nullptr;
  activity.AddProductOutput(added, nullptr);
  const auto output = Adopt(added);
  if (product) output->SetProduct(product);
}

void AddProcess(Plant& plant) {
  Document& document = *plant.Document();
  Activity& station = plant.Station("ST10");
  station.SetCycleTime(40.25);
  ActivityData data{.key = "OP10", .label = "Tack \"door\"\n\u00fc", .task = Plant::Task::Welding};
  data.fixedSeconds = 1.0 / 3;
  data.secondsPerWeld = 0;
  data.speedMmPerSecond = 1e-7;
  document.AddActivity(station, data);
  plant.Operation("OP20", Plant::Task::CurveFastening);
  document.AddActivity(station, {.key = "LOG", .kind = ActivityData::Kind::Logical});
  Activity& op10 = *document.FindActivity("OP10");
  Activity& op20 = *document.FindActivity("OP20");
  plant.Flow(op20, op10);
  plant.Flow(op10, op20);
  plant.Flow(op10, op20);
  plant.Flow(op10, op10);
}

void AddProducts(Document& document) {
  ProductData door{.key = "DOOR", .partNumber = "4711", .name = "Front door"};
  for (int i = 0; i < 6; ++i) door.position[i] = i * 0.1 - 2;
  door.colour[1] = 0;
  door.boxMax[2] = 12.5;
  door.geometry = "shapes/door.wrl";
  Product& reference = document.AddProduct(document.RootProduct(), door);
  document.AddProduct(reference, {.key = "INNER"});
  Product& left = document.AddProduct(document.RootProduct(), {.key = "DOOR.1"}, &reference);
  left.Display().SetShowAttribute(1);
  left.Display().SetRepresented(false);
  document.SetProductRoots({&left, &document.RootProduct()});
}

void AddFeatures(Plant& plant) {
  Document& document = *plant.Document();
  Product& inner = *document.FindProduct("INNER");
  SpotWeldData data;
  data.key = "SW/1~";
  data.parts = {&inner, document.FindProduct("DOOR"), &inner};
  data.missingParts = {"HINGE", ""};
  data.position = {1e9, -0.0, 0.1, 1e-300, 180, -1234.5};
  data.diameter = 5.5;
  SpotWeld& weld = document.AddSpotWeld(data);
  weld.SetRepresented(false);
  weld.SetDisplayStatus(kAssignedStatus, 0);
  plant.Clamp("C-1", {1, 2, 3});
  plant.Weld("SW-2").SetDisplayStatus(kUnassignedStatus, 0);
  plant.Seam("SEAM", {{0, 0, 0}, {0, 3, 4}}, {&inner}).Display().SetShowAttribute(3);
  plant.Locator("L-1").Display().SetShowAttribute(2);
  plant.Weld("SW-3");
}

// The second output gets its assembly before the first one does.
void AddAssemblies(Document& document) {
  MfgAssembly& whole = document.AddAssembly("MA-9");
  whole.SetName("Door complete");
  MfgAssembly& inside = document.AddAssembly();
  whole.AddChild(inside.Identity());
  whole.AddChild(document.FindProduct("INNER")->Identity());
  Activity& op10 = *document.FindActivity("OP10");
  AddOutput(op10, nullptr);
  AddOutput(*document.FindActivity("OP20"), whole.Identity());
  op10.Outputs().front()->SetProduct(whole.Identity());
  AddOutput(op10, nullptr);
}

// Each pair of activities shares items that were linked in the opposite order.
void AddLinks(Document& document) {
  Activity& op10 = *document.FindActivity("OP10");
  Activity& op20 = *document.FindActivity("OP20");
  const auto feature = [&](const char* key) { return document.FindFeature(key); };
  op20.Link(feature("SW-2"), ItemLink::Plain);
  op10.Link(feature("SW-3"), ItemLink::Plain);
  op20.Link(feature("SW/1~"), ItemLink::Plain);
  op10.Link(feature("SW-2"), ItemLink::Plain);
  op10.Link(feature("SW-2"), ItemLink::FirstAssigned);
  document.Root()->Link(feature("SW-2"), 7);
  op20.Link(document.FindProduct("DOOR")->Identity(), ItemLink::FirstAssigned);
  op10.Link(op20.Identity(), ItemLink::Plain);
  const ZefBaseUnknown_var assembly = document.FindAssembly("MA-9")->Identity();
  op20.Link(assembly, ItemLink::FirstAssigned)->details = {op10.Outputs().front()->Identity(),
                                                           "part", 1};
  op10.Link(assembly, ItemLink::Plain)->details.source = feature("SEAM");
}

}  // namespace

Owned<Document> RichDocument() {
  Plant plant(Document::Kind::Both);
  AddProcess(plant);
  AddProducts(*plant.Document());
  AddFeatures(plant);
  AddAssemblies(*plant.Document());
  AddLinks(*plant.Document());
  return plant.Document();
}

std::string Describe(const Document& document) {
  Description to;
  to.Line("document", document.Identity()->IsA());
  for (const Product* const root : document.ProductRoots()) to.Line("root", root->Key());
  for (const auto& activity : document.Activities()) Add(to, *activity);
  for (const auto& flow : document.Flows()) to.Line("flow", flow->From().Key(), flow->To().Key());
  for (const auto& product : document.Products()) Add(to, *product);
  for (const auto& assembly : document.Assemblies()) Add(to, *assembly);
  for (const auto& feature : document.Features()) Add(to, feature.Get());
  const auto addPointers = [&](const auto& objects) {
    for (const auto& object : objects) AddPointers(to, object->Identity());
  };
  addPointers(document.Activities());
  addPointers(document.Products());
  addPointers(document.Assemblies());
  for (const auto& feature : document.Features()) AddPointers(to, feature.Get());
  return to.Text();
}

}  // namespace tests
