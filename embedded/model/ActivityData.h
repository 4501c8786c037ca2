#pragma once

#include <string>

namespace embedded {

// What an activity is made from.
struct ActivityData {
  enum class Kind { Physical, Logical };
  // A station is a BIW activity: it has outputs and gathers the inputs of its operations.
  enum class Role { Step, Station, Operation };
  // Welding accepts point fasteners, curve fastening curve fasteners, None any fastener.
  enum class Task { None, Welding, CurveFastening, Both };

  std::string key{};    // unique in the document
  std::string label{};  // the key when empty
  Kind kind = Kind::Physical;
  Role role = Role::Operation;
  Task task = Task::None;

  // Cycle time: what welds takes a fixed time and a time for each spot weld, what makes seams their
  // lengths over a speed.
  double fixedSeconds = 12.0;
  double secondsPerWeld = 3.0;
  double speedMmPerSecond = 15.0;
};

}  // namespace embedded
