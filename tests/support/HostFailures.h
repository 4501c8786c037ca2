#pragma once

#include <exception>
#include <gtest/gtest.h>

#include "host/component/FaultPoint.h"
#include "host/component/Handle.h"

namespace tests {

// Disarms the fault points when its scope ends, however it ends.
class ArmedFaults {
 public:
  ArmedFaults(long nth, bool allAfter) { FaultPoint::Arm(nth, allAfter); }
  ~ArmedFaults() { FaultPoint::Disarm(); }
  ArmedFaults(const ArmedFaults&) = delete;
  ArmedFaults& operator=(const ArmedFaults&) = delete;
};

// Whether a scenario may answer a host that gives null with the null-handle exception.
enum class NullHandle { Legitimate, Fault };

// One run with the n-th host operation failing; true when a failure was met.
template <class Scenario>
bool RunWithFailure(const Scenario& scenario, long nth, bool allAfter,
                    NullHandle nullHandle = NullHandle::Legitimate) {
  const ArmedFaults armed(nth, allAfter);
  try {
    scenario();
  } catch (const ZefNullHandleException&) {
    EXPECT_EQ(nullHandle, NullHandle::Legitimate) << "a null handle was used";
  } catch (const std::exception& error) {
    ADD_FAILURE() << "exception after a host failure: " << error.what();
  }
  return FaultPoint::Struck() > 0;
}

// Runs the scenario with the n-th host operation failing, for n = 1, 2, 3, ... until a run meets no
// failure, once as a single failure and once with every later operation failing too. After each run
// `check` judges the model: counts balanced, objects usable. Answers how many failures were met.
// A scenario must do the same work in each run, so it restores what it changed, or `check` does.
template <class Scenario, class Check>
long ForEachHostFailure(const Scenario& scenario, const Check& check,
                        NullHandle nullHandle = NullHandle::Legitimate) {
  constexpr long kLimit = 100000;
  long met = 0;
  for (const bool allAfter : {false, true}) {
    long nth = 1;
    for (bool struck = true; struck && nth <= kLimit && !testing::Test::HasFatalFailure(); ++nth) {
      SCOPED_TRACE(testing::Message() << "host failure " << nth << (allAfter ? " and later" : ""));
      struck = RunWithFailure(scenario, nth, allAfter, nullHandle);
      met += struck;
      check();
    }
    EXPECT_LE(nth, kLimit) << "the scenario does not come to an end of its host operations";
  }
  return met;
}

}  // namespace tests
