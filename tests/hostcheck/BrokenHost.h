#pragma once

#include <memory>
#include <string_view>

#include "hostcheck/HostCheck.h"

namespace tests {

// The host of the examples, or the embedded one for what only that has, with one promise broken; an
// empty name breaks none. The breach holds for hosts that are made afterwards.
std::unique_ptr<hostcheck::HostHooks> MakeBrokenHost(std::string_view iBreach);
std::unique_ptr<hostcheck::HostHooks> MakeBrokenEmbeddedHost(std::string_view iBreach);

// Whether the host at hand commits it.
bool Commits(std::string_view iBreach);

}  // namespace tests
