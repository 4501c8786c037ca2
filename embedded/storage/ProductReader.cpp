#include <unordered_map>
#include <vector>

#include "embedded/storage/Circle.h"
#include "embedded/storage/DocumentReader.h"
#include "embedded/storage/Fields.h"

namespace embedded {

namespace {

constexpr const char* kRootProduct = "Products";

void ReadColour(const JsonValue& value, int (&colour)[3]) {
  double numbers[3];
  ReadNumbers(value, numbers, {0, kHighestColour});
  int* part = colour;
  for (const JsonValue element : value.Elements()) *part++ = element.Integer(0, kHighestColour);
}

ProductData ReadData(JsonObject& object, std::string key, const std::filesystem::path& folder) {
  ProductData data{.key = std::move(key)};
  data.partNumber = ReadOptionalText(object, "partNumber");
  data.name = ReadOptionalText(object, "name");
  if (const auto colour = object.Find("colour")) ReadColour(*colour, data.colour);
  if (const auto position = object.Find("position")) {
    ReadNumbers(*position, data.position, kMeasures);
  }
  if (const auto box = object.Find("boxMin")) {
    ReadNumbers(*box, data.boxMin, kMeasures);
    ReadNumbers(object.Get("boxMax"), data.boxMax, kMeasures);
  }
  data.geometry = ReadOptionalText(object, "geometry");
  if (const auto mesh = object.Find("mesh")) data.mesh = folder / ReadText(*mesh);
  return data;
}

Product& StandingAbove(const Document& document, const JsonValue& key) {
  if (Product* const product = document.FindProduct(ReadText(key))) return *product;
  key.Fail(Quoted(key.Text()) + " is no product that stands further up; parents and references " +
           "come before the products that name them");
}

void ReadRootProduct(Document& document, const JsonValue& value) {
  JsonObject object(value);
  const JsonValue key = object.Get("key");
  if (key.Text() != kRootProduct) {
    key.Fail("the first product is the root, whose key must be " + Quoted(kRootProduct));
  }
  ReadLook(object, document.RootProduct().Display());
  object.RequireNothingElse();
}

// Gives the place of the reference of an instance.
std::optional<JsonValue> ReadProduct(Document& document, const JsonValue& value,
                                     const std::filesystem::path& folder) {
  JsonObject object(value);
  std::string key =
      ReadNewKey(object, [&](const std::string& name) { return document.FindProduct(name); });
  const auto parentKey = object.Find("parent");
  if (!parentKey) value.Fail("this is a second root; a product needs a \"parent\"");
  Product& parent = StandingAbove(document, *parentKey);
  if (parent.Reference()) {
    parentKey->Fail(Quoted(parentKey->Text()) + " is an instance; its reference " +
                    Quoted(parent.Reference()->Key()) + " must be the parent");
  }
  const auto reference = object.Find("reference");
  Product* const source = reference ? &StandingAbove(document, *reference) : nullptr;
  Product& product =
      document.PlaceProduct(parent, ReadData(object, std::move(key), folder), source);
  ReadLook(object, product.Display());
  object.RequireNothingElse();
  return reference;
}

// An instance shows what is below its reference.
std::vector<std::vector<std::size_t>> ListBelow(const Document& document) {
  std::unordered_map<const Product*, std::size_t> numbers;
  for (const auto& product : document.Products()) numbers.emplace(product.Get(), numbers.size());
  std::vector<std::vector<std::size_t>> below(numbers.size());
  for (const auto& product : document.Products()) {
    const std::size_t number = numbers[product.Get()];
    if (product->Parent()) below[numbers[product->Parent()]].push_back(number);
    if (product->Reference()) below[number].push_back(numbers[product->Reference()]);
  }
  return below;
}

}  // namespace

void ReadProducts(Document& ioDocument, const JsonValue& iList,
                  const std::filesystem::path& iFolder) {
  if (iList.Elements().IsEmpty()) iList.Fail("the list must begin with the root product");
  std::vector<std::optional<JsonValue>> references;
  for (const JsonValue value : iList.Elements()) {
    if (references.empty()) {
      ReadRootProduct(ioDocument, value);
      references.emplace_back();
    } else {
      references.push_back(ReadProduct(ioDocument, value, iFolder));
    }
  }
  for (const std::size_t number : FindCircle(ListBelow(ioDocument))) {
    if (!references[number]) continue;
    references[number]->Fail(
        "this reference closes a circle: the product would stand below itself");
  }
}

void ReadProductRoots(Document& ioDocument, const JsonValue& iList) {
  const NamedObjects names(ioDocument);
  std::vector<Product*> roots;
  for (const JsonValue value : iList.Elements()) roots.push_back(&names.ProductAt(value));
  ioDocument.SetProductRoots(std::move(roots));
}

}  // namespace embedded
