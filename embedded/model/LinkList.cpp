#include "embedded/model/LinkList.h"

#include <utility>

namespace embedded {

void LinkList::Add(Owned<ItemLink> iLink) {
  iLink->slot = static_cast<int>(entries_.size());
  ZefBaseUnknown* const item = iLink->Item().Get();
  const int selector = iLink->GetSelector();
  entries_.push_back({std::move(iLink), item, selector});
  ++live_;
}

void LinkList::Remove(ItemLink* iLink) {
  const Owned<ItemLink> removed =
      std::exchange(entries_[static_cast<std::size_t>(iLink->slot)], Entry()).link;
  removed->slot = -1;
  removed->Detach();
  --live_;
  if (2 * static_cast<std::size_t>(live_) < entries_.size()) CloseGaps();
}

void LinkList::Clear() {
  const std::vector<Entry> removed = std::exchange(entries_, {});
  live_ = 0;
  for (const Entry& entry : removed) {
    if (entry.link) entry.link->Detach();
  }
}

void LinkList::CloseGaps() {
  std::erase_if(entries_, [](const Entry& entry) { return !entry.link; });
  for (std::size_t i = 0; i < entries_.size(); ++i) entries_[i].link->slot = static_cast<int>(i);
}

}  // namespace embedded
