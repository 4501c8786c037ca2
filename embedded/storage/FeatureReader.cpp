#include <array>
#include <utility>
#include <vector>

#include "embedded/storage/DocumentReader.h"
#include "embedded/storage/Fields.h"

namespace embedded {

namespace {

class FeatureReader {
 public:
  explicit FeatureReader(Document& document) : document_(document), names_(document) {}
  void Read(const JsonValue& value);

 private:
  void ReadSpotWeld(JsonObject& object, std::string key);
  void ReadCurve(JsonObject& object, std::string key);
  void ReadPoint(JsonObject& object, std::string key, bool isClamp);
  void ReadFastening(JsonObject& object, std::string key, FastenerData& data) const;

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

void FeatureReader::ReadFastening(JsonObject& object, std::string key, FastenerData& data) const {
  data.key = std::move(key);
  data.type = ReadOptionalText(object, "type");
  for (const JsonValue part : object.Get("parts").Elements()) {
    data.parts.push_back(&names_.ProductAt(part));
  }
  const auto missing = object.Find("missingParts");
  if (!missing) return;
  for (const JsonValue part : missing->Elements()) data.missingParts.push_back(ReadText(part));
}

void FeatureReader::ReadSpotWeld(JsonObject& object, std::string key) {
  SpotWeldData data;
  ReadFastening(object, std::move(key), data);
  ReadNumbers(object.Get("position"), data.position, kMeasures);
  data.diameter = object.Get("diameter").Number(kAmounts);
  SpotWeld& weld = document_.AddSpotWeld(data);
  ReadStatus(object, weld);
  ReadLook(object, weld.Display());
}

void FeatureReader::ReadCurve(JsonObject& object, std::string key) {
  CurveFastenerData data;
  ReadFastening(object, std::move(key), data);
  for (const JsonValue point : object.Get("points").Elements()) {
    ReadNumbers(point, data.points.emplace_back(), kMeasures);
  }
  CurveFastener& curve = document_.AddCurveFastener(data);
  ReadStatus(object, curve);
  ReadLook(object, curve.Display());
}

void FeatureReader::ReadPoint(JsonObject& object, std::string key, bool isClamp) {
  PointFeatureData data{.key = std::move(key), .isClamp = isClamp};
  ReadNumbers(object.Get("position"), data.position, kMeasures);
  ReadLook(object, document_.AddPointFeature(data).Display());
}

void FeatureReader::Read(const JsonValue& value) {
  JsonObject object(value);
  const FeatureKind kind = ReadWord(object.Get("kind"), kFeatureKinds);
  std::string key =
      ReadNewKey(object, [&](const std::string& name) { return document_.FindFeature(name); });
  switch (kind) {
    case FeatureKind::SpotWeld:
      ReadSpotWeld(object, std::move(key));
      break;
    case FeatureKind::CurveFastener:
      ReadCurve(object, std::move(key));
      break;
    default:
      ReadPoint(object, std::move(key), kind == FeatureKind::ClampingPoint);
  }
  object.RequireNothingElse();
}

}  // namespace

void ReadFeatures(Document& ioDocument, const JsonValue& iList) {
  FeatureReader reader(ioDocument);
  for (const JsonValue value : iList.Elements()) reader.Read(value);
}

}  // namespace embedded
