#pragma once

#include <functional>
#include <string>
#include <vector>

namespace hostcheck {

// How work in a process of its own came out.
struct Apart {
  std::vector<std::string> lines{};  // what it said
  std::string fault{};               // what ended it; empty when it returned
  bool inTime = true;
};

using Say = std::function<void(const std::string& iLine)>;

// Runs the work in a copy of this process, which ends with it and is ended after the time. Lines
// arrive also when the work crashes later.
Apart RunApart(const std::function<void(const Say&)>& iWork, double iSecondsAtMost);

}  // namespace hostcheck
