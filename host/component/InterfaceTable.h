#pragma once

#include <cstddef>
#include <vector>

#include "host/component/Identifier.h"

// The interfaces of one class with their places in its objects, made once per class.
class InterfaceTable {
 public:
  // An interface that is there already is not entered again.
  void Add(const _GUID& iIID, const char* iName, std::ptrdiff_t iOffset);

  // Positions from 0; -1 when the class does not have the interface.
  int Find(const _GUID& iIID) const {
    const int size = static_cast<int>(entries_.size());
    for (int i = 0; i < size; ++i) {
      if (entries_[static_cast<std::size_t>(i)].id == iIID) return i;
    }
    return -1;
  }
  int Find(const char* iName) const;
  std::ptrdiff_t Offset(int iPosition) const {
    return entries_[static_cast<std::size_t>(iPosition)].offset;
  }

 private:
  struct Entry {
    _GUID id;
    const char* name;
    std::ptrdiff_t offset;
  };
  std::vector<Entry> entries_;
};
