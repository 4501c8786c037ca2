#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "embedded/storage/Circle.h"
#include "embedded/storage/DocumentReader.h"
#include "embedded/storage/Fields.h"

namespace embedded {

namespace {

void ReadName(const JsonValue& value, MfgAssembly& assembly) {
  const std::string name = ReadText(value);
  if (Succeeded(assembly.SetName(name))) return;
  value.Fail(Quoted(name) + " cannot be the name of an assembly; it must be without \"$\"");
}

// No test for circles: it would take long for each child, and is made for all of them at once.
void AddChildren(const NamedObjects& names, const JsonValue& list, MfgAssembly& assembly) {
  std::unordered_set<const ZefBaseUnknown*> added;
  for (const JsonValue value : list.Elements()) {
    ZefBaseUnknown* const child = names.Referred(value);
    if (!added.insert(child).second) value.Fail("the assembly has this child already");
    assembly.ForceChild(child);
  }
}

std::vector<std::vector<std::size_t>> ListBelow(const Document& document) {
  std::unordered_map<const ZefBaseUnknown*, std::size_t> numbers;
  for (const auto& assembly : document.Assemblies()) {
    numbers.emplace(assembly->Identity(), numbers.size());
  }
  std::vector<std::vector<std::size_t>> below;
  for (const auto& assembly : document.Assemblies()) {
    std::vector<std::size_t>& mine = below.emplace_back();
    for (int i = 1; i <= assembly->OwnChildren().Size(); ++i) {
      const auto child = numbers.find(assembly->OwnChildren()[i].Get());
      if (child != numbers.end()) mine.push_back(child->second);
    }
  }
  return below;
}

}  // namespace

void AddAssemblies(Document& ioDocument, const JsonValue& iList) {
  for (const JsonValue value : iList.Elements()) {
    JsonObject object(value);
    MfgAssembly& assembly = ioDocument.AddAssembly(
        ReadNewKey(object, [&](const std::string& key) { return ioDocument.FindAssembly(key); }));
    if (const auto name = object.Find("name")) ReadName(*name, assembly);
    object.Find("children");
    object.Find("producers");
    ReadLook(object, assembly.Display());
    object.RequireNothingElse();
  }
}

void ReadChildren(Document& ioDocument, const JsonValue& iAssemblies) {
  const NamedObjects names(ioDocument);
  std::vector<JsonValue> places;
  for (const JsonValue value : iAssemblies.Elements()) {
    JsonObject object(value);
    MfgAssembly& assembly = *ioDocument.Assemblies()[places.size()];
    const auto children = object.Find("children");
    if (children) AddChildren(names, *children, assembly);
    places.push_back(children.value_or(value));
  }
  const std::vector<std::size_t> circle = FindCircle(ListBelow(ioDocument));
  if (circle.empty()) return;
  places[circle.back()].Fail("these children close a circle: the assembly would contain itself");
}

}  // namespace embedded
