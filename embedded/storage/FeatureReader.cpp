#include <array>
#include <utility>
#include <vector>

#include "embedded/Error.h"
#include "embedded/storage/DocumentReader.h"
#include "embedded/storage/Fields.h"

namespace embedded {

namespace {

class FeatureReader {
 public:
  explicit FeatureReader(Document& document) : document_(document), names_(document) {}
  void Read(const JsonValue& value);

 private:
  void ReadSpotWeld(JsonObject& object, const JsonValue& key);
  void ReadCurve(JsonObject& object, const JsonValue& key);
  void ReadPoint(JsonObject& object, const JsonValue& key, bool isClamp);
  void ReadFastening(JsonObject& object, const JsonValue& key, FastenerData& data) const;
  template <class Feature, class Data>
  Feature& Add(Feature& (Document::*add)(const Data&), const Data& data, const JsonValue& key);

  Document& document_;
  NamedObjects names_;
};

void ReadStatus(JsonObject& object, FastenerFacet& fastener) {
  if (const auto represented = object.Find("represented")) {
    fastener.SetRepresented(represented->Flag());
  }
  if (const auto status = object.Find("displayStatus")) {
    fastener.SetDisplayStatus(status->Integer(kLowestInteger, kHighestInteger), 0);
  }
}

void FeatureReader::ReadFastening(JsonObject& object, const JsonValue& key,
                                  FastenerData& data) const {
  data.key = ReadText(key);
  data.type = ReadOptionalText(object, "type");
  for (const JsonValue part : object.Get("parts").Elements()) {
    data.parts.push_back(&names_.ProductAt(part));
  }
  const auto missing = object.Find("missingParts");
  if (!missing) return;
  for (const JsonValue part : missing->Elements()) data.missingParts.push_back(ReadText(part));
}

void FeatureReader::ReadSpotWeld(JsonObject& object, const JsonValue& key) {
  SpotWeldData data;
  ReadFastening(object, key, data);
  ReadNumbers(object.Get("position"), data.position, kMeasures);
  data.diameter = object.Get("diameter").Number(kAmounts);
  SpotWeld& weld = Add(&Document::AddSpotWeld, data, key);
  ReadStatus(object, weld);
  ReadLook(object, weld.Display());
}

void FeatureReader::ReadCurve(JsonObject& object, const JsonValue& key) {
  CurveFastenerData data;
  ReadFastening(object, key, data);
  for (const JsonValue point : object.Get("points").Elements()) {
    ReadNumbers(point, data.points.emplace_back(), kMeasures);
  }
  CurveFastener& curve = Add(&Document::AddCurveFastener, data, key);
  ReadStatus(object, curve);
  ReadLook(object, curve.Display());
}

void FeatureReader::ReadPoint(JsonObject& object, const JsonValue& key, bool isClamp) {
  PointFeatureData data{.key = ReadText(key), .isClamp = isClamp};
  ReadNumbers(object.Get("position"), data.position, kMeasures);
  ReadLook(object, Add(&Document::AddPointFeature, data, key).Display());
}

// Asking for the key before would cost a look-up for each feature of a large document.
template <class Feature, class Data>
Feature& FeatureReader::Add(Feature& (Document::*add)(const Data&), const Data& data,
                            const JsonValue& key) {
  try {
    return (document_.*add)(data);
  } catch (const InputError&) {
    RequireNewKey(key, document_.FindFeature(data.key) != nullptr);
    throw;
  }
}

void FeatureReader::Read(const JsonValue& value) {
  JsonObject object(value);
  const FeatureKind kind = ReadWord(object.Get("kind"), kFeatureKinds);
  const JsonValue key = object.Get("key");
  switch (kind) {
    case FeatureKind::SpotWeld:
      ReadSpotWeld(object, key);
      break;
    case FeatureKind::CurveFastener:
      ReadCurve(object, key);
      break;
    default:
      ReadPoint(object, key, kind == FeatureKind::ClampingPoint);
  }
  object.RequireNothingElse();
}

}  // namespace

void ReadFeatures(Document& ioDocument, const JsonValue& iList) {
  FeatureReader reader(ioDocument);
  for (const JsonValue value : iList.Elements()) reader.Read(value);
}

}  // namespace embedded
