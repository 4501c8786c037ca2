#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace biwplan {

// Finds parts by number or, where no number fits, by name.
class PartIndex {
 public:
  // The parts that a weld joins at most.
  static constexpr std::size_t kMostParts = 8;

  // `iPart` is the caller's own number for the part; Resolve answers it.
  void Add(std::string_view iNumber, std::string_view iName, std::size_t iPart);

  // Appends the parts that a field names to `ioParts`, each once. The field is one part as a whole,
  // or several separated by ; | , or, without these, by +, or, without any, by blanks. RowError for
  // a part that is not there, that is not the only one of its name, or past `iMost`.
  void Resolve(std::string_view iField, std::vector<std::size_t>& ioParts,
               std::size_t iMost = kMostParts) const;

 private:
  struct Entry {
    std::size_t part;
    std::size_t count;
  };
  struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
      return std::hash<std::string_view>{}(text);
    }
  };
  using Map = std::unordered_map<std::string, Entry, TextHash, std::equal_to<>>;

  static void AddTo(Map& map, std::string_view key, std::size_t part);
  std::optional<std::size_t> Find(std::string_view text) const;
  bool KnowsAnyOf(const std::vector<std::string_view>& pieces) const;

  Map byNumber_;
  Map byName_;
};

}  // namespace biwplan
