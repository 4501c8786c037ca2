#include "embedded/storage/Fields.h"

#include <iterator>

namespace embedded {

namespace {

[[noreturn]] void FailUnknown(const JsonValue& key, const char* what) {
  key.Fail(Quoted(key.Text()) + " names no " + what + " of this document");
}

}  // namespace

std::string ReadText(const JsonValue& iValue) { return std::string(iValue.Text()); }

std::string ReadOptionalText(JsonObject& ioObject, std::string_view iKey) {
  const auto value = ioObject.Find(iKey);
  return value ? ReadText(*value) : std::string();
}

void RequireNewKey(const JsonValue& iKey, bool iIsTaken) {
  if (iKey.Text().empty()) iKey.Fail("the key is empty; it must name the object");
  if (iIsTaken) iKey.Fail("there is already a " + Quoted(iKey.Text()) + "; keys must differ");
}

void ReadNumbers(const JsonValue& iValue, std::span<double> oNumbers, const NumberRange& iRange) {
  const JsonValue::Range elements = iValue.Elements();
  if (static_cast<std::size_t>(std::distance(elements.begin(), elements.end())) !=
      oNumbers.size()) {
    iValue.Fail("exactly " + std::to_string(oNumbers.size()) + " numbers must stand here");
  }
  auto number = oNumbers.begin();
  for (const JsonValue element : elements) *number++ = element.Number(iRange);
}

void ReadOptionalNumber(JsonObject& ioObject, std::string_view iKey, const NumberRange& iRange,
                        double& oNumber) {
  if (const auto value = ioObject.Find(iKey)) oNumber = value->Number(iRange);
}

void ReadLook(JsonObject& ioObject, Look& ioLook) {
  if (const auto show = ioObject.Find("show"))
    ioLook.SetShowAttribute(show->Integer(0, kHighestShow));
  if (const auto shape = ioObject.Find("hasShape")) ioLook.SetRepresented(shape->Flag());
}

Activity& NamedObjects::ActivityAt(const JsonValue& iKey) const {
  if (Activity* const activity = document_.FindActivity(ReadText(iKey))) return *activity;
  FailUnknown(iKey, "activity");
}

Product& NamedObjects::ProductAt(const JsonValue& iKey) const {
  if (Product* const product = document_.FindProduct(ReadText(iKey))) return *product;
  FailUnknown(iKey, "product");
}

ZefBaseUnknown* NamedObjects::ObjectAt(const JsonValue& iMember) const {
  const std::string_view kind = iMember.Key();
  if (kind == "activity") return ActivityAt(iMember).Identity();
  if (kind == "product") return ProductAt(iMember).Identity();
  if (kind == "feature") {
    if (ZefBaseUnknown* const feature = document_.FindFeature(ReadText(iMember))) return feature;
    FailUnknown(iMember, "feature");
  }
  if (kind == "assembly") {
    if (auto* const assembly = document_.FindAssembly(ReadText(iMember)))
      return assembly->Identity();
    FailUnknown(iMember, "assembly");
  }
  iMember.Fail(
      "this key is not known; known here are \"activity\", \"product\", \"assembly\", \"feature\"");
}

ZefBaseUnknown* NamedObjects::Referred(const JsonValue& iReference) const {
  const JsonValue::Range members = iReference.Members();
  if (std::distance(members.begin(), members.end()) != 1) {
    iReference.Fail("one key and name must stand here, such as {\"feature\": \"SW-1\"}");
  }
  return ObjectAt(*members.begin());
}

}  // namespace embedded
