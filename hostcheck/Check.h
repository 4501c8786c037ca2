#pragma once

#include <vector>

#include "hostcheck/HostCheck.h"

namespace hostcheck {

class Bench;

struct Check {
  CheckInfo info;
  void (*run)(Bench&);
};

// One function for each source with checks.
std::vector<Check> IdentityChecks();
std::vector<Check> CountingChecks();
std::vector<Check> ExtensionChecks();
std::vector<Check> DocumentChecks();

}  // namespace hostcheck
