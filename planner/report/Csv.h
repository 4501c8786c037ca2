#pragma once

#include <string>
#include <vector>

namespace biwplan {

// A line of CSV (RFC 4180) with its end. A field that a spreadsheet would take for a formula gets
// an apostrophe in front, unless it is a number; control characters become blanks.
std::string CsvLine(const std::vector<std::string>& iFields);

}  // namespace biwplan
