#pragma once

#include <string>

namespace tests {

// The whole path of a file or folder of the project that is tested.
std::string SourceFile(const std::string& path);

}  // namespace tests
