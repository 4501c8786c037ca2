#pragma once

#include <string>

namespace tests {

// What a text would do to a terminal; empty when it does nothing. Does not share its idea of that
// with the program.
std::string HarmIn(const std::string& text);

}  // namespace tests
