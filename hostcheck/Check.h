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
std::vector<Check> ReferenceChecks();
std::vector<Check> OwnedListChecks();
std::vector<Check> ExtensionChecks();
std::vector<Check> DocumentChecks();
std::vector<Check> ItemChecks();
std::vector<Check> FlowChecks();
std::vector<Check> TreeChecks();
std::vector<Check> ProductChecks();
std::vector<Check> NotificationChecks();
std::vector<Check> RemovalChecks();
std::vector<Check> ApplicationChecks();
std::vector<Check> DatabaseChecks();
std::vector<Check> VisualisationChecks();
std::vector<Check> RandomChecks();
std::vector<Check> NullChecks();

}  // namespace hostcheck
