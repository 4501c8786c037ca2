#pragma once

#include <span>
#include <string>
#include <vector>

namespace embedded {

// A table, index, view or trigger as a file has it.
struct SchemaEntry {
  std::string type;
  std::string name;
  // The statement that made it.
  std::string sql;
};

// The first difference from the tables, each given by the statement that makes it: in words that
// follow the file's name and say which table and column differ. Empty where there is none.
std::string DifferenceFrom(std::span<const char* const> iTables,
                           const std::vector<SchemaEntry>& iFound);

}  // namespace embedded
