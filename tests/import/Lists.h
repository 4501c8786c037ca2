#pragma once

#include <gtest/gtest.h>
#include <sstream>
#include <string>

#include "embedded/Error.h"
#include "planner/import/DocumentBuilder.h"
#include "planner/import/ListReader.h"
#include "tests/support/SourceFiles.h"

namespace tests {

// The parts of most lists here: two have one name, one name has a separator in it.
inline constexpr char kParts[] =
    "number,name\nP1,Inner panel\nP2,Outer panel\nP3,Bracket\nP4,Bracket\nP5,Beam + tube\n";

inline std::string DataFile(const std::string& name) { return SourceFile("tests/data/" + name); }

inline biwplan::PartsList Parts(const std::string& text, const std::string& order = {}) {
  std::istringstream stream(text);
  return biwplan::ReadPartsList(stream, "parts.csv", order);
}

inline biwplan::WeldList Welds(const std::string& text, const biwplan::PartsList& parts,
                               const biwplan::WeldListOptions& options = {}) {
  std::istringstream stream(text);
  return biwplan::ReadWeldList(stream, "welds.csv", parts.Index(), options);
}

inline biwplan::ProcessList Process(const std::string& text, const biwplan::PartsList& parts) {
  std::istringstream stream(text);
  return biwplan::ReadProcessList(stream, "process.csv", parts);
}

// The InputError of what is run; "no error" without one.
template <class Run>
std::string ErrorOf(const Run& run) {
  try {
    run();
  } catch (const embedded::InputError& error) {
    return error.what();
  }
  return "no error";
}

}  // namespace tests
