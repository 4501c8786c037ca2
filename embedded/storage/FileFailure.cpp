#include "embedded/storage/FileFailure.h"

#include <cerrno>
#include <system_error>

#include "embedded/Error.h"

namespace embedded {

void FailOnFile(const std::filesystem::path& iFile, const char* iWhat, const std::string& iRemedy) {
  const std::string reason = std::error_code(errno, std::generic_category()).message();
  throw InputError(iFile.string() + ": the file " + iWhat + " (" + reason + "); " + iRemedy);
}

void FailToSave(const std::filesystem::path& iFile) {
  FailOnFile(iFile, "cannot be saved",
             "it must lie in a folder that can be written, on a disk with room");
}

}  // namespace embedded
