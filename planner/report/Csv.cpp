#include "planner/report/Csv.h"

#include <charconv>
#include <cmath>

#include "planner/report/Printable.h"

namespace biwplan {

namespace {

bool IsNumber(std::string_view text) {
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() && std::isfinite(number);
}

// Blanks and control characters in front do not keep a spreadsheet from it.
bool IsFormula(const std::string& field) {
  if (field.starts_with('\t') || field.starts_with('\r')) return true;
  const std::string text = Printable(field);
  const std::size_t first = text.find_first_not_of(' ');
  const bool isSuspect = first != std::string::npos && text.find_first_of("=+-@", first) == first;
  return isSuspect && !IsNumber(text);
}

std::string Field(const std::string& text) {
  std::string field = (IsFormula(text) ? "'" : "") + Printable(text);
  if (field.find_first_of(",\"") == std::string::npos) return field;
  for (std::size_t i = 0; (i = field.find('"', i)) != std::string::npos; i += 2) {
    field.insert(i, 1, '"');
  }
  return '"' + field + '"';
}

}  // namespace

std::string CsvLine(const std::vector<std::string>& iFields) {
  std::string line;
  for (const std::string& field : iFields) line += Field(field) + ',';
  if (!line.empty()) line.pop_back();
  return line + '\n';
}

}  // namespace biwplan
