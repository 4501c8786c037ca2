#include "embedded/model/LinkList.h"

#include <utility>

namespace embedded {

void LinkList::Add(Owned<ItemLink> iLink) {
  iLink->slot = static_cast<int>(links_.size());
  links_.push_back(std::move(iLink));
  ++live_;
}

void LinkList::Remove(ItemLink* iLink) {
  const Owned<ItemLink> removed =
      std::exchange(links_[static_cast<std::size_t>(iLink->slot)], Owned<ItemLink>());
  removed->slot = -1;
  removed->Detach();
  --live_;
  if (2 * static_cast<std::size_t>(live_) < links_.size()) CloseGaps();
}

void LinkList::Clear() {
  const std::vector<Owned<ItemLink>> links = std::exchange(links_, {});
  live_ = 0;
  for (const Owned<ItemLink>& link : links) {
    if (link) link->Detach();
  }
}

void LinkList::CloseGaps() {
  std::erase_if(links_, [](const Owned<ItemLink>& link) { return !link; });
  for (std::size_t i = 0; i < links_.size(); ++i) links_[i]->slot = static_cast<int>(i);
}

}  // namespace embedded
