#include "planner/history/TouchedNames.h"

#include <algorithm>
#include <map>
#include <set>

#include "planner/history/Compression.h"
#include "planner/history/Damage.h"
#include "planner/report/Json.h"

namespace biwplan {

namespace {

// The element of a list on a line, which a comma follows unless it is the last.
std::string_view ElementOn(std::string_view line) {
  const std::size_t begin = line.find_first_not_of(" \t\r\n,");
  const std::size_t end = line.find_last_not_of(" \t\r\n,");
  return begin == std::string_view::npos ? std::string_view() : line.substr(begin, end + 1 - begin);
}

// Adds `step` for each element in the text.
void Count(std::string_view text, int step, std::map<std::string_view, int>& elements) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
    elements[ElementOn(text.substr(0, end))] += step;
    text.remove_prefix(end);
  }
}

class Collector {
 public:
  void Read(std::string_view element) {
    const Json object = Json::parse(element, nullptr, false);
    if (!object.is_object()) return;
    ReadLink(object);
    if (object.contains("item") && object["item"].is_object()) ReadLink(object["item"]);
    if (object.contains("cycleTime")) Take(object, "key", activities_);
    const bool isPlaced = object.contains("position") || object.contains("points");
    if (isPlaced && object.contains("kind")) Take(object, "key", welds_);
  }

  TouchedNames Names() const {
    return {{welds_.begin(), welds_.end()}, {activities_.begin(), activities_.end()}};
  }

 private:
  using Keys = std::set<std::string>;

  static void Take(const Json& object, const char* member, Keys& keys) {
    const auto found = object.find(member);
    if (found != object.end() && found->is_string()) keys.insert(found->get<std::string>());
  }
  void ReadLink(const Json& object) {
    for (const char* const member : {"activity", "from", "to"}) Take(object, member, activities_);
    Take(object, "feature", welds_);
  }

  Keys welds_;
  Keys activities_;
};

}  // namespace

TouchedNames FindTouched(const std::vector<Hunk>& iHunks, std::string_view iOld,
                         std::string_view iNew) {
  std::map<std::string_view, int> elements;
  for (const Hunk& hunk : iHunks) {
    Count(iOld.substr(hunk.oldBegin, hunk.oldEnd - hunk.oldBegin), -1, elements);
    Count(iNew.substr(hunk.newBegin, hunk.newEnd - hunk.newBegin), 1, elements);
  }
  Collector collector;
  for (const auto& [element, difference] : elements) {
    if (difference != 0) collector.Read(element);
  }
  return collector.Names();
}

std::string Pack(const TouchedNames& iNames) {
  const Json lists = {iNames.welds, iNames.activities};
  return Compress(lists.dump(-1, ' ', false, Json::error_handler_t::replace));
}

TouchedNames UnpackNames(std::string_view iBytes) {
  const Json lists = Json::parse(Decompress(iBytes), nullptr, false);
  try {
    return {lists.at(0), lists.at(1)};
  } catch (const Json::exception&) {
    throw DamagedHistory();
  }
}

}  // namespace biwplan
