#pragma once

#include <vector>

#include "host/values/ZefUnicodeString.h"

// List of texts. Positions count from 1; reading past either end answers the empty text.
class ZefListValZefUnicodeString {
 public:
  int Size() const { return static_cast<int>(texts_.size()); }
  ZefUnicodeString operator[](int iPosition) const;

  void Append(const ZefUnicodeString& iText) { texts_.push_back(iText); }
  // Position 1 of an empty list inserts; a position past the end appends.
  void InsertBefore(int iPosition, const ZefUnicodeString& iText);
  // Position of the first equal text at or after `iStart`, 0 when there is none.
  int Locate(const ZefUnicodeString& iText, int iStart = 1) const;
  void RemoveAll() { texts_.clear(); }

  // Replaces `oCommon` by the texts of `iFirst`, in their order, that `iSecond` holds.
  static void Intersection(const ZefListValZefUnicodeString& iFirst,
                           const ZefListValZefUnicodeString& iSecond,
                           ZefListValZefUnicodeString& oCommon);

 private:
  std::vector<ZefUnicodeString> texts_;
};
