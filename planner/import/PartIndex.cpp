#include "planner/import/PartIndex.h"

#include <algorithm>
#include <array>

#include "planner/import/RowFault.h"
#include "planner/import/Values.h"

namespace biwplan {

namespace {

constexpr std::array<std::string_view, 3> kSeparators = {";|,", "+", " \t"};

[[noreturn]] void RefuseUnknown(std::string_view text) {
  throw RowError(FaultKind::MissingPart,
                 "the part " + Quoted(text) +
                     " is not in the parts list; name it by its number or its name there");
}

void AppendOnce(std::vector<std::size_t>& parts, std::size_t part, std::size_t most) {
  if (std::find(parts.begin(), parts.end(), part) != parts.end()) return;
  if (parts.size() == most) {
    const std::string limit = std::to_string(most);
    throw RowError(FaultKind::TooManyParts,
                   "more than " + limit + " parts are named; name at most " + limit);
  }
  parts.push_back(part);
}

}  // namespace

void PartIndex::AddTo(Map& map, std::string_view key, std::size_t part) {
  const auto [entry, isNew] = map.try_emplace(std::string(key), Entry{part, 0});
  ++entry->second.count;
}

void PartIndex::Add(std::string_view iNumber, std::string_view iName, std::size_t iPart) {
  AddTo(byNumber_, iNumber, iPart);
  if (!iName.empty()) AddTo(byName_, iName, iPart);
}

std::optional<std::size_t> PartIndex::Find(std::string_view text) const {
  const bool isNumber = byNumber_.contains(text);
  const Map& map = isNumber ? byNumber_ : byName_;
  const auto found = map.find(text);
  if (found == map.end()) return std::nullopt;
  if (found->second.count == 1) return found->second.part;
  throw RowError(FaultKind::AmbiguousPart, std::to_string(found->second.count) +
                                               " parts have the " +
                                               (isNumber ? "number " : "name ") + Quoted(text) +
                                               "; name the part by a number of its own");
}

bool PartIndex::KnowsAnyOf(const std::vector<std::string_view>& pieces) const {
  return std::any_of(pieces.begin(), pieces.end(), [this](std::string_view piece) {
    return byNumber_.contains(piece) || byName_.contains(piece);
  });
}

void PartIndex::Resolve(std::string_view iField, std::vector<std::size_t>& ioParts, std::size_t iMost) const {
  const std::string_view text = Trimmed(iField);
  if (text.empty()) return;
  if (const std::optional<std::size_t> part = Find(text)) return AppendOnce(ioParts, *part, iMost);
  for (const std::string_view separators : kSeparators) {
    if (text.find_first_of(separators) == std::string_view::npos) continue;
    const std::vector<std::string_view> pieces = Split(text, separators);
    const bool isOneName = separators == kSeparators.back() && !KnowsAnyOf(pieces);
    if (isOneName) break;
    for (const std::string_view piece : pieces) Resolve(piece, ioParts, iMost);
    return;
  }
  RefuseUnknown(text);
}

}  // namespace biwplan
