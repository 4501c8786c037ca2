#include "embedded/storage/Utf8.h"

namespace embedded {

namespace {

struct Sequence {
  std::size_t length;
  char32_t smallest;
  char32_t bits;
};

// Length 0 for a byte that begins no sequence.
Sequence Begin(unsigned char byte) {
  if (byte < 0x80) return {1, 0, byte};
  if ((byte & 0xE0) == 0xC0) return {2, 0x80, byte & 0x1Fu};
  if ((byte & 0xF0) == 0xE0) return {3, 0x800, byte & 0x0Fu};
  if ((byte & 0xF8) == 0xF0) return {4, 0x10000, byte & 0x07u};
  return {0, 0, 0};
}

std::size_t LeadingAscii(std::string_view text) {
  std::size_t count = 0;
  while (count < text.size() && static_cast<unsigned char>(text[count]) < 0x80) ++count;
  return count;
}

}  // namespace

Utf8Character FirstCharacter(std::string_view iText) {
  const Sequence sequence = Begin(static_cast<unsigned char>(iText[0]));
  if (sequence.length == 0 || sequence.length > iText.size()) return {0, 0};
  char32_t code = sequence.bits;
  for (std::size_t i = 1; i < sequence.length; ++i) {
    const auto byte = static_cast<unsigned char>(iText[i]);
    if ((byte & 0xC0) != 0x80) return {0, 0};
    code = (code << 6) | (byte & 0x3Fu);
  }
  const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
  if (code < sequence.smallest || code > 0x10FFFF || isSurrogate) return {0, 0};
  return {code, sequence.length};
}

bool IsUtf8(std::string_view iText) {
  while (!iText.empty()) {
    const std::size_t plain = LeadingAscii(iText);
    iText.remove_prefix(plain);
    if (iText.empty()) break;
    const std::size_t length = FirstCharacter(iText).length;
    if (length == 0) return false;
    iText.remove_prefix(length);
  }
  return true;
}

}  // namespace embedded
