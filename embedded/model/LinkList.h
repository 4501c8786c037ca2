#pragma once

#include <cstddef>
#include <vector>

#include "embedded/model/ItemLink.h"
#include "embedded/model/Owned.h"

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
    for (const Owned<ItemLink>& link : links_) {
      if (link) iFunction(*link);
    }
  }

 private:
  void CloseGaps();

  std::vector<Owned<ItemLink>> links_;
  int live_ = 0;
};

}  // namespace embedded
