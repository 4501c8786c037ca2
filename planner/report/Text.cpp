#include "planner/report/Text.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "host/component/Interruption.h"

namespace biwplan {

namespace {

constexpr std::size_t kLineWidth = 100;

bool ContinuesCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

}  // namespace

std::size_t Width(std::string_view iText) {
  return static_cast<std::size_t>(
      std::count_if(iText.begin(), iText.end(), [](char c) { return !ContinuesCharacter(c); }));
}

std::string Padded(std::string_view iText, std::size_t iWidth) {
  const std::size_t width = Width(iText);
  return std::string(iText) + std::string(width < iWidth ? iWidth - width : 2, ' ');
}

std::string Listed(const std::vector<std::string>& iNames) {
  std::string text;
  for (const std::string& name : iNames) text += (text.empty() ? "" : ", ") + Printable(name);
  return text;
}

std::string Listed(const Json& iNames) { return Listed(iNames.get<std::vector<std::string>>()); }

std::string ListedBriefly(std::vector<std::string> iNames, std::size_t iMost) {
  const std::size_t rest = iNames.size() > iMost ? iNames.size() - iMost : 0;
  iNames.resize(iNames.size() - rest);
  return Listed(iNames) + (rest == 0 ? "" : " and " + std::to_string(rest) + " more");
}

std::string ListedLine(const std::string& iTitle, const Json& iNames) {
  constexpr std::size_t kMost = 20;
  if (iNames.empty()) return {};
  return "  " + iTitle + ": " + ListedBriefly(iNames, kMost) + "\n";
}

std::string Wrapped(const Json& iNames, std::size_t iIndent) {
  std::string text;
  std::size_t column = 0;
  for (const Json& entry : iNames) {
    const std::string name = Printable(entry.get_ref<const std::string&>());
    const std::size_t width = Width(name);
    if (column == 0 || column + 1 + width > kLineWidth) {
      text += (text.empty() ? "" : "\n") + std::string(iIndent, ' ');
      column = iIndent;
    } else {
      text += ' ';
      ++column;
    }
    text += name;
    column += width;
  }
  return text.empty() ? text : text + '\n';
}

std::string Counted(std::size_t iCount, std::string_view iNoun) {
  std::string text = std::to_string(iCount) + " " + std::string(iNoun);
  if (iCount == 1) return text;
  if (!text.ends_with('y')) return text + 's';
  text.pop_back();
  return text + "ies";
}

std::string Number(double iNumber) {
  std::array<char, 400> digits{};
  const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), iNumber,
                                          std::chars_format::fixed, 3);
  if (error != std::errc()) return "?";
  std::string text(digits.data(), end);
  if (text.find('.') == std::string::npos) return text;
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text == "-0" ? "0" : text;
}

void Table::Add(const std::vector<std::string>& iCells) {
  Interruption::Check();
  std::vector<std::string>& row = rows_.emplace_back();
  for (const std::string& cell : iCells) row.push_back(Printable(cell));
}

std::string Table::Line(const std::vector<std::string>& cells,
                        const std::vector<std::size_t>& widths) const {
  std::string line;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const std::string& cell = cells[i];
    const std::string fill(widths[i] - Width(cell), ' ');
    line += (i == 0 ? "" : "  ") + (columns_[i].isNumber ? fill + cell : cell + fill);
  }
  line.erase(line.find_last_not_of(' ') + 1);
  return line + '\n';
}

std::string Table::Text() const {
  if (rows_.empty()) return {};
  std::vector<std::string> titles;
  for (const Column& column : columns_) titles.push_back(column.title);
  std::vector<std::size_t> widths;
  for (const std::string& title : titles) widths.push_back(Width(title));
  for (const std::vector<std::string>& row : rows_) {
    for (std::size_t i = 0; i < widths.size(); ++i) widths[i] = std::max(widths[i], Width(row[i]));
  }
  std::string text = Line(titles, widths);
  for (const std::vector<std::string>& row : rows_) text += Line(row, widths);
  return text;
}

}  // namespace biwplan
