#pragma once

#include <fstream>
#include <string>

namespace tests {

// Whether any part of a file of this name lies in the memory of this process.
inline bool IsMapped(const std::string& fileName) {
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);) {
    if (line.find(fileName) != std::string::npos) return true;
  }
  return false;
}

}  // namespace tests
