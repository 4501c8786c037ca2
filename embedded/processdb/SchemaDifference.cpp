#include "embedded/processdb/SchemaDifference.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace embedded {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

// One blank between words, cut where it is long.
std::string Tidy(std::string_view text) {
  constexpr std::size_t kMost = 100;
  std::string tidy;
  while (tidy.size() < kMost) {
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) return tidy;
    text.remove_prefix(begin);
    const std::string_view word = text.substr(0, text.find_first_of(kBlanks));
    tidy += (tidy.empty() ? "" : " ") + std::string(word);
    text.remove_prefix(word.size());
  }
  return tidy;
}

std::string Quoted(std::string_view text) { return "'" + Tidy(text) + "'"; }

// A statement's definitions of columns and rules, and what follows them.
struct Definitions {
  explicit Definitions(std::string_view sql) {
    const std::size_t open = sql.find('(');
    if (open == std::string_view::npos) return;
    int depth = 0;
    std::size_t begin = open + 1;
    for (std::size_t i = open; i < sql.size(); ++i) {
      if (sql[i] == '(') ++depth;
      if (sql[i] == ')') --depth;
      const bool isEnd = depth == 0;
      if (!isEnd && (sql[i] != ',' || depth > 1)) continue;
      all.push_back(Tidy(sql.substr(begin, i - begin)));
      begin = i + 1;
      if (isEnd) break;
    }
    options = Tidy(sql.substr(begin));
  }

  static bool IsColumn(std::string_view definition) {
    constexpr std::array<std::string_view, 5> kRules = {"PRIMARY", "UNIQUE", "CHECK", "FOREIGN",
                                                        "CONSTRAINT"};
    return std::none_of(kRules.begin(), kRules.end(),
                        [&](std::string_view rule) { return definition.starts_with(rule); });
  }
  static std::string ColumnOf(std::string_view definition) {
    return std::string(definition.substr(0, definition.find(' ')));
  }
  // Null when there is none.
  const std::string* Find(const std::string& column) const {
    const auto found = std::find_if(all.begin(), all.end(), [&](const std::string& definition) {
      return IsColumn(definition) && ColumnOf(definition) == column;
    });
    return found == all.end() ? nullptr : &*found;
  }
  bool Has(const std::string& definition) const {
    return std::find(all.begin(), all.end(), definition) != all.end();
  }

  std::vector<std::string> all;
  std::string options;
};

std::string NameOf(std::string_view table) {
  constexpr std::string_view kBegin = "CREATE TABLE ";
  table.remove_prefix(kBegin.size());
  return std::string(table.substr(0, table.find(' ')));
}

std::string ColumnDifference(const std::string& table, const Definitions& right,
                             const Definitions& found) {
  for (const std::string& definition : right.all) {
    if (!Definitions::IsColumn(definition)) continue;
    const std::string column = Definitions::ColumnOf(definition);
    const std::string* const other = found.Find(column);
    if (!other) return "lacks the column " + Quoted(column) + " in the table " + table;
    if (*other == definition) continue;
    return "has the column " + Quoted(column) + " of the table " + table + " as " + Quoted(*other) +
           " in place of " + Quoted(definition);
  }
  for (const std::string& definition : found.all) {
    const std::string column = Definitions::ColumnOf(definition);
    if (!Definitions::IsColumn(definition) || right.Find(column)) continue;
    return "has a column " + Quoted(column) + " in the table " + table +
           " that does not belong there";
  }
  return {};
}

std::string TableDifference(std::string_view rightSql, std::string_view foundSql) {
  const std::string table = Quoted(NameOf(rightSql));
  const Definitions right(rightSql);
  const Definitions found(foundSql);
  const std::string difference = ColumnDifference(table, right, found);
  if (!difference.empty()) return difference;
  for (const std::string& definition : right.all) {
    if (!found.Has(definition))
      return "lacks the rule " + Quoted(definition) + " in the table " + table;
  }
  for (const std::string& definition : found.all) {
    if (!right.Has(definition)) {
      return "has a further rule " + Quoted(definition) + " in the table " + table;
    }
  }
  if (right.options != found.options) {
    return "has the table " + table + " with " + Quoted(found.options) + " in place of " +
           Quoted(right.options);
  }
  return "has the table " + table + " written in other words or blanks";
}

}  // namespace

std::string DifferenceFrom(std::span<const char* const> iTables,
                           const std::vector<SchemaEntry>& iFound) {
  for (const std::string_view table : iTables) {
    const auto found = std::find_if(iFound.begin(), iFound.end(), [&](const SchemaEntry& entry) {
      return entry.type == "table" && entry.name == NameOf(table);
    });
    if (found == iFound.end()) return "lacks the table " + Quoted(NameOf(table));
    if (found->sql != table) return TableDifference(table, found->sql);
  }
  for (const SchemaEntry& entry : iFound) {
    const bool isKnown = entry.type == "table" &&
                         std::any_of(iTables.begin(), iTables.end(), [&](std::string_view table) {
                           return entry.name == NameOf(table);
                         });
    if (isKnown) continue;
    return std::string("has ") + (entry.type == "index" ? "an " : "a ") + Tidy(entry.type) + " " +
           Quoted(entry.name) + " besides its tables";
  }
  return {};
}

}  // namespace embedded
