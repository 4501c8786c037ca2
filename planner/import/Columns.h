#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace biwplan {

// A column that a list may have.
struct ColumnSpec {
  // As messages name it.
  std::string_view field;
  // The header names for it, folded (see Values.h); the first one that a list has counts.
  std::vector<std::string_view> names;
  bool isRequired = false;
  // As the last column of a list it takes all further fields of a row, too.
  bool takesRest = false;
};

// Where a list has its columns.
struct ColumnMap {
  // For each ColumnSpec its position in a row, from 0.
  std::vector<std::optional<std::size_t>> positions;
  // Fields in the header, up to the last one with a name.
  std::size_t width = 0;
  // Header names that no column goes by.
  std::vector<std::string> ignored;
};

// InputError that begins with `iPlace` when a required column is missing or two have one name.
// Upper and lower case, blanks, underscores and a unit of mm or degrees do not matter.
ColumnMap MapColumns(const std::string& iPlace, const std::vector<std::string_view>& iHeader,
                     const std::vector<ColumnSpec>& iSpecs);

}  // namespace biwplan
