#include <chrono>
#include <csignal>
#include <functional>
#include <gmock/gmock.h>
#include <grp.h>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <thread>
#include <unistd.h>

#include "embedded/storage/DocumentFile.h"
#include "embedded/storage/FileLock.h"
#include "tests/support/Campaign.h"
#include "tests/support/FileFaults.h"
#include "tests/support/Plant.h"
#include "tests/support/ScratchFolder.h"

namespace {

using embedded::SaveDocument;
using embedded::WriteDocument;
using testing::HasSubstr;
using tests::BytesOf;
using tests::CountFiles;
using tests::ErrorOf;
using tests::Plant;
namespace fs = std::filesystem;

class DocumentFileSaveTest : public testing::Test {
 protected:
  std::string Save(const fs::path& file) {
    return ErrorOf([&] { SaveDocument(*plant.Document(), file); });
  }

  const tests::ScratchFolder scratch;
  const Plant plant = Plant::OfSize(50);
  const std::string text = WriteDocument(*plant.Document());
};

TEST_F(DocumentFileSaveTest, ReplacesTheFileAndKeepsItsPermissions) {
  const fs::path file = scratch.Path() / "door.json";
  EXPECT_EQ(Save(file), "");
  EXPECT_EQ(BytesOf(file), text);
  struct stat status {};
  ::stat(file.c_str(), &status);
  const mode_t mask = ::umask(0);
  ::umask(mask);
  EXPECT_EQ(status.st_mode & 07777, 0666 & ~mask);

  scratch.Write("door.json", "former");
  ::chmod(file.c_str(), 0640);
  EXPECT_EQ(Save(file), "");
  EXPECT_EQ(BytesOf(file), text);
  ::stat(file.c_str(), &status);
  EXPECT_EQ(status.st_mode & 07777, 0640u);
  EXPECT_EQ(CountFiles(scratch.Path()), 1);
}

TEST_F(DocumentFileSaveTest, WritesWhereSymbolicLinksLead) {
  scratch.Write("data/door.json", "former");
  fs::create_symlink("data/door.json", scratch.Path() / "near");
  fs::create_symlink(scratch.Path() / "near", scratch.Path() / "far");
  fs::create_symlink("data/new.json", scratch.Path() / "free");
  EXPECT_EQ(Save(scratch.Path() / "far"), "");
  EXPECT_EQ(Save(scratch.Path() / "free"), "");
  for (const char* const link : {"near", "far", "free"}) {
    EXPECT_TRUE(fs::is_symlink(scratch.Path() / link));
    EXPECT_EQ(BytesOf(scratch.Path() / link), text);
  }
  EXPECT_EQ(CountFiles(scratch.Path() / "data"), 2);
}

TEST_F(DocumentFileSaveTest, SaysWhyAPathCannotBeUsed) {
  fs::create_directory(scratch.Path() / "folder");
  fs::create_symlink("circle", scratch.Path() / "circle");
  ::mkfifo((scratch.Path() / "pipe").c_str(), 0600);
  scratch.Write("file", "");
  for (const char* const name : {"folder", "circle", "pipe", "file/door.json", "no/door.json"}) {
    const fs::path path = scratch.Path() / name;
    EXPECT_THAT(Save(path), HasSubstr(path.string() + ": ")) << name;
    EXPECT_THAT(ErrorOf([&] { embedded::LoadDocument(path); }), HasSubstr(path.string() + ": "));
  }
  EXPECT_EQ(CountFiles(scratch.Path()), 4);
  EXPECT_EQ(CountFiles(scratch.Path() / "folder"), 0);
}

// A limit on the size of files stands for a disk without room.
TEST_F(DocumentFileSaveTest, LeavesTheFormerFileAloneWhenTheDiscIsFull) {
  const fs::path file = scratch.Write("door.json", "former");
  struct rlimit before {};
  ::getrlimit(RLIMIT_FSIZE, &before);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  struct rlimit limit = before;
  limit.rlim_cur = text.size() / 2;
  ::setrlimit(RLIMIT_FSIZE, &limit);
  const std::string error = Save(file);
  ::setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  EXPECT_THAT(error, HasSubstr("door.json: the file cannot be saved (File too large); it must"));
  EXPECT_EQ(BytesOf(file), "former");
  EXPECT_EQ(CountFiles(scratch.Path()), 1);
}

// Starts a process that saves two documents in turn without end.
pid_t SaveForEver(const Plant& one, const Plant& other, const fs::path& file) {
  const pid_t child = ::fork();
  if (child != 0) return child;
  for (;;) {
    SaveDocument(*one.Document(), file);
    SaveDocument(*other.Document(), file);
  }
}

TEST_F(DocumentFileSaveTest, LeavesAWholeDocumentWheneverItIsKilled) {
  const Plant other = Plant::OfSize(2000);
  const std::string otherText = WriteDocument(*other.Document());
  const fs::path file = scratch.Path() / "door.json";
  ASSERT_EQ(Save(file), "");
  std::mt19937 random(7);
  bool wasCutShort = false;
  for (int round = 0; round < tests::CampaignSize(50); ++round) {
    const pid_t child = SaveForEver(plant, other, file);
    std::this_thread::sleep_for(std::chrono::microseconds(2000 + random() % 30000));
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    const std::string bytes = BytesOf(file);
    ASSERT_TRUE(bytes == text || bytes == otherText) << bytes.size() << " bytes";
    wasCutShort = wasCutShort || CountFiles(scratch.Path()) > 1;
  }
  // Else no save was met while it was under way, and nothing was shown.
  EXPECT_TRUE(wasCutShort);
  EXPECT_EQ(Save(file), "");
  EXPECT_EQ(CountFiles(scratch.Path()), 1);
}

TEST_F(DocumentFileSaveTest, IsAllOldOrAllNewWhateverCallFailsAndSaysWhich) {
  tests::ForEachFileFault([&](const tests::FaultyCalls& faults) {
    for (const char* const former : {"former", ""}) {
      const tests::ScratchFolder folder;
      const fs::path file = folder.Path() / "door.json";
      if (*former) folder.Write("door.json", former);
      const bool wasStruck = faults.HasStruck();
      std::vector<std::string> remarks;
      const std::string error = ErrorOf([&] { remarks = SaveDocument(*plant.Document(), file); });
      EXPECT_TRUE(BytesOf(file) == (error.empty() ? text : former)) << error;
      if (wasStruck || !faults.HasStruck()) continue;
      if (!faults.HasKeptFiles()) {
        EXPECT_EQ(CountFiles(folder.Path()), fs::exists(file) ? 1 : 0);
      }
    }
  });
}

TEST_F(DocumentFileSaveTest, SweepsWhatKilledProcessesLeft) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(0);
  ::waitpid(child, nullptr, 0);
  const std::string dead = std::to_string(child);
  const std::string alive = std::to_string(::getppid());
  const std::string database = std::string("SQLite format 3") + '\0' + "...";
  const struct {
    std::string name, bytes;
    bool stays;
  } cases[] = {{".door.json." + dead + ".new", "{", false},
               {".other.json.2." + dead + ".new", "", false},
               {"plant.db." + dead + ".new", database, false},
               {".plant.db." + dead + ".new-journal", "", true},
               {"notes." + dead + ".new", "a user's", true},
               {".door.json." + alive + ".new", "", true},
               {".door.json.new", "", true},
               {"." + dead + ".new", "", true},
               {".locked." + dead + ".new", "", true}};
  for (const auto& c : cases) scratch.Write(c.name, c.bytes);
  scratch.Write("plant.db." + dead + ".new-journal", "");
  embedded::FileLock lock;
  lock.Take(scratch.Path() / (".locked." + dead + ".new"), std::chrono::milliseconds(0));
  EXPECT_EQ(Save(scratch.Path() / "door.json"), "");
  for (const auto& c : cases) EXPECT_EQ(fs::exists(scratch.Path() / c.name), c.stays) << c.name;
  EXPECT_FALSE(fs::exists(scratch.Path() / ("plant.db." + dead + ".new-journal")));
}

// What an action answers that another user takes.
std::string AsUser(uid_t user, std::vector<gid_t> groups,
                   const std::function<std::string()>& action) {
  int ends[2];
  if (::pipe(ends) != 0) return "no pipe";
  const pid_t child = ::fork();
  if (child == 0) {
    const bool isUser = ::setgroups(groups.size(), groups.data()) == 0 &&
                        ::setresgid(user, user, user) == 0 && ::setresuid(user, user, user) == 0;
    const std::string answer = isUser ? action() : "this user cannot be taken";
    ::_exit(::write(ends[1], answer.data(), answer.size()) < 0);
  }
  ::close(ends[1]);
  std::string answer(4096, '\0');
  const ssize_t size = ::read(ends[0], answer.data(), answer.size());
  answer.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
  ::close(ends[0]);
  ::waitpid(child, nullptr, 0);
  return answer;
}

TEST_F(DocumentFileSaveTest, KeepsOwnerGroupModeAndAttributesAsFarAsItMay) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can give files away";
  constexpr uid_t kOwner = 51000;
  constexpr uid_t kColleague = 51001;
  constexpr gid_t kGroup = 52000;
  const std::string noOwner = "its owner (51000) could not be kept";
  const std::string noGroup = "its group (52000) could not be kept";
  const struct {
    mode_t mode;
    uid_t saver;
    std::vector<gid_t> groups;
    uid_t newOwner;
    gid_t newGroup;
    mode_t newMode;
    std::string remark;
  } cases[] = {
      {0660, 0, {}, kOwner, kGroup, 0660, ""},
      {0640, kOwner, {kGroup}, kOwner, kGroup, 0640, ""},
      {0660, kColleague, {kGroup}, kColleague, kGroup, 0660, noOwner},
      {0666, kColleague, {}, kColleague, kColleague, 0666, noGroup + ", " + noOwner},
      {0640, kOwner, {}, kOwner, kOwner, 0640, noGroup},
  };
  ::chmod(scratch.Path().c_str(), 0777);
  const fs::path file = scratch.Path() / "door.json";
  const auto canWrite = [&] { return ::access(file.c_str(), R_OK | W_OK) == 0 ? "yes" : "no"; };
  const auto canRead = [&] { return ::access(file.c_str(), R_OK) == 0 ? "yes" : "no"; };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << std::oct << c.mode << " by " << std::dec << c.saver);
    fs::remove(file);
    scratch.Write("door.json", "former");
    ASSERT_EQ(::chown(file.c_str(), kOwner, kGroup), 0);
    ASSERT_EQ(::chmod(file.c_str(), c.mode), 0);
    ASSERT_EQ(::setxattr(file.c_str(), "user.note", "kept", 4, 0), 0);
    const std::string remark = AsUser(c.saver, c.groups, [&] {
      std::string told;
      const std::string error = ErrorOf([&] {
        for (const auto& each : SaveDocument(*plant.Document(), file)) told += each;
      });
      return told + error;
    });
    EXPECT_EQ(remark, c.remark.empty() ? "" : file.string() + ": " + c.remark);
    EXPECT_TRUE(BytesOf(file) == text);
    struct stat status {};
    ::stat(file.c_str(), &status);
    EXPECT_EQ(status.st_uid, c.newOwner);
    EXPECT_EQ(status.st_gid, c.newGroup);
    EXPECT_EQ(status.st_mode & 07777, c.newMode);
    char note[4] = {};
    EXPECT_EQ(::getxattr(file.c_str(), "user.note", note, sizeof note), 4);
    EXPECT_EQ(AsUser(kOwner, {}, canWrite), "yes");
    EXPECT_EQ(AsUser(53000, {kGroup}, canRead), "yes");
    EXPECT_EQ(AsUser(53000, {c.newGroup}, canWrite), c.newMode & 020 ? "yes" : "no");
  }
}

}  // namespace
