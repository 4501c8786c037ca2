#include "planner/import/Values.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "planner/import/RowFault.h"

namespace biwplan {

namespace {

constexpr std::string_view kBlanks = " \t";
// A kilometre in mm: nothing in a plant measures more, and sums of such numbers stay exact enough.
constexpr double kMostMagnitude = 1e6;

std::string Named(std::string_view field, std::string_view text) {
  return std::string(field) + " is " + (text.empty() ? "empty" : Quoted(text));
}

bool HasDecimalComma(std::string_view text) {
  const std::size_t comma = text.find(',');
  if (comma == std::string_view::npos || text.find(',', comma + 1) != std::string_view::npos) {
    return false;
  }
  return text.find_first_not_of("+-0123456789,eE") == std::string_view::npos;
}

[[noreturn]] void RefuseNumber(std::string_view field, std::string_view text) {
  if (HasDecimalComma(text)) {
    std::string right(text);
    std::replace(right.begin(), right.end(), ',', '.');
    throw RowError(FaultKind::BadNumber, Named(field, text) +
                                             ", with a decimal comma; numbers take a decimal " +
                                             "point, here " + right);
  }
  throw RowError(FaultKind::BadNumber, Named(field, text) + "; it must be a number such as 812.5");
}

std::string_view WithoutPlus(std::string_view text) {
  const bool hasPlus = text.size() > 1 && text[0] == '+' && text[1] != '-';
  return hasPlus ? text.substr(1) : text;
}

}  // namespace

double ParseNumber(std::string_view iField, std::string_view iText) {
  const std::string_view digits = WithoutPlus(iText);
  const char* const end = digits.data() + digits.size();
  double number = 0;
  const auto [stop, error] = std::from_chars(digits.data(), end, number);
  if (error == std::errc::invalid_argument || stop != end) RefuseNumber(iField, iText);
  if (error == std::errc::result_out_of_range || !std::isfinite(number)) {
    throw RowError(FaultKind::NotFinite,
                   Named(iField, iText) + "; it must be a finite number within double precision");
  }
  if (std::abs(number) > kMostMagnitude) {
    throw RowError(FaultKind::BadNumber,
                   Named(iField, iText) + "; it must lie between -1000000 and 1000000");
  }
  return number;
}

std::string_view CheckName(std::string_view iField, std::string_view iText) {
  const auto isControl = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; };
  if (!iText.empty() && iText.size() <= kMostNameBytes &&
      std::none_of(iText.begin(), iText.end(), isControl)) {
    return iText;
  }
  throw RowError(FaultKind::BadText, Named(iField, iText) + "; it must be one line of 1 to " +
                                         std::to_string(kMostNameBytes) + " bytes");
}

std::string_view CheckTitle(std::string_view iField, std::string_view iText) {
  if (CheckName(iField, iText).find('$') == std::string_view::npos) return iText;
  throw RowError(
      FaultKind::BadText,
      Named(iField, iText) + ", with a $, which separates names in warnings; leave " + "it out");
}

std::string Folded(std::string_view iText) {
  std::string folded;
  for (const char c : iText) {
    if (c >= 'A' && c <= 'Z') folded += static_cast<char>(c - 'A' + 'a');
    if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) folded += c;
  }
  return folded;
}

std::string_view Trimmed(std::string_view iText) {
  const std::size_t begin = iText.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) return {};
  return iText.substr(begin, iText.find_last_not_of(kBlanks) - begin + 1);
}

std::vector<std::string_view> Split(std::string_view iText, std::string_view iSeparators) {
  std::vector<std::string_view> pieces;
  while (!iText.empty()) {
    const std::size_t length = std::min(iText.find_first_of(iSeparators), iText.size());
    const std::string_view piece = Trimmed(iText.substr(0, length));
    if (!piece.empty()) pieces.push_back(piece);
    iText.remove_prefix(std::min(length + 1, iText.size()));
  }
  return pieces;
}

}  // namespace biwplan
