#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <sstream>

#include "tests/support/TraceRecorder.h"

namespace {

class TraceTest : public testing::Test {
 protected:
  ~TraceTest() override {
    SwitchTrace("TestTrace", false);
    std::remove(file.c_str());
  }
  std::string Written() const {
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
  }

  std::string file = testing::TempDir() + "tuv_trace_test.txt";
};

TEST_F(TraceTest, WritesOneUnchangedLinePerCallWhileItIsOn) {
  ZefTrace trace("TestTrace", "comment", 0, file.c_str(), 16);
  trace.TraPutLN("off");
  EXPECT_FALSE(std::ifstream(file).is_open()) << "nothing is made for a trace that is off";
  SwitchTrace("TestTrace", true);
  trace.TraPutLN("A::B --> IN, longer than sixteen %s");
  trace.TraPutLN("");
  trace.TraPutLN(nullptr);
  SwitchTrace("TestTrace", false);
  trace.TraPutLN("off again");
  EXPECT_EQ(Written(), "A::B --> IN, longer than sixteen %s\n\n");
}

TEST_F(TraceTest, IsSwitchedByNameAlsoBeforeItExists) {
  SwitchTrace("TestTrace", true);
  EXPECT_FALSE(IsTraceRegistered("TestTrace"));
  ZefTrace trace("TestTrace", "", 0, "STDERR", 0);
  EXPECT_TRUE(IsTraceRegistered("TestTrace") && IsTraceOn("TestTrace"));
  testing::internal::CaptureStderr();
  trace.TraPutLN("line");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "line\n");
  std::string diverted;
  DivertTraces([&](const char* line) { diverted += line; });
  testing::internal::CaptureStderr();
  trace.TraPutLN("elsewhere");
  DivertTraces({});
  trace.TraPutLN("here again");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "here again\n");
  EXPECT_EQ(diverted, "elsewhere");
}

TEST_F(TraceTest, ALineOnADestroyedTraceIsIgnored) {
  const tests::TraceRecorder recorder("TestTrace");
  // The place stays, as that of a library's trace does for whoever still knows it.
  alignas(ZefTrace) std::byte place[sizeof(ZefTrace)];
  ZefTrace* const trace =
      std::construct_at(reinterpret_cast<ZefTrace*>(place), "TestTrace", "", 1, file.c_str(), 0);
  trace->TraPutLN("before");
  std::destroy_at(trace);
  EXPECT_FALSE(IsTraceRegistered("TestTrace"));
  trace->TraPutLN("after");
  EXPECT_EQ(recorder.Lines(), std::vector<std::string>{"before"});
  EXPECT_EQ(Written(), "before\n");
}

}  // namespace
