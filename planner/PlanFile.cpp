#include "planner/PlanFile.h"

#include <system_error>

#include "embedded/Error.h"
#include "embedded/storage/FileReplacement.h"
#include "embedded/storage/JsonLimits.h"

namespace biwplan {

namespace fs = std::filesystem;

using embedded::FileLock;
using embedded::InputError;

bool PlanFile::Exists() const {
  std::error_code error;
  return fs::exists(path_, error);
}

bool PlanFile::IsAt(const fs::path& iPath) const {
  std::error_code error;
  return fs::weakly_canonical(iPath, error) == fs::weakly_canonical(path_, error) && !error;
}

void PlanFile::Lock() {
  if (IsLocked()) return;
  const FileLock::State state = lock_.Take(embedded::FollowLinks(path_), wait_);
  if (state == FileLock::State::Busy) {
    throw InputError(path_.string() + ": the plan is held by " + lock_.Holder() +
                     "; try again when that has ended, or wait longer with --wait");
  }
  if (state != FileLock::State::Unable || hasToldUnable_ || !tell_) return;
  hasToldUnable_ = true;
  tell_(path_.string() +
        ": its file system cannot lock files; changes by others are found only when it is saved");
}

std::string PlanFile::Read() {
  if (!Exists()) {
    throw InputError("there is no document " + path_.string() + "; 'new' makes it");
  }
  std::string text = embedded::ReadWholeFile(path_, embedded::JsonLimits::Current().bytes);
  known_ = embedded::FingerprintOf(text);
  return text;
}

bool PlanFile::IsAnother() const { return embedded::FingerprintOfFile(path_) != known_; }

void PlanFile::AcceptAsItIs() { known_ = embedded::FingerprintOfFile(path_); }

// A file that went away took nothing along that could be lost here.
void PlanFile::RequireKnown() const {
  const auto now = embedded::FingerprintOfFile(path_);
  if (!now || now == known_) return;
  throw InputError(path_.string() + (known_ ? " was changed" : " was made") +
                   " by somebody else meanwhile and is left so: 'save OTHER.json' keeps this plan "
                   "beside it, 'reload' takes that one, 'save --overwrite' replaces it");
}

void PlanFile::Write(std::string_view iText, bool iOverwrites) {
  const Alone alone(*this);
  const auto remarks = embedded::ReplaceFile(path_, iText,
                                             {.approve =
                                                  [&] {
                                                    if (!iOverwrites) RequireKnown();
                                                  },
                                              .onlyIfFree = !iOverwrites && !known_.has_value(),
                                              .lock = &lock_});
  known_ = embedded::FingerprintOf(iText);
  for (const std::string& remark : remarks) {
    if (tell_) tell_(remark);
  }
}

}  // namespace biwplan
