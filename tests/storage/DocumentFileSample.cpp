#include "tests/storage/DocumentFileSample.h"

#include "tests/support/Plant.h"

namespace tests {

using namespace embedded;

namespace {

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
  door.mesh = "shapes/../shapes/door.stl";
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
  op20.Link(assembly, ItemLink::FirstAssigned)
      ->SetDetails({op10.Outputs().front()->Identity(), "part", 1});
  op10.Link(assembly, ItemLink::Plain)->SetDetails({.source = feature("SEAM")});
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

}  // namespace tests
