#include "planner/import/NameIndex.h"

#include <algorithm>
#include <array>

#include "planner/import/Values.h"

namespace biwplan {

namespace {

// The first ones always separate names, the others only where a piece is a name.
constexpr std::array<std::string_view, 4> kSeparators = {";|,", "+", "/", " \t"};

}  // namespace

void NameIndex::Add(const std::vector<std::string_view>& iNames, std::size_t iEntry) {
  if (maps_.size() < iNames.size()) maps_.resize(iNames.size());
  for (std::size_t rank = 0; rank < iNames.size(); ++rank) {
    if (iNames[rank].empty()) continue;
    const auto [entry, isNew] =
        maps_[rank].try_emplace(std::string(iNames[rank]), Entry{iEntry, 0});
    ++entry->second.count;
  }
}

const NameIndex::Entry* NameIndex::Lookup(std::string_view text) const {
  for (const Map& map : maps_) {
    const auto found = map.find(text);
    if (found != map.end()) return &found->second;
  }
  return nullptr;
}

std::optional<std::size_t> NameIndex::Find(std::string_view iText) const {
  const Entry* const entry = Lookup(iText);
  if (!entry) return std::nullopt;
  if (entry->count == 1) return entry->number;
  throw RowError(FaultKind::AmbiguousName,
                 std::to_string(entry->count) + ' ' + std::string(wording_.several) +
                     " are called " + Quoted(iText) + "; use an identifier that only one has");
}

std::size_t NameIndex::Require(std::string_view iText) const {
  if (const std::optional<std::size_t> entry = Find(iText)) return *entry;
  const std::string list(wording_.list);
  throw RowError(wording_.missing, "the " + std::string(wording_.one) + ' ' + Quoted(iText) +
                                       " is not in the " + list +
                                       "; use an identifier or a name from there");
}

bool NameIndex::KnowsAnyOf(const std::vector<std::string_view>& pieces) const {
  return std::any_of(pieces.begin(), pieces.end(),
                     [this](std::string_view piece) { return Lookup(piece) != nullptr; });
}

void NameIndex::AppendOnce(std::vector<std::size_t>& entries, std::size_t entry,
                           std::size_t most) const {
  if (std::find(entries.begin(), entries.end(), entry) != entries.end()) return;
  if (entries.size() == most) {
    const std::string limit = std::to_string(most);
    throw RowError(FaultKind::TooManyNames, "more than " + limit + ' ' +
                                                std::string(wording_.several) +
                                                " are named; name at most " + limit);
  }
  entries.push_back(entry);
}

void NameIndex::Resolve(std::string_view iField, std::vector<std::size_t>& ioEntries,
                        std::size_t iMost) const {
  const std::string_view text = Trimmed(iField);
  if (text.empty()) return;
  if (const auto entry = Find(text)) return AppendOnce(ioEntries, *entry, iMost);
  for (const std::string_view separators : kSeparators) {
    if (text.find_first_of(separators) == std::string_view::npos) continue;
    const std::vector<std::string_view> pieces = Split(text, separators);
    if (separators != kSeparators.front() && !KnowsAnyOf(pieces)) continue;
    for (const std::string_view piece : pieces) Resolve(piece, ioEntries, iMost);
    return;
  }
  ioEntries.push_back(Require(text));
}

}  // namespace biwplan
