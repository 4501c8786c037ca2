#include "host/values/ZefListValZefBaseUnknown_var.h"

#include <algorithm>

#include "host/values/FetchAhead.h"

namespace {
constexpr int kSmall = 32;
// A list that is looked through so often is worth an index, which costs more than one scan.
constexpr int kScansBeforeIndex = 2;
}  // namespace

ZefListValZefBaseUnknown_var::ZefListValZefBaseUnknown_var(int iCapacity) {
  if (iCapacity > 0) elements_.reserve(static_cast<std::size_t>(iCapacity));
}

ZefBaseUnknown_var ZefListValZefBaseUnknown_var::operator[](int iPosition) const {
  if (iPosition < 1 || iPosition > Size()) return {};
  const auto index = static_cast<std::size_t>(iPosition - 1);
  if (index + kFetchedAhead < elements_.size()) FetchAhead(elements_[index + kFetchedAhead].Get());
  return elements_[index];
}

void ZefListValZefBaseUnknown_var::Append(const ZefBaseUnknown_var& iElement) {
  // The query gives the identity, whichever interface the handle was adopted with.
  elements_.emplace_back(iElement.Get());
  if (!index_.IsBuilt()) return;
  if (!index_.Add(elements_.back().Get(), Size(), ElementAt())) index_.Clear();
}

void ZefListValZefBaseUnknown_var::Append(const ZefListValZefBaseUnknown_var& iList) {
  const int size = iList.Size();
  for (int i = 1; i <= size; ++i) Append(iList[i]);
}

int ZefListValZefBaseUnknown_var::Locate(const ZefBaseUnknown_var& iElement, int iStart) const {
  if (Size() <= kSmall || (!index_.IsBuilt() && scans_++ < kScansBeforeIndex)) {
    return Scan(IdentityOf(iElement.Get()), iStart);
  }
  if (!index_.IsBuilt()) BuildIndex();
  // A handle mostly holds the identity: then the object, which may be far in memory, is not
  // touched.
  int found = index_.Find(iElement.Get(), ElementAt());
  if (found == 0) found = index_.Find(IdentityOf(iElement.Get()), ElementAt());
  if (found == 0 || found >= iStart) return found;
  return Scan(ElementAt()(found), iStart);
}

void ZefListValZefBaseUnknown_var::RemoveValue(const ZefBaseUnknown_var& iElement) {
  RemovePosition(Scan(IdentityOf(iElement.Get()), 1));
}

void ZefListValZefBaseUnknown_var::RemovePosition(int iPosition) {
  if (iPosition < 1 || iPosition > Size()) return;
  if (index_.IsBuilt() && iPosition == Size()) {
    index_.Drop(elements_.back().Get(), iPosition, ElementAt());
  } else {
    index_.Clear();
  }
  elements_.erase(elements_.begin() + (iPosition - 1));
}

void ZefListValZefBaseUnknown_var::Remove(const ZefListValZefBaseUnknown_var& iList) {
  const ZefListValZefBaseUnknown_var removed(iList);
  index_.Clear();
  std::erase_if(elements_, [&](const auto& element) { return removed.Locate(element) != 0; });
}

void ZefListValZefBaseUnknown_var::RemoveAll() {
  index_.Clear();
  elements_.clear();
}

void ZefListValZefBaseUnknown_var::Intersection(const ZefListValZefBaseUnknown_var& iFirst,
                                                const ZefListValZefBaseUnknown_var& iSecond,
                                                ZefListValZefBaseUnknown_var& oCommon) {
  oCommon.RemoveAll();
  for (const auto& element : iFirst.elements_) {
    if (iSecond.Locate(element) != 0) oCommon.Append(element);
  }
}

int ZefListValZefBaseUnknown_var::Scan(const ZefBaseUnknown* element, int start) const {
  for (int i = std::max(start, 1); i <= Size(); ++i) {
    if (elements_[static_cast<std::size_t>(i - 1)].Get() == element) return i;
  }
  return 0;
}

void ZefListValZefBaseUnknown_var::BuildIndex() const {
  index_.Reset(elements_.size());
  for (int i = 1; i <= Size(); ++i) index_.Add(ElementAt()(i), i, ElementAt());
  scans_ = 0;
}
