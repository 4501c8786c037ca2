#include "planner/import/Columns.h"

#include <algorithm>
#include <array>

#include "embedded/Error.h"
#include "planner/import/RowFault.h"
#include "planner/import/Values.h"

namespace biwplan {

namespace {

constexpr std::array<std::string_view, 19> kOtherUnits = {
    "m",  "cm",  "um",      "in",  "inch",  "inches", "ft", "rad",     "radian", "radians",
    "ms", "cms", "minutes", "min", "mpers", "mmin",   "h",  "mpermin", "mmmin"};
constexpr std::array<std::string_view, 3> kUnitSuffixes = {"mm", "degrees", "deg"};

// "x [mm]", "X_mm" and "x" are one name; "x [inch]" is another.
std::string HeaderName(std::string_view text) {
  const std::size_t bracket = text.find_first_of("[(");
  const std::string unit =
      bracket == std::string_view::npos ? std::string() : Folded(text.substr(bracket));
  if (std::find(kOtherUnits.begin(), kOtherUnits.end(), unit) != kOtherUnits.end()) {
    return Folded(text);
  }
  std::string name = Folded(text.substr(0, bracket));
  for (const std::string_view suffix : kUnitSuffixes) {
    if (name.size() > suffix.size() && name.ends_with(suffix)) {
      name.resize(name.size() - suffix.size());
      break;
    }
  }
  return name;
}

class ColumnFinder {
 public:
  ColumnFinder(const std::string& place, const std::vector<std::string_view>& header)
      : place_(place), header_(header), isUsed_(header.size()) {
    names_.reserve(header.size());
    for (const std::string_view text : header) names_.push_back(HeaderName(text));
  }

  std::optional<std::size_t> Take(const ColumnSpec& wanted) {
    for (const std::string_view name : wanted.names) {
      const auto found = std::find(names_.begin(), names_.end(), name);
      if (found == names_.end()) continue;
      const auto position = static_cast<std::size_t>(found - names_.begin());
      if (isUsed_[position]) continue;
      RefuseSecond(wanted, position);
      isUsed_[position] = true;
      return position;
    }
    return std::nullopt;
  }

  std::vector<std::string> Ignored() const {
    std::vector<std::string> ignored;
    for (std::size_t i = 0; i < header_.size(); ++i) {
      if (!isUsed_[i] && !names_[i].empty()) ignored.push_back(Quoted(header_[i]));
    }
    return ignored;
  }

 private:
  void RefuseSecond(const ColumnSpec& wanted, std::size_t position) const {
    const auto second = std::find(names_.begin() + static_cast<std::ptrdiff_t>(position) + 1,
                                  names_.end(), names_[position]);
    if (second == names_.end()) return;
    throw embedded::InputError(place_ + ": two columns are headed " + Quoted(header_[position]) +
                               "; give " + std::string(wanted.field) + " in one column");
  }

  const std::string& place_;
  const std::vector<std::string_view>& header_;
  std::vector<std::string> names_;
  std::vector<bool> isUsed_;
};

void AppendWord(std::string& list, std::string_view word) {
  if (!list.empty()) list += ", ";
  list += word;
}

void RefuseMissing(const std::string& place, const ColumnMap& map,
                   const std::vector<ColumnSpec>& specs) {
  std::string missing;
  std::string known;
  for (std::size_t i = 0; i < specs.size(); ++i) {
    AppendWord(known, specs[i].field);
    if (specs[i].isRequired && !map.positions[i]) AppendWord(missing, specs[i].field);
  }
  if (missing.empty()) return;
  throw embedded::InputError(place + ": no column is headed " + missing +
                             "; the first row names the columns (" + known +
                             "), unless their order is declared");
}

}  // namespace

ColumnMap MapColumns(const std::string& iPlace, const std::vector<std::string_view>& iHeader,
                     const std::vector<ColumnSpec>& iSpecs) {
  ColumnFinder finder(iPlace, iHeader);
  ColumnMap map;
  const auto last = std::find_if(iHeader.rbegin(), iHeader.rend(),
                                 [](std::string_view name) { return !name.empty(); });
  map.width = static_cast<std::size_t>(iHeader.rend() - last);
  for (const ColumnSpec& wanted : iSpecs) map.positions.push_back(finder.Take(wanted));
  RefuseMissing(iPlace, map, iSpecs);
  map.ignored = finder.Ignored();
  return map;
}

}  // namespace biwplan
