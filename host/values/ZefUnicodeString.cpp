#include "host/values/ZefUnicodeString.h"

#include <algorithm>
#include <cstddef>

namespace {

bool StartsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xc0u) != 0x80u; }

int CountCharacters(std::string_view text) {
  return static_cast<int>(std::count_if(text.begin(), text.end(), StartsCharacter));
}

// Byte at which the character at `position` starts, or the end of the text.
std::size_t ByteOf(std::string_view text, int position) {
  for (std::size_t byte = 0; byte < text.size(); ++byte) {
    if (StartsCharacter(text[byte]) && position-- <= 0) return byte;
  }
  return text.size();
}

}  // namespace

ZefUnicodeString& ZefUnicodeString::Append(const ZefUnicodeString& iText) {
  text_ += iText.text_;
  return *this;
}

ZefUnicodeString& ZefUnicodeString::Append(const char* iText) {
  if (iText) text_ += iText;
  return *this;
}

int ZefUnicodeString::SearchSubString(const ZefUnicodeString& iText, int iStart, int) const {
  const std::size_t found = text_.find(iText.text_, ByteOf(text_, iStart));
  if (found == std::string::npos) return -1;
  return CountCharacters(std::string_view(text_).substr(0, found));
}

ZefUnicodeString ZefUnicodeString::SubString(int iStart, int iLength) const {
  if (iLength <= 0) return {};
  const std::size_t begin = ByteOf(text_, iStart);
  const std::string_view rest = std::string_view(text_).substr(begin);
  return std::string(rest.substr(0, ByteOf(rest, iLength)));
}

int ZefUnicodeString::GetLengthInChar() const { return CountCharacters(text_); }
