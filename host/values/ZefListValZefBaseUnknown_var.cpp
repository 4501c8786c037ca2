#include "host/values/ZefListValZefBaseUnknown_var.h"

#include <algorithm>
#include <utility>

#include "host/values/FetchAhead.h"

namespace {
constexpr int kSmall = 32;
// A list that is looked through so often is worth an index, which costs more than one scan.
constexpr int kScansBeforeIndex = 2;
}  // namespace

ZefListValZefBaseUnknown_var::ZefListValZefBaseUnknown_var(int iCapacity) {
  if (iCapacity > 0) elements_.reserve(static_cast<std::size_t>(iCapacity));
}

ZefListValZefBaseUnknown_var::ZefListValZefBaseUnknown_var(
    const ZefListValZefBaseUnknown_var& iOther) {
  elements_.reserve(iOther.elements_.size());
  for (std::size_t i = 0; i < iOther.elements_.size(); ++i) {
    FetchCount(iOther.elements_, i + kFetchedAhead);
    elements_.push_back(iOther.elements_[i]);
  }
}

ZefListValZefBaseUnknown_var& ZefListValZefBaseUnknown_var::operator=(
    ZefListValZefBaseUnknown_var iOther) noexcept {
  elements_.swap(iOther.elements_);
  std::swap(index_, iOther.index_);
  std::swap(scans_, iOther.scans_);
  return *this;
}

ZefBaseUnknown_var ZefListValZefBaseUnknown_var::operator[](int iPosition) const {
  if (iPosition < 1 || iPosition > Size()) return {};
  const auto index = static_cast<std::size_t>(iPosition - 1);
  FetchAhead(elements_, index);
  return elements_[index];
}

ZefBaseUnknown_var ZefListValZefBaseUnknown_var::Take(int iPosition) {
  if (iPosition < 1 || iPosition > Size()) return {};
  const auto index = static_cast<std::size_t>(iPosition - 1);
  FetchAhead(elements_, index);
  index_.Clear();
  return std::exchange(elements_[index], nullptr);
}

void ZefListValZefBaseUnknown_var::AppendObject(ZefBaseUnknown* element) {
  // The query gives the identity, whichever interface of the object this is.
  elements_.emplace_back(element);
  if (!index_.IsBuilt()) return;
  index_.Add(elements_.back().Get(), Size(), ElementAt());
  if (index_.IsCrowded()) index_.Clear();
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
  if (found == 0 && IdentityOf(iElement.Get()) != iElement.Get()) {
    found = index_.Find(IdentityOf(iElement.Get()), ElementAt());
  }
  if (found == 0 || found >= iStart) return found;
  return Scan(ElementAt()(found), iStart);
}

void ZefListValZefBaseUnknown_var::PrepareLocate(
    const ZefListValZefBaseUnknown_var& iElements) const {
  if (!index_.IsBuilt()) return;
  for (const auto& element : iElements.elements_) index_.Fetch(element.Get());
}

void ZefListValZefBaseUnknown_var::RemoveValue(const ZefBaseUnknown_var& iElement) {
  RemovePosition(Scan(IdentityOf(iElement.Get()), 1));
}

void ZefListValZefBaseUnknown_var::RemovePosition(int iPosition) {
  if (iPosition < 1 || iPosition > Size()) return;
  if (index_.IsBuilt() && iPosition == Size()) {
    index_.DropLast(elements_.back().Get(), iPosition, ElementAt());
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
  std::vector<ZefBaseUnknown_var> removed;
  removed.swap(elements_);
  // The last first: it is the likeliest to be in the cache still.
  for (std::size_t i = removed.size(); i-- > 0;) {
    FetchCount(removed, i - kFetchedAhead);
    removed[i] = nullptr;
  }
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
