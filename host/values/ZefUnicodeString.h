#pragma once

#include <string>
#include <string_view>

// Text in UTF-8. Positions and lengths count characters (code points) from 0.
class ZefUnicodeString {
 public:
  ZefUnicodeString() = default;
  // A null pointer gives the empty text.
  ZefUnicodeString(const char* iText) : text_(iText ? iText : "") {}
  ZefUnicodeString(const std::string& iText) : text_(iText) {}

  ZefUnicodeString& Append(const ZefUnicodeString& iText);
  ZefUnicodeString& Append(const char* iText);

  // 1 when both texts are equal, 0 when they differ.
  int Compare(const ZefUnicodeString& iOther) const { return text_ == iOther.text_ ? 1 : 0; }

  // Position of the first occurrence at or after `iStart`, -1 when there is none. `iMode` 0
  // searches forward, the only mode there is.
  int SearchSubString(const ZefUnicodeString& iText, int iStart = 0, int iMode = 0) const;
  // Clamped to the text.
  ZefUnicodeString SubString(int iStart, int iLength) const;
  int GetLengthInChar() const;

  // Valid until the text changes.
  const char* ConvertToChar() const { return text_.c_str(); }
  const char* CastToCharPtr() const { return text_.c_str(); }
  operator const char*() const { return text_.c_str(); }
  const std::string& Bytes() const { return text_; }

  friend bool operator==(const ZefUnicodeString& a, const ZefUnicodeString& b) {
    return a.text_ == b.text_;
  }
  friend bool operator==(const ZefUnicodeString& a, const char* b) {
    return a.text_ == std::string_view(b ? b : "");
  }
  friend ZefUnicodeString operator+(const ZefUnicodeString& a, const ZefUnicodeString& b) {
    return ZefUnicodeString(a).Append(b);
  }
  friend ZefUnicodeString operator+(const ZefUnicodeString& a, const char* b) {
    return ZefUnicodeString(a).Append(b);
  }
  friend ZefUnicodeString operator+(const char* a, const ZefUnicodeString& b) {
    return ZefUnicodeString(a).Append(b);
  }

 private:
  std::string text_;
};
