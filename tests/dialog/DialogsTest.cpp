#include <gtest/gtest.h>
#include <sstream>

#include "embedded/dialog/ConsoleDialogs.h"
#include "embedded/dialog/RecordedDialogs.h"

namespace {

const DialogRequest kWarning{nullptr, "Warning", 0x04140200u, "first line\nsecond line", "ÜBEL"};

TEST(ConsoleDialogsTest, PrintsTitleRuleAndMessage) {
  std::ostringstream out;
  EXPECT_EQ(embedded::ConsoleDialogs(out).Show(kWarning), 0);
  EXPECT_EQ(out.str(), "ÜBEL\n----\nfirst line\nsecond line\n");
}

TEST(ConsoleDialogsTest, WaitsForOneLineOfTheUserAndGoesOnWhenHeLeft) {
  std::ostringstream out;
  std::istringstream keys("\nsave");
  embedded::ConsoleDialogs dialogs(out, &keys);
  dialogs.Show({nullptr, "", 0, "", ""});
  EXPECT_EQ(out.str(), "\n[Enter] ");
  EXPECT_EQ(keys.tellg(), 1);
  dialogs.Show(kWarning);
  EXPECT_EQ(dialogs.Show(kWarning), 0);
}

TEST(RecordedDialogsTest, KeepsEveryDialogAndAsksForTheAnswer) {
  embedded::RecordedDialogs dialogs;
  EXPECT_EQ(dialogs.Show(kWarning), 0);
  dialogs.SetAnswer([](const DialogRequest& request) { return static_cast<int>(request.style); });
  EXPECT_EQ(dialogs.Show({nullptr, "TITLE", 3, "message", "title"}), 3);
  ASSERT_EQ(dialogs.Shown().size(), 2u);
  EXPECT_EQ(dialogs.Shown()[0].message, "first line\nsecond line");
  EXPECT_EQ(dialogs.Shown()[1].name, "TITLE");
}

}  // namespace
