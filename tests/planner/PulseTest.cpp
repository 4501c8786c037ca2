#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

#include "planner/report/Pulse.h"

namespace tests {

namespace {

using biwplan::Pulse;
using std::chrono::milliseconds;
using testing::ContainsRegex;
using testing::EndsWith;
using testing::IsEmpty;

void WorkFor(milliseconds time) {
  const auto end = std::chrono::steady_clock::now() + time;
  while (std::chrono::steady_clock::now() < end) continue;
}

// What came to the terminal.
template <class Work>
std::string Drawn(milliseconds patience, const Work& work) {
  int ends[2] = {};
  EXPECT_EQ(::pipe(ends), 0);
  {
    const Pulse pulse(ends[1], "check", patience);
    work();
  }
  ::close(ends[1]);
  std::string drawn(1 << 16, '\0');
  drawn.resize(static_cast<std::size_t>(::read(ends[0], drawn.data(), drawn.size())));
  ::close(ends[0]);
  return drawn;
}

TEST(PulseTest, DrawsABarWhileWorkTakesLongAndLeavesNothing) {
  const std::string drawn = Drawn(milliseconds(200), [] { WorkFor(milliseconds(1500)); });
  EXPECT_THAT(drawn, ContainsRegex("\rcheck \\[ +######? *\\] [01] s"));
  EXPECT_THAT(drawn, ContainsRegex("\\] [12] s"));
  EXPECT_THAT(drawn, EndsWith("\r\x1b[K"));
}

TEST(PulseTest, SaysNothingOfShortWorkAndGivesWayToWhatIsSaid) {
  EXPECT_THAT(Drawn(milliseconds(5000), [] { WorkFor(milliseconds(300)); }), IsEmpty());
  const std::string drawn = Drawn(milliseconds(0), [] {
    WorkFor(milliseconds(400));
    Pulse::Hide();
  });
  EXPECT_THAT(drawn, EndsWith("s\x1b[K\r\x1b[K"));
}

}  // namespace

}  // namespace tests
