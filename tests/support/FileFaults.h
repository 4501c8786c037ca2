#pragma once

#include <cerrno>
#include <gtest/gtest.h>
#include <string>

#include "embedded/storage/FileCalls.h"

namespace tests {

// Calls of the system of which the n-th fails, once or with all that follow.
class FaultyCalls : public embedded::FileCalls {
 public:
  static constexpr int kShort = -1;

  // `iError` is an errno, or kShort for reading and writing half of what was asked for.
  FaultyCalls(int iError, long iNth, bool iGoesOn)
      : error_(iError), countdown_(iNth), goesOn_(iGoesOn) {
    Replace(this);
  }
  ~FaultyCalls() override { Replace(nullptr); }
  FaultyCalls(const FaultyCalls&) = delete;
  FaultyCalls& operator=(const FaultyCalls&) = delete;

  bool HasStruck() const { return countdown_ <= 0; }
  // What should not stay could not be removed.
  bool HasKeptFiles() const { return hasKeptFiles_; }

  int Open(const char* iPath, int iFlags, mode_t iMode) override {
    return Strikes() ? -1 : FileCalls::Open(iPath, iFlags, iMode);
  }
  ssize_t Read(int iFile, void* oBytes, std::size_t iSize) override {
    const bool strikes = Strikes(true);
    if (strikes && error_ != kShort) return -1;
    return FileCalls::Read(iFile, oBytes, strikes ? (iSize + 1) / 2 : iSize);
  }
  ssize_t Write(int iFile, const void* iBytes, std::size_t iSize) override {
    const bool strikes = Strikes(true);
    if (strikes && error_ != kShort) return -1;
    return FileCalls::Write(iFile, iBytes, strikes ? (iSize + 1) / 2 : iSize);
  }
  int Flush(int iFile) override { return Strikes() ? -1 : FileCalls::Flush(iFile); }
  int Status(const char* iPath, struct stat* oStatus) override {
    return Strikes() ? -1 : FileCalls::Status(iPath, oStatus);
  }
  int Lock(int iFile, int iOperation) override {
    return Strikes() ? -1 : FileCalls::Lock(iFile, iOperation);
  }
  int Rename(const char* iFrom, const char* iTo) override {
    return Strikes() ? -1 : FileCalls::Rename(iFrom, iTo);
  }
  int RenameIfFree(const char* iFrom, const char* iTo) override {
    return Strikes() ? -1 : FileCalls::RenameIfFree(iFrom, iTo);
  }
  int Remove(const char* iPath) override {
    const bool strikes = Strikes();
    hasKeptFiles_ = hasKeptFiles_ || strikes;
    return strikes ? -1 : FileCalls::Remove(iPath);
  }
  int SetOwner(int iFile, uid_t iUser, gid_t iGroup) override {
    return Strikes() ? -1 : FileCalls::SetOwner(iFile, iUser, iGroup);
  }
  int SetMode(int iFile, mode_t iMode) override {
    return Strikes() ? -1 : FileCalls::SetMode(iFile, iMode);
  }
  ssize_t ListAttributes(const char* iPath, char* oNames, std::size_t iSize) override {
    return Strikes() ? -1 : FileCalls::ListAttributes(iPath, oNames, iSize);
  }
  int SetAttribute(int iFile, const char* iName, const void* iValue, std::size_t iSize) override {
    return Strikes() ? -1 : FileCalls::SetAttribute(iFile, iName, iValue, iSize);
  }

 private:
  bool Strikes(bool canBeShort = false) {
    if (error_ == kShort && !canBeShort) return false;
    --countdown_;
    if (goesOn_ ? countdown_ > 0 : countdown_ != 0) return false;
    if (error_ != kShort) errno = error_;
    return true;
  }

  int error_;
  long countdown_;
  bool goesOn_;
  bool hasKeptFiles_ = false;
};

// Runs `iScenario(faults)` with the n-th call failing, for n = 1, 2, 3, ... until a run meets none,
// in each way in which calls fail.
template <class Scenario>
void ForEachFileFault(const Scenario& iScenario) {
  long met = 0;
  for (const int error : {ENOSPC, EIO, EINTR, FaultyCalls::kShort}) {
    for (const bool goesOn : {false, true}) {
      long nth = 0;
      bool hasStruck = true;
      while (hasStruck && !testing::Test::HasFatalFailure()) {
        FaultyCalls faults(error, ++nth, goesOn);
        SCOPED_TRACE("call " + std::to_string(nth) + (goesOn ? " and on" : "") + ", error " +
                     std::to_string(error));
        iScenario(faults);
        hasStruck = faults.HasStruck();
        met += hasStruck ? 1 : 0;
      }
    }
  }
  EXPECT_GT(met, 0) << "no call was met";
}

}  // namespace tests
