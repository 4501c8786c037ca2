#include "embedded/storage/FileCalls.h"

#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace embedded {

namespace {

FileCalls* replacement = nullptr;

}  // namespace

int FileCalls::Open(const char* iPath, int iFlags, mode_t iMode) {
  return ::open(iPath, iFlags, iMode);
}
ssize_t FileCalls::Read(int iFile, void* oBytes, std::size_t iSize) {
  return ::read(iFile, oBytes, iSize);
}
ssize_t FileCalls::Write(int iFile, const void* iBytes, std::size_t iSize) {
  return ::write(iFile, iBytes, iSize);
}
int FileCalls::Flush(int iFile) { return ::fsync(iFile); }
int FileCalls::Status(const char* iPath, struct stat* oStatus) { return ::stat(iPath, oStatus); }
int FileCalls::Lock(int iFile, int iOperation) { return ::flock(iFile, iOperation); }
int FileCalls::Rename(const char* iFrom, const char* iTo) { return ::rename(iFrom, iTo); }
int FileCalls::RenameIfFree(const char* iFrom, const char* iTo) {
  return ::renameat2(AT_FDCWD, iFrom, AT_FDCWD, iTo, RENAME_NOREPLACE);
}
int FileCalls::Link(const char* iFrom, const char* iTo) { return ::link(iFrom, iTo); }
int FileCalls::Remove(const char* iPath) { return ::unlink(iPath); }
int FileCalls::SetOwner(int iFile, uid_t iUser, gid_t iGroup) {
  return ::fchown(iFile, iUser, iGroup);
}
int FileCalls::SetMode(int iFile, mode_t iMode) { return ::fchmod(iFile, iMode); }
ssize_t FileCalls::ListAttributes(const char* iPath, char* oNames, std::size_t iSize) {
  return ::listxattr(iPath, oNames, iSize);
}
ssize_t FileCalls::GetAttribute(const char* iPath, const char* iName, void* oValue,
                                std::size_t iSize) {
  return ::getxattr(iPath, iName, oValue, iSize);
}
int FileCalls::SetAttribute(int iFile, const char* iName, const void* iValue, std::size_t iSize) {
  return ::fsetxattr(iFile, iName, iValue, iSize, 0);
}

FileCalls& FileCalls::Current() {
  static FileCalls calls;
  return replacement ? *replacement : calls;
}

void FileCalls::Replace(FileCalls* iCalls) { replacement = iCalls; }

}  // namespace embedded
