#include "host/values/ZefListValZefBaseUnknown_var.h"

#include <algorithm>
#include <cstddef>

namespace {
constexpr int kSmall = 32;
}

ZefListValZefBaseUnknown_var::ZefListValZefBaseUnknown_var(int iCapacity) {
  if (iCapacity > 0) elements_.reserve(static_cast<std::size_t>(iCapacity));
}

ZefBaseUnknown_var ZefListValZefBaseUnknown_var::operator[](int iPosition) const {
  if (iPosition < 1 || iPosition > Size()) return {};
  return elements_[static_cast<std::size_t>(iPosition - 1)];
}

void ZefListValZefBaseUnknown_var::Append(const ZefBaseUnknown_var& iElement) {
  // The query gives the identity, whichever interface the handle was adopted with.
  elements_.emplace_back(iElement.Get());
  if (indexed_) index_.try_emplace(elements_.back().Get(), Size());
}

void ZefListValZefBaseUnknown_var::Append(const ZefListValZefBaseUnknown_var& iList) {
  const int size = iList.Size();
  for (int i = 1; i <= size; ++i) Append(iList[i]);
}

int ZefListValZefBaseUnknown_var::Locate(const ZefBaseUnknown_var& iElement, int iStart) const {
  if (Size() <= kSmall) return Scan(IdentityOf(iElement.Get()), iStart);
  if (!indexed_) BuildIndex();
  // A handle mostly holds the identity: then the object, which may be far in memory, is not
  // touched.
  auto found = index_.find(iElement.Get());
  if (found == index_.end()) found = index_.find(IdentityOf(iElement.Get()));
  if (found == index_.end()) return 0;
  return found->second >= iStart ? found->second : Scan(found->first, iStart);
}

void ZefListValZefBaseUnknown_var::RemoveValue(const ZefBaseUnknown_var& iElement) {
  RemovePosition(Scan(IdentityOf(iElement.Get()), 1));
}

void ZefListValZefBaseUnknown_var::RemovePosition(int iPosition) {
  if (iPosition < 1 || iPosition > Size()) return;
  if (indexed_ && iPosition == Size()) {
    const auto entry = index_.find(elements_.back().Get());
    if (entry->second == iPosition) index_.erase(entry);
  } else {
    indexed_ = false;
  }
  elements_.erase(elements_.begin() + (iPosition - 1));
}

void ZefListValZefBaseUnknown_var::Remove(const ZefListValZefBaseUnknown_var& iList) {
  const ZefListValZefBaseUnknown_var removed(iList);
  indexed_ = false;
  std::erase_if(elements_, [&](const auto& element) { return removed.Locate(element) != 0; });
}

void ZefListValZefBaseUnknown_var::RemoveAll() {
  indexed_ = false;
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
  index_.clear();
  index_.reserve(elements_.size());
  for (int i = 1; i <= Size(); ++i) {
    index_.try_emplace(elements_[static_cast<std::size_t>(i - 1)].Get(), i);
  }
  indexed_ = true;
}
