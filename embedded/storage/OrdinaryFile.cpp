#include "embedded/storage/OrdinaryFile.h"

#include <system_error>

#include "embedded/Error.h"

namespace embedded {

namespace {

namespace fs = std::filesystem;

const char* WhyNot(fs::file_type type) {
  switch (type) {
    case fs::file_type::directory:
      return "is a directory";
    case fs::file_type::fifo:
      return "is a pipe";
    case fs::file_type::socket:
      return "is a socket";
    case fs::file_type::block:
    case fs::file_type::character:
      return "is a device";
    default:
      return "cannot be opened";
  }
}

}  // namespace

void RequireOrdinaryFile(const fs::path& iFile, const std::string& iRemedy) {
  std::error_code error;
  const fs::file_type type = fs::status(iFile, error).type();
  if (type == fs::file_type::regular) return;
  throw InputError(iFile.string() + " " + WhyNot(type) + "; " + iRemedy);
}

void RequireOrdinaryJournals(const fs::path& iDatabase) {
  for (const char* const ending : {"-journal", "-wal"}) {
    fs::path journal = iDatabase;
    std::error_code error;
    if (fs::exists(journal += ending, error)) RequireOrdinaryFile(journal, "move it away");
  }
}

}  // namespace embedded
