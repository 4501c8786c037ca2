#pragma once

#include <memory>
#include <utility>

#include "host/values/ZefListValZefBaseUnknown_var.h"

// Walks a list: `for (auto activity : Each<ZefISPPActivity>(list))`. Each element is queried when
// its turn comes; those that are null or do not answer the interface are passed over. The size is
// read again on each step, so the list may grow or shrink meanwhile. No list is an empty one; a
// list that is handed in by value is used up: each element is given back when the walk leaves it.
template <class I>
class Each {
 public:
  explicit Each(const ZefListValZefBaseUnknown_var& iList) : list_(&iList) {}
  explicit Each(const ZefListValZefBaseUnknown_var* iList) : list_(iList) {}
  explicit Each(const std::unique_ptr<ZefListValZefBaseUnknown_var>& iList) : list_(iList.get()) {}
  explicit Each(ZefListValZefBaseUnknown_var&& iList)
      : Each(std::make_unique<ZefListValZefBaseUnknown_var>(std::move(iList))) {}
  explicit Each(std::unique_ptr<ZefListValZefBaseUnknown_var>&& iList)
      : used_(std::move(iList)), list_(used_.get()) {}

  struct End {};
  class Iterator {
   public:
    Iterator(const ZefListValZefBaseUnknown_var* list, ZefListValZefBaseUnknown_var* used)
        : list_(list), used_(used) {
      ++*this;
    }
    const Handle<I>& operator*() const { return element_; }
    Iterator& operator++() {
      element_ = nullptr;
      while (!element_ && list_ && ++position_ <= list_->Size()) {
        element_ = used_ ? used_->Take(position_) : (*list_)[position_];
      }
      return *this;
    }
    bool operator!=(End) const { return static_cast<bool>(element_); }

   private:
    const ZefListValZefBaseUnknown_var* list_;
    ZefListValZefBaseUnknown_var* used_;
    int position_ = 0;
    Handle<I> element_;
  };

  Iterator begin() const { return Iterator(list_, used_.get()); }
  End end() const { return {}; }

 private:
  std::unique_ptr<ZefListValZefBaseUnknown_var> used_;
  const ZefListValZefBaseUnknown_var* list_;
};
