#pragma once

#include <cstddef>
#include <gtest/gtest.h>
#include <initializer_list>
#include <sstream>
#include <string>
#include <vector>

#include "host/component/Handle.h"
#include "host/component/LiveObjects.h"

namespace tests {

// The counts of chosen objects at one moment. It holds no references, so the objects must outlive
// the comparison.
class ReferenceSnapshot {
 public:
  ReferenceSnapshot(std::initializer_list<const ZefBaseUnknown*> objects) {
    for (const ZefBaseUnknown* const object : objects) Add(object);
  }
  void Add(const ZefBaseUnknown* object) {
    if (object) entries_.push_back({object, object->ReferenceCount()});
  }

  // Empty when every count is what it was; else names each object whose count moved.
  std::string Differences() const {
    std::ostringstream text;
    for (std::size_t i = 0; i < entries_.size(); ++i) {
      const auto& [object, before] = entries_[i];
      const unsigned int now = object->ReferenceCount();
      if (now != before)
        text << "object " << i << " (" << object->IsA() << "): " << before << " -> " << now << "\n";
    }
    return text.str();
  }

 private:
  struct Entry {
    const ZefBaseUnknown* object;
    unsigned int count;
  };
  std::vector<Entry> entries_;
};

// Fixture: a test ends with as many objects alive as it began with. What a derived fixture sets up
// in its own members goes before TearDown is judged only if it is given back in its TearDown, which
// then calls this one last.
class ReferenceAudit : public testing::Test {
 protected:
  void TearDown() override {
    EXPECT_EQ(CountLiveObjects() - before_, 0) << "objects are alive that the test did not keep";
  }

 private:
  long before_ = CountLiveObjects();
};

}  // namespace tests
