#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <random>
#include <sqlite3.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "embedded/processdb/CsvImport.h"
#include "tests/processdb/Databases.h"
#include "tests/support/Campaign.h"
#include "tests/support/FileFaults.h"

namespace {

using embedded::CreateFromCsv;
using embedded::ProcessDatabase;
using tests::CountFiles;
using tests::ErrorOf;

// The calls of the system that SQLite makes, of which the n-th fails, once or with all that follow.
class SqliteFaults {
 public:
  SqliteFaults(int error, long nth, bool goesOn) {
    error_ = error;
    countdown_ = nth;
    goesOn_ = goesOn;
    hasKeptFiles_ = false;
    Set("open", Address(&Open));
    Set("pread64", Address(&Read));
    Set("pread", Address(&Read));
    Set("pwrite64", Address(&Write));
    Set("pwrite", Address(&Write));
    Set("ftruncate", Address(&Truncate));
    Set("unlink", Address(&Unlink));
  }
  ~SqliteFaults() {
    // Without a name all calls are as they were.
    Vfs()->xSetSystemCall(Vfs(), nullptr, nullptr);
  }
  SqliteFaults(const SqliteFaults&) = delete;
  SqliteFaults& operator=(const SqliteFaults&) = delete;

  static bool HasStruck() { return countdown_ <= 0; }
  static bool HasKeptFiles() { return hasKeptFiles_; }

 private:
  using Pointer = sqlite3_syscall_ptr;
  template <class Function>
  static Pointer Address(Function* function) {
    return reinterpret_cast<Pointer>(function);
  }
  static sqlite3_vfs* Vfs() { return sqlite3_vfs_find(nullptr); }
  static void Set(const char* name, Pointer call) {
    if (Vfs()->xGetSystemCall(Vfs(), name)) Vfs()->xSetSystemCall(Vfs(), name, call);
  }
  static bool Strikes() {
    --countdown_;
    if (goesOn_ ? countdown_ > 0 : countdown_ != 0) return false;
    errno = error_;
    return true;
  }
  static int Open(const char* path, int flags, int mode) {
    return Strikes() ? -1 : ::open(path, flags, mode);
  }
  static ssize_t Read(int file, void* bytes, std::size_t size, off_t at) {
    return Strikes() ? -1 : ::pread(file, bytes, size, at);
  }
  static ssize_t Write(int file, const void* bytes, std::size_t size, off_t at) {
    return Strikes() ? -1 : ::pwrite(file, bytes, size, at);
  }
  static int Truncate(int file, off_t size) { return Strikes() ? -1 : ::ftruncate(file, size); }
  static int Unlink(const char* path) {
    const bool strikes = Strikes();
    hasKeptFiles_ = hasKeptFiles_ || strikes;
    return strikes ? -1 : ::unlink(path);
  }

  static inline int error_;
  static inline long countdown_;
  static inline bool goesOn_;
  static inline bool hasKeptFiles_;
};

class ImportFaultsTest : public testing::Test {
 protected:
  ImportFaultsTest() { tests::WriteLists(lists); }
  // All of the database or nothing, as was said.
  void ExpectWhole(const std::string& error) const {
    EXPECT_EQ(std::filesystem::exists(file), error.empty()) << error;
    if (!error.empty()) return;
    EXPECT_EQ(tests::Story(*ProcessDatabase::Open(file)), tests::kWholeStory);
  }

  tests::ScratchFolder lists;
  std::filesystem::path target = lists.Path() / "target";
  std::filesystem::path file = target / "plant.sqlite";
};

TEST_F(ImportFaultsTest, ADatabaseIsThereWholeOrNotAtAllWhateverCallFails) {
  const auto import = [&] { CreateFromCsv(file, {lists.Path()}); };
  const auto begin = [&] {
    std::filesystem::remove_all(target);
    std::filesystem::create_directory(target);
  };
  for (const int error : {ENOSPC, EIO}) {
    for (const bool goesOn : {false, true}) {
      bool hasStruck = true;
      long nth = 0;
      while (hasStruck) {
        SCOPED_TRACE("SQLite's call " + std::to_string(++nth));
        begin();
        std::string said;
        bool hasKeptFiles = false;
        {
          const SqliteFaults faults(error, nth, goesOn);
          said = ErrorOf(import);
          hasStruck = SqliteFaults::HasStruck();
          hasKeptFiles = SqliteFaults::HasKeptFiles();
        }
        ExpectWhole(said);
        EXPECT_TRUE(hasKeptFiles || CountFiles(target) == (said.empty() ? 1 : 0));
      }
      EXPECT_GT(nth, 1);
    }
  }
  tests::ForEachFileFault([&](const tests::FaultyCalls& faults) {
    begin();
    const std::string said = ErrorOf(import);
    const bool hasStruck = faults.HasStruck();
    EXPECT_EQ(std::filesystem::exists(file), said.empty()) << said;
    if (!hasStruck) ExpectWhole(said);
    EXPECT_TRUE(faults.HasKeptFiles() || CountFiles(target) == (said.empty() ? 1 : 0));
  });
}

TEST_F(ImportFaultsTest, AKilledImportLeavesNothingAfterTheNext) {
  std::filesystem::create_directory(target);
  std::mt19937 random(3);
  bool wasCutShort = false;
  for (int round = 0; round < tests::CampaignSize(50); ++round) {
    const pid_t child = ::fork();
    while (child == 0) {
      std::filesystem::remove(file);
      CreateFromCsv(file, {lists.Path()});
    }
    std::this_thread::sleep_for(std::chrono::microseconds(1000 + random() % 20000));
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    if (std::filesystem::exists(file)) {
      ASSERT_EQ(tests::Story(*ProcessDatabase::Open(file)), tests::kWholeStory);
    }
    wasCutShort = wasCutShort || CountFiles(target) > (std::filesystem::exists(file) ? 1 : 0);
    std::filesystem::remove(file);
    CreateFromCsv(file, {lists.Path()});
    ASSERT_EQ(CountFiles(target), 1);
  }
  EXPECT_TRUE(wasCutShort);
}

}  // namespace
