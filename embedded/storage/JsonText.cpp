#include "embedded/storage/JsonText.h"

#include <cstddef>

namespace embedded {

namespace {

constexpr std::size_t kLongestQuote = 60;

bool IsPlain(char c) { return static_cast<unsigned char>(c) >= 0x20 && c != '"' && c != '\\'; }

void AppendEscape(std::string& json, char c) {
  constexpr char kDigits[] = "0123456789abcdef";
  switch (c) {
    case '"':
    case '\\':
      json += {'\\', c};
      return;
    case '\n':
      json += "\\n";
      return;
    case '\t':
      json += "\\t";
      return;
    default:
      json += "\\u00";
      json += {kDigits[c >> 4], kDigits[c & 15]};
  }
}

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

}  // namespace

void AppendJsonText(std::string& ioJson, std::string_view iText) {
  while (!iText.empty()) {
    std::size_t plain = 0;
    while (plain < iText.size() && IsPlain(iText[plain])) ++plain;
    ioJson.append(iText.substr(0, plain));
    if (plain == iText.size()) return;
    AppendEscape(ioJson, iText[plain]);
    iText.remove_prefix(plain + 1);
  }
}

std::string Quoted(std::string_view iText) {
  std::size_t length = iText.size();
  if (length > kLongestQuote) {
    length = kLongestQuote;
    while (length > 0 && IsContinuation(iText[length])) --length;
  }
  std::string quoted = "\"";
  AppendJsonText(quoted, iText.substr(0, length));
  return quoted + (length < iText.size() ? "...\"" : "\"");
}

}  // namespace embedded
