#include "host/component/InterfaceTable.h"

#include <cassert>
#include <cstring>

void InterfaceTable::Add(const _GUID& iIID, const char* iName, std::ptrdiff_t iOffset) {
  if (Find(iIID) >= 0) return;
  assert(entries_.size() < 64 && "an object's switches are the bits of one word");
  entries_.push_back({iIID, iName, iOffset});
}

int InterfaceTable::Find(const char* iName) const {
  for (std::size_t i = 0; iName && i < entries_.size(); ++i) {
    if (std::strcmp(entries_[i].name, iName) == 0) return static_cast<int>(i);
  }
  return -1;
}
