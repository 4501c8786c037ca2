#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "planner/report/Json.h"
#include "planner/report/Printable.h"

namespace biwplan {

// Widths count characters.

// Filled up with blanks; two more behind a text that is as wide or wider.
std::string Padded(std::string_view iText, std::size_t iWidth);
std::size_t Width(std::string_view iText);

// "OP10, OP20, OP30".
std::string Listed(const std::vector<std::string>& iNames);
std::string Listed(const Json& iNames);
// "OP10, OP20 and 4 more", with at most `iMost` names.
std::string ListedBriefly(std::vector<std::string> iNames, std::size_t iMost);
// "  there already: SW-1, SW-2" as a line, with at most twenty names; nothing without names.
std::string ListedLine(const std::string& iTitle, const Json& iNames);
// Names between blanks in indented lines of at most 100 characters.
std::string Wrapped(const Json& iNames, std::size_t iIndent);
// "1 weld", "2 welds".
std::string Counted(std::size_t iCount, std::string_view iNoun);
// With at most three decimals: "812.5", "-0.125", "12".
std::string Number(double iNumber);

// A table with aligned columns; columns of numbers are aligned to the right.
class Table {
 public:
  struct Column {
    std::string title;
    bool isNumber = false;
  };

  explicit Table(std::vector<Column> iColumns) : columns_(std::move(iColumns)) {}
  void Add(const std::vector<std::string>& iCells);
  // Header and rows; nothing without rows.
  std::string Text() const;

 private:
  std::string Line(const std::vector<std::string>& cells,
                   const std::vector<std::size_t>& widths) const;

  std::vector<Column> columns_;
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace biwplan
