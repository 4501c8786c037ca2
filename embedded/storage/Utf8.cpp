#include "embedded/storage/Utf8.h"

#include <cstddef>
#include <cstdint>

namespace embedded {

namespace {

struct Sequence {
  std::size_t length;
  std::uint32_t smallest;
  std::uint32_t bits;
};

// Length 0 for a byte that begins no sequence.
Sequence Begin(unsigned char byte) {
  if (byte < 0x80) return {1, 0, byte};
  if ((byte & 0xE0) == 0xC0) return {2, 0x80, byte & 0x1Fu};
  if ((byte & 0xF0) == 0xE0) return {3, 0x800, byte & 0x0Fu};
  if ((byte & 0xF8) == 0xF0) return {4, 0x10000, byte & 0x07u};
  return {0, 0, 0};
}

// Bytes of the well-formed character that `text` begins with, 0 when there is none.
std::size_t CharacterLength(std::string_view text) {
  const Sequence sequence = Begin(static_cast<unsigned char>(text[0]));
  if (sequence.length == 0 || sequence.length > text.size()) return 0;
  std::uint32_t code = sequence.bits;
  for (std::size_t i = 1; i < sequence.length; ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if ((byte & 0xC0) != 0x80) return 0;
    code = (code << 6) | (byte & 0x3Fu);
  }
  const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
  if (code < sequence.smallest || code > 0x10FFFF || isSurrogate) return 0;
  return sequence.length;
}

std::size_t LeadingAscii(std::string_view text) {
  std::size_t count = 0;
  while (count < text.size() && static_cast<unsigned char>(text[count]) < 0x80) ++count;
  return count;
}

}  // namespace

bool IsUtf8(std::string_view iText) {
  while (!iText.empty()) {
    const std::size_t plain = LeadingAscii(iText);
    iText.remove_prefix(plain);
    if (iText.empty()) break;
    const std::size_t length = CharacterLength(iText);
    if (length == 0) return false;
    iText.remove_prefix(length);
  }
  return true;
}

}  // namespace embedded
