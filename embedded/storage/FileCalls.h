#pragma once

#include <cerrno>
#include <cstddef>
#include <sys/stat.h>
#include <sys/types.h>

namespace embedded {

// The calls of the system through which files are saved: each as the manual has it, with errno.
// A place of its own, so that any of them can fail where nothing is wrong with the disk.
class FileCalls {
 public:
  virtual ~FileCalls() = default;

  virtual int Open(const char* iPath, int iFlags, mode_t iMode);
  virtual ssize_t Read(int iFile, void* oBytes, std::size_t iSize);
  virtual ssize_t Write(int iFile, const void* iBytes, std::size_t iSize);
  virtual int Flush(int iFile);
  virtual int Status(const char* iPath, struct stat* oStatus);
  virtual int Lock(int iFile, int iOperation);
  virtual int Rename(const char* iFrom, const char* iTo);
  // EEXIST where something is in the way.
  virtual int RenameIfFree(const char* iFrom, const char* iTo);
  virtual int Link(const char* iFrom, const char* iTo);
  virtual int Remove(const char* iPath);
  virtual int SetOwner(int iFile, uid_t iUser, gid_t iGroup);
  virtual int SetMode(int iFile, mode_t iMode);
  virtual ssize_t ListAttributes(const char* iPath, char* oNames, std::size_t iSize);
  virtual ssize_t GetAttribute(const char* iPath, const char* iName, void* oValue,
                               std::size_t iSize);
  virtual int SetAttribute(int iFile, const char* iName, const void* iValue, std::size_t iSize);

  static FileCalls& Current();
  // Others in place of these; null brings these back. The caller keeps them alive meanwhile.
  static void Replace(FileCalls* iCalls);
};

// Makes a call again that a signal cut short; for a while, as nothing else would end it.
template <class Call>
auto Retried(const Call& iCall) {
  constexpr int kMostAttempts = 1000;
  auto result = iCall();
  for (int i = 1; result < 0 && errno == EINTR && i < kMostAttempts; ++i) result = iCall();
  return result;
}

}  // namespace embedded
