#include "host/values/ZefListValZefUnicodeString.h"

#include <algorithm>
#include <cstddef>

ZefUnicodeString ZefListValZefUnicodeString::operator[](int iPosition) const {
  if (iPosition < 1 || iPosition > Size()) return {};
  return texts_[static_cast<std::size_t>(iPosition - 1)];
}

void ZefListValZefUnicodeString::InsertBefore(int iPosition, const ZefUnicodeString& iText) {
  const int before = std::clamp(iPosition, 1, Size() + 1);
  texts_.insert(texts_.begin() + (before - 1), iText);
}

int ZefListValZefUnicodeString::Locate(const ZefUnicodeString& iText, int iStart) const {
  for (int i = std::max(iStart, 1); i <= Size(); ++i) {
    if (texts_[static_cast<std::size_t>(i - 1)] == iText) return i;
  }
  return 0;
}

void ZefListValZefUnicodeString::Intersection(const ZefListValZefUnicodeString& iFirst,
                                              const ZefListValZefUnicodeString& iSecond,
                                              ZefListValZefUnicodeString& oCommon) {
  oCommon.RemoveAll();
  for (const ZefUnicodeString& text : iFirst.texts_) {
    if (iSecond.Locate(text) != 0) oCommon.Append(text);
  }
}
