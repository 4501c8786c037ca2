#pragma once

#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <iomanip>
#include <sstream>
#include <vector>

#include "host/component/Interface.h"

namespace tests {

// Place of a virtual operation in the table of its class, as compilers of the common C++ ABI store
// it in a pointer to the member; -1 for an operation that is not virtual. The first operation has
// place 0; a destructor has two.
template <class Member>
int PlaceOf(Member operation) {
  std::uintptr_t words[2];
  static_assert(sizeof operation == sizeof words);
  std::memcpy(words, &operation, sizeof words);
  if (((words[0] | words[1]) & 1u) == 0) return -1;
  return static_cast<int>((words[0] & ~std::uintptr_t{1}) / sizeof(void*));
}

// The operations take consecutive places in the order given.
template <class... Members>
void PinOrder(const char* name, int first, Members... operations) {
  std::vector<int> expected;
  while (expected.size() < sizeof...(operations)) expected.push_back(first++);
  EXPECT_EQ(std::vector<int>{PlaceOf(operations)...}, expected) << name;
}

inline std::string TextOf(const _GUID& id) {
  std::ostringstream text;
  text << std::hex << std::uppercase << std::setfill('0') << std::setw(8) << id.Data1 << '-'
       << std::setw(4) << id.Data2 << '-' << std::setw(4) << id.Data3 << '-';
  for (const unsigned byte : id.Data4) text << std::setw(2) << byte;
  return text.str();
}

// The places that every interface inherits: 17 operations, of which the destructor takes two.
constexpr int kFirstOwnPlace = 18;

template <class I, class... Members>
void PinInterface(const _GUID& exported, const char* name, const char* id, Members... operations) {
  constexpr bool onRoot = std::is_same_v<typename I::BaseInterface, ZefBaseUnknown>;
  PinOrder(name, onRoot ? kFirstOwnPlace : kFirstOwnPlace + 2, operations...);
  EXPECT_STREQ(I::ClassName(), name);
  EXPECT_EQ(TextOf(exported), id) << name;
  EXPECT_TRUE(exported == I::InterfaceId()) << name;
  // An interface is registered when it is first asked for.
  const ZefMetaClass* const meta = I::MetaObject();
  EXPECT_EQ(FindInterface(exported), meta);
  EXPECT_EQ(FindInterface(name), meta);
}

// One call of PinInterface for each line of interfaces.txt; generated.
void PinInterfaces();

}  // namespace tests
