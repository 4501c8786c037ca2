#include "planner/import/PlanSize.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "embedded/Error.h"
#include "embedded/storage/JsonLimits.h"

namespace biwplan {

namespace {

// The names of members, brackets and what separates them, for one object with all that it may have.
constexpr std::size_t kFrame = 250;
constexpr std::size_t kFrameOfWeld = 180;
constexpr std::size_t kValues = 24;
// Quotes, a comma and a blank.
constexpr std::size_t kSeparators = 4;
constexpr std::size_t kNumber = 26;
constexpr std::size_t kFrameOfPoint = 8;
constexpr std::size_t kFrameOfLink = 90;
constexpr std::size_t kValuesOfLink = 8;
constexpr std::size_t kHead = 600;
// Of what stands there without any row.
constexpr std::size_t kOwnKey = 16;

// A text in quotes.
std::size_t Length(std::string_view text) {
  std::size_t length = text.size() + kSeparators;
  for (const char c : text) length += c == '"' || c == '\\' || c < ' ' ? 5 : 0;
  return length;
}

class Sum {
 public:
  Sum(const PartsList& parts, const WeldList& welds, const ProcessList& process)
      : parts_(parts), welds_(welds), process_(process) {}

  const PlanSize& Size() const { return size_; }
  // Calls `use(source, line)` behind each row.
  template <class Use>
  PlanSize Run(const Use& use) {
    Add(kHead, kValues);
    for (const PartRow& part : parts_.parts) {
      Add(part);
      use(parts_.source, part.line);
    }
    for (const std::string& assembly : process_.assemblies)
      Add(kFrame + 2 * Length(assembly), kValues);
    for (const ActivityRow& activity : process_.activities) {
      Add(activity);
      use(process_.source, activity.line);
    }
    for (const ProcessFlow& flow : process_.flows) {
      Add(kFrameOfLink + KeyOf(flow.from) + KeyOf(flow.to), kValuesOfLink);
      use(process_.source, flow.line);
    }
    for (const WeldRow& weld : welds_.welds) {
      Add(weld);
      use(welds_.source, weld.line);
    }
    return size_;
  }

 private:
  void Add(std::size_t bytes, std::size_t values) {
    size_.bytes += bytes;
    size_.values += values;
  }
  void Add(const PartRow& part) {
    constexpr std::size_t kNumbers = 15;
    const std::size_t parent = part.parent ? Length(parts_.parts[*part.parent].key) : kOwnKey;
    const std::size_t reference = part.reference ? Length(parts_.parts[*part.reference].key) : 0;
    Add(kFrame + kNumbers * kNumber + 2 * Length(part.key) + Length(part.number) +
            Length(part.name) + parent + reference + Length(part.geometry) +
            Length(part.mesh.native()),
        kValues + kNumbers);
  }
  void Add(const ActivityRow& activity) {
    const std::size_t key = Length(activity.data.key);
    const std::size_t parent = activity.parent ? KeyOf(*activity.parent) : kOwnKey;
    longestKey_ = std::max(longestKey_, key);
    Add(kFrame + 2 * key + Length(activity.data.label) + parent + 4 * kNumber, kValues);
    for (const auto* const items : {&activity.firstAssigned, &activity.items, &activity.outputs}) {
      for (const std::size_t item : *items) {
        Add(kFrameOfLink + key + ItemKey(item), kValuesOfLink);
      }
    }
  }
  void Add(const WeldRow& weld) {
    constexpr std::size_t kCoordinates = 3;
    Add(kFrameOfWeld + 7 * kNumber + 2 * Length(weld.id) + Length(weld.type) + kFrameOfLink +
            longestKey_,
        kValues + kValuesOfLink + weld.parts.size());
    for (const std::size_t part : weld.parts) Add(Length(parts_.parts[part].key), 0);
    Add(weld.points.size() * (kCoordinates * kNumber + kFrameOfPoint),
        weld.points.size() * (kCoordinates + 1));
  }
  std::size_t KeyOf(std::size_t activity) const {
    return Length(process_.activities[activity].data.key);
  }
  std::size_t ItemKey(std::size_t item) const {
    const std::size_t parts = parts_.parts.size();
    return Length(item < parts ? parts_.parts[item].key : process_.assemblies[item - parts]);
  }

  const PartsList& parts_;
  const WeldList& welds_;
  const ProcessList& process_;
  std::size_t longestKey_ = kOwnKey;
  PlanSize size_;
};

}  // namespace

PlanSize SizeOf(const PartsList& iParts, const WeldList& iWelds, const ProcessList& iProcess) {
  return Sum(iParts, iWelds, iProcess).Run([](const std::string&, long) {});
}

void RequireRoom(const PartsList& iParts, const WeldList& iWelds, const ProcessList& iProcess) {
  const embedded::JsonLimits& limits = embedded::JsonLimits::Current();
  Sum sum(iParts, iWelds, iProcess);
  sum.Run([&](const std::string& source, long line) {
    if (sum.Size().bytes <= limits.bytes && sum.Size().values <= limits.values) return;
    throw embedded::InputError(source + ", line " + std::to_string(line) +
                               ": up to here the plan may take more than " + limits.BytesInWords() +
                               " or " + std::to_string(limits.values) +
                               " values, with all welds assigned; make two plans of the lists");
  });
}

}  // namespace biwplan
