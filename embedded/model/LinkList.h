#pragma once

#include <cstddef>
#include <vector>

#include "embedded/model/ItemLink.h"
#include "embedded/model/Owned.h"
#include "host/values/FetchAhead.h"

namespace embedded {

// The item links of one activity in the order in which they were made. Adding and removing take
// constant time on average: a removed link leaves a gap, and gaps are closed once they are half of
// the places.
class LinkList {
 public:
  void Add(Owned<ItemLink> iLink);
  // Takes the link out and detaches it.
  void Remove(ItemLink* iLink);
  void Clear();
  int Size() const { return live_; }

  template <class Function>
  void ForEach(const Function& iFunction) const {
    for (std::size_t i = 0; i < entries_.size(); ++i) {
      if (i + kFetchedAhead < entries_.size()) FetchAhead(entries_[i + kFetchedAhead].link.Get());
      if (entries_[i].link) iFunction(*entries_[i].link);
    }
  }
  // The items of the links with their selectors, without a look at the links themselves.
  template <class Function>
  void ForEachItem(const Function& iFunction) const {
    for (std::size_t i = 0; i < entries_.size(); ++i) {
      if (i + kFetchedAhead < entries_.size()) FetchAhead(entries_[i + kFetchedAhead].item);
      if (entries_[i].link) iFunction(entries_[i].item, entries_[i].selector);
    }
  }

 private:
  struct Entry {
    Owned<ItemLink> link;
    ZefBaseUnknown* item = nullptr;  // which the link holds
    int selector = 0;
  };
  void CloseGaps();

  std::vector<Entry> entries_;
  int live_ = 0;
};

}  // namespace embedded
