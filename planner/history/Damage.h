#pragma once

#include <stdexcept>

namespace biwplan {

// What a history holds cannot be what was written.
class DamagedHistory : public std::runtime_error {
 public:
  DamagedHistory() : std::runtime_error("is damaged") {}
};

}  // namespace biwplan
