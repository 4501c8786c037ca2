#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "planner/import/RowFault.h"

namespace biwplan {

// Finds what the rows of a list describe by any of their names.
class NameIndex {
 public:
  // How messages speak of the entries.
  struct Wording {
    std::string_view one;
    std::string_view several;
    std::string_view list;
    FaultKind missing;
  };

  explicit NameIndex(const Wording& iWording) : wording_(iWording) {}

  // `iNames` from the most to the least telling, such as a number and then a name; empty ones are
  // passed over. `iEntry` is the caller's own number for the entry; the queries answer it.
  void Add(const std::vector<std::string_view>& iNames, std::size_t iEntry);

  // RowError for a name that several entries have.
  std::optional<std::size_t> Find(std::string_view iText) const;
  // RowError for a name that is not there, too.
  std::size_t Require(std::string_view iText) const;
  // Appends what a field names to `ioEntries`, each once. The field is one name as a whole, or
  // several between ; | , or, without these, between + or / or blanks. RowError as Require, and
  // past `iMost` entries.
  void Resolve(std::string_view iField, std::vector<std::size_t>& ioEntries,
               std::size_t iMost) const;

 private:
  struct Entry {
    std::size_t number;
    std::size_t count;
  };
  struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
      return std::hash<std::string_view>{}(text);
    }
  };
  using Map = std::unordered_map<std::string, Entry, TextHash, std::equal_to<>>;

  const Entry* Lookup(std::string_view text) const;
  bool KnowsAnyOf(const std::vector<std::string_view>& pieces) const;
  void AppendOnce(std::vector<std::size_t>& entries, std::size_t entry, std::size_t most) const;

  Wording wording_;
  // One for each place in the lists of names.
  std::vector<Map> maps_;
};

}  // namespace biwplan
