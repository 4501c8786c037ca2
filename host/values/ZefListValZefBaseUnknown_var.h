#pragma once

#include <concepts>
#include <cstddef>
#include <type_traits>
#include <vector>

#include "host/component/Handle.h"
#include "host/values/PositionIndex.h"

// List of handles. Positions count from 1. It may hold null handles and one object several times;
// elements are equal when they are the same object. Reading past either end answers a null handle.
// Look-ups take constant time on average once the list is large.
class ZefListValZefBaseUnknown_var {
 public:
  ZefListValZefBaseUnknown_var() = default;
  explicit ZefListValZefBaseUnknown_var(int iCapacity);
  ZefListValZefBaseUnknown_var(const ZefListValZefBaseUnknown_var& iOther);
  ZefListValZefBaseUnknown_var(ZefListValZefBaseUnknown_var&& ioOther) noexcept = default;
  ZefListValZefBaseUnknown_var& operator=(ZefListValZefBaseUnknown_var iOther) noexcept;
  ~ZefListValZefBaseUnknown_var() { RemoveAll(); }

  int Size() const { return static_cast<int>(elements_.size()); }
  ZefBaseUnknown_var operator[](int iPosition) const;
  // Hands the element over; a null handle stays in its place.
  ZefBaseUnknown_var Take(int iPosition);

  void Append(const ZefBaseUnknown_var& iElement) { AppendObject(iElement.Get()); }
  template <std::convertible_to<ZefBaseUnknown*> P>
  requires std::is_pointer_v<P>
  void Append(P iElement) { AppendObject(iElement); }
  void Append(const ZefListValZefBaseUnknown_var& iList);

  // Position of the first equal element at or after `iStart`, 0 when there is none.
  int Locate(const ZefBaseUnknown_var& iElement, int iStart = 1) const;

  // Has what Locate reads of a large list for each of `iElements` fetched from memory.
  void PrepareLocate(const ZefListValZefBaseUnknown_var& iElements) const;

  // The first equal element only; nothing when there is none.
  void RemoveValue(const ZefBaseUnknown_var& iElement);
  void RemovePosition(int iPosition);
  // Every occurrence of every element of `iList`.
  void Remove(const ZefListValZefBaseUnknown_var& iList);
  void RemoveAll();

  // Replaces `oCommon` by the elements of `iFirst`, in their order and as often as they stand
  // there, that `iSecond` holds. `oCommon` may be neither of the two.
  static void Intersection(const ZefListValZefBaseUnknown_var& iFirst,
                           const ZefListValZefBaseUnknown_var& iSecond,
                           ZefListValZefBaseUnknown_var& oCommon);

  friend bool operator==(const ZefListValZefBaseUnknown_var& a,
                         const ZefListValZefBaseUnknown_var& b) {
    return a.elements_ == b.elements_;
  }

 private:
  void AppendObject(ZefBaseUnknown* element);
  int Scan(const ZefBaseUnknown* element, int start) const;
  auto ElementAt() const {
    return [this](int position) { return elements_[static_cast<std::size_t>(position - 1)].Get(); };
  }
  void BuildIndex() const;

  std::vector<ZefBaseUnknown_var> elements_;
  // First position of each object; made once a large list was looked through a few times, kept
  // while elements are only added or taken from the end.
  mutable PositionIndex index_;
  mutable int scans_ = 0;
};
