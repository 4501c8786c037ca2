#include <cstddef>
#include <new>
#include <optional>
#include <unordered_map>
#include <vector>

#include "embedded/storage/DocumentReader.h"
#include "embedded/storage/Fields.h"

namespace embedded {

namespace {

// Finds an output from a member such as "output": 1 and the activity that "of" names.
ProductOutput& OutputAt(const NamedObjects& names, const JsonValue& value) {
  JsonObject object(value);
  const JsonValue number = object.Get("output");
  const Activity& activity = names.ActivityAt(object.Get("of"));
  object.RequireNothingElse();
  const auto count = static_cast<int>(activity.Outputs().size());
  if (count == 0) value.Fail("activity " + Quoted(activity.Key()) + " has no outputs");
  return *activity.Outputs()[static_cast<std::size_t>(number.Integer(1, count) - 1)];
}

class OutputReader {
 public:
  explicit OutputReader(Document& document) : names_(document) {}
  void Add(Activity& activity, const JsonValue& list);
  // In the order in which the outputs got the assembly as product.
  void HoldInOrder(const MfgAssembly& assembly, const JsonValue& producers);
  void HoldRest();

 private:
  struct Entry {
    ProductOutput* output;
    ZefBaseUnknown* product;
    JsonValue place;
    bool isHeld = false;
  };

  NamedObjects names_;
  std::vector<Entry> entries_;
  std::unordered_map<const ProductOutput*, std::size_t> numbers_;
  std::unordered_map<const ZefBaseUnknown*, JsonValue> ordered_;
};

void OutputReader::Add(Activity& activity, const JsonValue& list) {
  for (const JsonValue value : list.Elements()) {
    ZefISPPProductIO* added = nullptr;
    if (Failed(activity.AddProductOutput(added, nullptr))) throw std::bad_alloc();
    const auto kept = Adopt(added);
    ProductOutput* const output = activity.Outputs().back().Get();
    ZefBaseUnknown* const product = value.Members().IsEmpty() ? nullptr : names_.Referred(value);
    numbers_.emplace(output, entries_.size());
    entries_.push_back({output, product, value});
  }
}

void OutputReader::HoldInOrder(const MfgAssembly& assembly, const JsonValue& producers) {
  ordered_.emplace(assembly.Identity(), producers);
  for (const JsonValue value : producers.Elements()) {
    Entry& entry = entries_[numbers_.at(&OutputAt(names_, value))];
    if (entry.product != assembly.Identity()) {
      value.Fail("this output does not give " + Quoted(assembly.Key()) + "; name one that does");
    }
    if (entry.isHeld) value.Fail("this output stands in the list already");
    entry.output->Hold(entry.product);
    entry.isHeld = true;
  }
}

void OutputReader::HoldRest() {
  for (Entry& entry : entries_) {
    if (entry.isHeld || !entry.product) continue;
    if (ordered_.contains(entry.product)) {
      entry.place.Fail("the \"producers\" of the assembly must name this output, too");
    }
    entry.output->Hold(entry.product);
  }
}

void ReadLink(const NamedObjects& names, const JsonValue& value) {
  JsonObject object(value);
  Activity& activity = names.ActivityAt(object.Get("activity"));
  ZefBaseUnknown* const item = names.Referred(object.Get("item"));
  const auto selector = object.Find("selector");
  ItemLink& link =
      *activity.Link(item, selector ? selector->Integer(kLowestInteger, kHighestInteger)
                                    : static_cast<int>(ItemLink::Plain));
  ItemLink::Details details;
  details.name = ReadOptionalText(object, "name");
  if (const auto fixed = object.Find("fixed")) {
    details.fixed = fixed->Integer(kLowestInteger, kHighestInteger);
  }
  if (const auto source = object.Find("source")) {
    const JsonValue::Range members = source->Members();
    const bool isOutput = !members.IsEmpty() && (*members.begin()).Key() == "output";
    details.source = isOutput ? OutputAt(names, *source).Identity() : names.Referred(*source);
  }
  link.SetDetails(std::move(details));
  object.RequireNothingElse();
}

}  // namespace

void ReadOutputs(Document& ioDocument, const JsonValue& iActivities, const JsonValue& iAssemblies) {
  OutputReader reader(ioDocument);
  std::size_t number = 0;
  for (const JsonValue value : iActivities.Elements()) {
    Activity& activity = *ioDocument.Activities()[number++];
    if (const auto outputs = JsonObject(value).Find("outputs")) reader.Add(activity, *outputs);
  }
  number = 0;
  for (const JsonValue value : iAssemblies.Elements()) {
    const MfgAssembly& assembly = *ioDocument.Assemblies()[number++];
    if (const auto list = JsonObject(value).Find("producers")) reader.HoldInOrder(assembly, *list);
  }
  reader.HoldRest();
}

void ReadLinks(Document& ioDocument, const JsonValue& iList) {
  const NamedObjects names(ioDocument);
  for (const JsonValue value : iList.Elements()) ReadLink(names, value);
}

}  // namespace embedded
