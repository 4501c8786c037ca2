#include <chrono>
#include <csignal>
#include <gmock/gmock.h>
#include <iterator>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "embedded/storage/DocumentFile.h"
#include "tests/support/Plant.h"
#include "tests/support/ScratchFolder.h"

namespace {

using embedded::SaveDocument;
using embedded::WriteDocument;
using testing::HasSubstr;
using tests::ErrorOf;
using tests::Plant;
namespace fs = std::filesystem;

std::string BytesOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

long CountFiles(const fs::path& folder) {
  return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
}

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
  long cutShort = 0;
  for (int round = 0; round < 50; ++round) {
    const pid_t child = SaveForEver(plant, other, file);
    std::this_thread::sleep_for(std::chrono::microseconds(2000 + random() % 30000));
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    const std::string bytes = BytesOf(file);
    ASSERT_TRUE(bytes == text || bytes == otherText) << bytes.size() << " bytes";
    cutShort = CountFiles(scratch.Path()) - 1;
  }
  // Else no save was met while it was under way, and nothing was shown.
  EXPECT_GT(cutShort, 0);
}

}  // namespace
