#include "embedded/storage/DocumentWriter.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "embedded/Error.h"
#include "embedded/processdb/ProcessDatabase.h"
#include "embedded/storage/JsonText.h"
#include "embedded/storage/LinkOrder.h"

namespace embedded {

namespace {

// About what a line for a feature and one for its link take.
constexpr std::size_t kBytesPerFeature = 300;

template <class Value, std::size_t kCount>
std::string_view WordFor(Value value, const Word<Value> (&words)[kCount]) {
  for (const Word<Value>& word : words) {
    if (word.value == value) return word.text;
  }
  return {};
}

template <class Numbers>
bool AreAll(const Numbers& numbers, double value) {
  return std::all_of(std::begin(numbers), std::end(numbers),
                     [&](double number) { return number == value; });
}

[[noreturn]] void FailForeign(const char* role) {
  throw InputError(std::string("the ") + role + " is no object of this document; remove it first");
}

}  // namespace

DocumentWriter::DocumentWriter(const Document& iDocument, const std::filesystem::path& iFolder)
    : document_(iDocument),
      folder_(iFolder.empty() ? "." : iFolder),
      json_(kBytesPerFeature * iDocument.Features().size()) {
  for (const auto& activity : document_.Activities()) {
    int number = 0;
    for (const auto& output : activity->Outputs()) {
      outputs_.emplace(output->Identity(), OutputPlace{activity.Get(), ++number, outputs_.size()});
    }
  }
}

std::string DocumentWriter::Write() {
  const auto write = [this](const auto& object) { Write(*object); };
  json_.BeginObject();
  WriteHeader();
  WriteList("activities", document_.Activities(), write);
  WriteList("flows", document_.Flows(), write);
  WriteList("products", document_.Products(), write);
  json_.Key("productRoots");
  json_.BeginArray();
  for (const Product* const root : document_.ProductRoots()) json_.Text(root->Key());
  json_.EndArray();
  WriteList("assemblies", document_.Assemblies(), write);
  WriteList("features", document_.Features(),
            [this](const ZefBaseUnknown_var& feature) { WriteFeature(*feature.Get()); });
  WriteList("links", ListLinks(document_), write);
  json_.EndObject();
  return json_.Take();
}

template <class List, class Function>
void DocumentWriter::WriteList(std::string_view key, const List& list, const Function& write) {
  json_.Key(key);
  json_.BeginArray();
  std::size_t number = 0;
  try {
    for (const auto& element : list) {
      json_.BeginObject();
      write(element);
      json_.EndObject();
      ++number;
    }
  } catch (const InputError& error) {
    throw InputError("The document cannot be saved: at /" + std::string(key) + "/" +
                     std::to_string(number) + ", " + error.what());
  }
  json_.EndArray();
}

void DocumentWriter::WriteHeader() {
  Field("format", kDocumentFormat);
  json_.Key("version");
  json_.Integer(kDocumentVersion);
  Field("kind", WordFor(document_.GetKind(), kDocumentKinds));
  if (document_.Database() || document_.Lost()) WriteDatabase();
  WriteChoices();
}

void DocumentWriter::WriteChoices() {
  const Document::Settings& settings = document_.settings;
  if (!settings.partLoadConstraint && settings.updateThrough.empty()) return;
  json_.Key("settings");
  json_.BeginObject();
  if (settings.partLoadConstraint) {
    json_.Key("partLoadConstraint");
    json_.Flag(true);
  }
  OptionalField("updateThrough", settings.updateThrough);
  json_.EndObject();
}

void DocumentWriter::WriteDatabase() {
  const auto& lost = document_.Lost();
  const auto& file = lost ? lost->file : document_.Database()->File();
  Field("database", std::filesystem::proximate(file, folder_).generic_string());
}

void DocumentWriter::Write(const Activity& activity) {
  const ActivityData& data = activity.Data();
  Field("key", data.key);
  if (activity.Parent()) {
    Field("parent", activity.Parent()->Key());
    WriteSettings(data);
  }
  Field("cycleTime", activity.CycleTime(), kFiniteNumbers);
  if (activity.Outputs().empty()) return;
  json_.Key("outputs");
  json_.BeginArray();
  for (const auto& output : activity.Outputs()) {
    json_.BeginObject();
    if (output->OwnProduct()) WriteReference(output->OwnProduct().Get(), "product of an output");
    json_.EndObject();
  }
  json_.EndArray();
}

void DocumentWriter::WriteSettings(const ActivityData& data) {
  OptionalField("label", data.label, data.key);
  Field("kind", WordFor(data.kind, kActivityKinds));
  Field("role", WordFor(data.role, kActivityRoles));
  Field("task", WordFor(data.task, kActivityTasks));
  Field("fixedSeconds", data.fixedSeconds, kAmounts);
  Field("secondsPerWeld", data.secondsPerWeld, kAmounts);
  Field("speedMmPerSecond", data.speedMmPerSecond, kAmounts);
}

void DocumentWriter::Write(const ControlFlow& flow) {
  Field("from", flow.From().Key());
  Field("to", flow.To().Key());
}

void DocumentWriter::Write(const Product& product) {
  Field("key", product.Key());
  if (product.Parent()) {
    Field("parent", product.Parent()->Key());
    if (product.Reference()) Field("reference", product.Reference()->Key());
    WriteData(product.Data());
  }
  WriteLook(product.Display());
}

void DocumentWriter::WriteData(const ProductData& data) {
  OptionalField("partNumber", data.partNumber, data.key);
  OptionalField("name", data.name);
  if (!AreAll(data.colour, kHighestColour)) {
    json_.Key("colour");
    json_.BeginArray();
    for (const int part : data.colour) json_.Number(part, {0, kHighestColour});
    json_.EndArray();
  }
  if (!AreAll(data.position, 0)) Field("position", data.position);
  if (!AreAll(data.boxMin, 0) || !AreAll(data.boxMax, 0)) {
    Field("boxMin", data.boxMin);
    Field("boxMax", data.boxMax);
  }
  OptionalField("geometry", data.geometry);
  if (!data.mesh.empty()) Field("mesh", FromFolder(data.mesh));
}

// Links are not followed: the path stays as its author knows it.
std::string DocumentWriter::FromFolder(const std::filesystem::path& file) const {
  const auto plain = [](const std::filesystem::path& path) {
    return std::filesystem::absolute(path).lexically_normal();
  };
  return plain(file).lexically_proximate(plain(folder_)).generic_string();
}

void DocumentWriter::Write(const MfgAssembly& assembly) {
  Field("key", assembly.Key());
  OptionalField("name", assembly.OwnName());
  if (assembly.OwnChildren().Size() > 0) {
    json_.Key("children");
    json_.BeginArray();
    for (int i = 1; i <= assembly.OwnChildren().Size(); ++i) {
      json_.BeginObject();
      WriteReference(assembly.OwnChildren()[i].Get(), "child");
      json_.EndObject();
    }
    json_.EndArray();
  }
  WriteProducers(assembly);
  WriteLook(assembly.Display());
}

// Only when the order is not that of the activities and their outputs.
void DocumentWriter::WriteProducers(const MfgAssembly& assembly) {
  std::vector<OutputPlace> places;
  for (const ProductOutput* const output : assembly.ProducedBy()) {
    const auto place = outputs_.find(output->Identity());
    if (place != outputs_.end()) places.push_back(place->second);
  }
  if (std::is_sorted(places.begin(), places.end(),
                     [](const auto& a, const auto& b) { return a.order < b.order; })) {
    return;
  }
  json_.Key("producers");
  json_.BeginArray();
  for (const OutputPlace& place : places) {
    json_.BeginObject();
    WriteReference(place);
    json_.EndObject();
  }
  json_.EndArray();
}

void DocumentWriter::WriteFeature(const ZefBaseUnknown& feature) {
  if (const auto* const weld = ObjectAs<SpotWeld>(&feature)) return Write(*weld);
  if (const auto* const curve = ObjectAs<CurveFastener>(&feature)) return Write(*curve);
  Write(*ObjectAs<PointFeature>(&feature));
}

void DocumentWriter::Write(const SpotWeld& weld) {
  Field("kind", WordFor(FeatureKind::SpotWeld, kFeatureKinds));
  Field("key", weld.Key());
  WriteFastening(weld);
  Field("position", weld.Position());
  Field("diameter", weld.Diameter(), kAmounts);
  WriteStatus(weld, weld.Display());
}

void DocumentWriter::Write(const CurveFastener& curve) {
  Field("kind", WordFor(FeatureKind::CurveFastener, kFeatureKinds));
  Field("key", curve.Key());
  WriteFastening(curve);
  json_.Key("points");
  json_.BeginArray();
  for (const auto& point : curve.Points()) Numbers(point);
  json_.EndArray();
  WriteStatus(curve, curve.Display());
}

void DocumentWriter::Write(const PointFeature& point) {
  const auto kind = point.Data().isClamp ? FeatureKind::ClampingPoint : FeatureKind::LocatingPoint;
  Field("kind", WordFor(kind, kFeatureKinds));
  Field("key", point.Key());
  Field("position", point.Data().position);
  WriteLook(point.Display());
}

void DocumentWriter::WriteFastening(const FastenerFacet& fastener) {
  OptionalField("type", fastener.Fastening().type);
  json_.Key("parts");
  json_.BeginArray();
  for (const Product* const part : fastener.Fastening().parts) {
    if (part->OwnDocument() != &document_) FailForeign("joined part");
    json_.Text(part->Key());
  }
  json_.EndArray();
  if (fastener.Fastening().missingParts.empty()) return;
  json_.Key("missingParts");
  json_.BeginArray();
  for (const std::string& part : fastener.Fastening().missingParts) json_.Text(part);
  json_.EndArray();
}

void DocumentWriter::WriteStatus(const FastenerFacet& fastener, const Look& look) {
  if (!fastener.IsRepresented()) {
    json_.Key("represented");
    json_.Flag(false);
  }
  if (fastener.DisplayStatus() != kUnassignedStatus) {
    json_.Key("displayStatus");
    json_.Integer(fastener.DisplayStatus());
  }
  WriteLook(look);
}

void DocumentWriter::WriteLook(const Look& look) {
  if (look.ShowAttribute() != 0) {
    json_.Key("show");
    json_.Number(look.ShowAttribute(), {0, kHighestShow});
  }
  if (look.IsRepresented()) return;
  json_.Key("hasShape");
  json_.Flag(false);
}

void DocumentWriter::Write(const ItemLink& link) {
  Field("activity", link.OwnActivity()->Key());
  json_.Key("item");
  json_.BeginObject();
  WriteReference(link.Item().Get(), "item");
  json_.EndObject();
  if (link.GetSelector() != ItemLink::Plain) {
    json_.Key("selector");
    json_.Integer(link.GetSelector());
  }
  const ItemLink::Details& details = link.OwnDetails();
  OptionalField("name", details.name);
  if (details.fixed != 0) {
    json_.Key("fixed");
    json_.Integer(details.fixed);
  }
  if (details.source) WriteSource(details.source.Get());
}

// An output that was removed since then is nothing that the file could name.
void DocumentWriter::WriteSource(const ZefBaseUnknown* source) {
  const auto output = outputs_.find(source);
  const bool isOutput = output != outputs_.end();
  if (!isOutput && !NameOf(source).key) return;
  json_.Key("source");
  json_.BeginObject();
  isOutput ? WriteReference(output->second) : WriteReference(source, "source");
  json_.EndObject();
}

void DocumentWriter::Field(std::string_view key, std::string_view text) {
  json_.Key(key);
  json_.Text(text);
}

void DocumentWriter::Field(std::string_view key, double number, const NumberRange& range) {
  json_.Key(key);
  json_.Number(number, range);
}

void DocumentWriter::OptionalField(std::string_view key, const std::string& text,
                                   std::string_view standard) {
  if (text != standard) Field(key, text);
}

void DocumentWriter::Numbers(std::span<const double> numbers) {
  json_.BeginArray();
  for (const double number : numbers) json_.Number(number, kMeasures);
  json_.EndArray();
}

void DocumentWriter::Field(std::string_view key, std::span<const double> numbers) {
  json_.Key(key);
  Numbers(numbers);
}

// A feature that was removed has no links.
template <class Feature>
DocumentWriter::Name DocumentWriter::NameOfFeature(const Feature& feature) const {
  const bool isOwn =
      feature.OwnDocument() == &document_ &&
      (!feature.Links().empty() || document_.FindFeature(feature.Key()) == feature.Identity());
  return isOwn ? Name{"feature", &feature.Key()} : Name{};
}

DocumentWriter::Name DocumentWriter::NameOf(const ZefBaseUnknown* object) const {
  if (const auto* const weld = ObjectAs<SpotWeld>(object)) return NameOfFeature(*weld);
  if (const auto* const curve = ObjectAs<CurveFastener>(object)) return NameOfFeature(*curve);
  if (const auto* const point = ObjectAs<PointFeature>(object)) return NameOfFeature(*point);
  if (const auto* const product = ObjectAs<Product>(object)) {
    if (product->OwnDocument() == &document_) return {"product", &product->Key()};
  } else if (const auto* const assembly = ObjectAs<MfgAssembly>(object)) {
    if (assembly->OwnDocument() == &document_) return {"assembly", &assembly->Key()};
  } else if (const auto* const activity = ObjectAs<Activity>(object)) {
    if (document_.FindActivity(activity->Key()) == activity) return {"activity", &activity->Key()};
  }
  return {};
}

void DocumentWriter::WriteReference(const ZefBaseUnknown* object, const char* role) {
  const Name name = NameOf(object);
  if (!name.key) FailForeign(role);
  Field(name.kind, *name.key);
}

void DocumentWriter::WriteReference(const OutputPlace& place) {
  json_.Key("output");
  json_.Integer(place.number);
  Field("of", place.activity->Key());
}

}  // namespace embedded
