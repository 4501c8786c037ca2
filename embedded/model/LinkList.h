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
    for (std::size_t i = 0; i < links_.size(); ++i) {
      FetchBeyond(i);
      if (links_[i]) iFunction(*links_[i]);
    }
  }

 private:
  void CloseGaps();
  // A link further on, and before that the item of one.
  void FetchBeyond(std::size_t iIndex) const {
    const std::size_t item = iIndex + kFetchedAhead;
    const std::size_t link = item + kFetchedAhead;
    if (link < links_.size()) FetchAhead(links_[link].Get());
    if (item < links_.size() && links_[item]) FetchAhead(links_[item]->Item().Get());
  }

  std::vector<Owned<ItemLink>> links_;
  int live_ = 0;
};

}  // namespace embedded
