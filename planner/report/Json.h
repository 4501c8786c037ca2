#pragma once

#include <nlohmann/json.hpp>

namespace biwplan {

// Answers keep their fields in the order in which they were given.
using Json = nlohmann::ordered_json;

}  // namespace biwplan
