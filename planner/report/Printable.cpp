#include "planner/report/Printable.h"

#include <algorithm>
#include <cstdio>

#include "embedded/storage/Utf8.h"

namespace biwplan {

namespace {

using embedded::FirstCharacter;
using embedded::Utf8Character;

// Ranges of characters that control a terminal, end lines, or turn the direction of reading.
constexpr struct {
  char32_t first;
  char32_t last;
} kControls[] = {{0, 0x1F},        {0x7F, 0x9F},     {0x61C, 0x61C},  {0x200E, 0x200F},
                 {0x2028, 0x202E}, {0x2066, 0x206F}, {0xFFF9, 0xFFFB}};

bool IsControl(char32_t code) {
  return std::any_of(std::begin(kControls), std::end(kControls), [code](const auto& range) {
    return range.first <= code && code <= range.last;
  });
}

bool IsPlain(const Utf8Character& character, bool keepsLines) {
  if (keepsLines && character.code == '\n') return true;
  return character.length > 0 && !IsControl(character.code);
}

std::size_t PlainBytes(std::string_view text, bool keepsLines) {
  std::size_t count = 0;
  while (count < text.size()) {
    const bool isPrintableAscii = text[count] >= 0x20 && text[count] < 0x7F;
    const Utf8Character character =
        isPrintableAscii ? Utf8Character{' ', 1} : FirstCharacter(text.substr(count));
    if (!IsPlain(character, keepsLines)) break;
    count += character.length;
  }
  return count;
}

// `write` says what stands in the place of a character that is not plain.
template <class Write>
std::string Rewritten(std::string_view text, bool keepsLines, const Write& write) {
  std::string rewritten;
  rewritten.reserve(text.size());
  while (true) {
    const std::size_t plain = PlainBytes(text, keepsLines);
    rewritten += text.substr(0, plain);
    text.remove_prefix(plain);
    if (text.empty()) return rewritten;
    const Utf8Character character = FirstCharacter(text);
    rewritten += write(character);
    text.remove_prefix(std::max<std::size_t>(character.length, 1));
  }
}

std::string Blanked(const Utf8Character& character) {
  return character.length > 0 ? " " : "\xEF\xBF\xBD";
}

std::string Escaped(const Utf8Character& character) {
  char escape[sizeof "\\u0000"] = {};
  std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(character.code) & 0xFFFFu);
  return escape;
}

}  // namespace

bool IsPrintable(std::string_view iLines) { return PlainBytes(iLines, true) == iLines.size(); }

std::string Printable(std::string_view iText) { return Rewritten(iText, false, Blanked); }

std::string PrintableLines(std::string_view iText) { return Rewritten(iText, true, Blanked); }

std::string PrintableJson(std::string iJson) {
  if (IsPrintable(iJson)) return iJson;
  return Rewritten(iJson, true, Escaped);
}

std::size_t CutOffBytes(std::string_view iText) {
  constexpr std::size_t kMostBytes = 4;
  for (std::size_t count = 1; count < kMostBytes && count <= iText.size(); ++count) {
    const auto byte = static_cast<unsigned char>(iText[iText.size() - count]);
    if (byte < 0x80) return 0;
    if (byte < 0xC0) continue;
    const std::size_t wanted = byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
    return count < wanted ? count : 0;
  }
  return 0;
}

}  // namespace biwplan
