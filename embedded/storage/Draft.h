#pragma once

#include <filesystem>
#include <optional>
#include <string_view>
#include <sys/types.h>

#include "embedded/storage/Descriptor.h"

namespace embedded {

// A new file beside the one whose place it is to take: `.NAME.PROCESS.new`. It goes away when it
// takes no place; when its process is killed, the next draft in the folder sweeps it away.
class Draft {
 public:
  // Locked while it is open, where the file system can lock. Without a mode there is only a free
  // name at first, for whoever makes files. InputError when it cannot be made.
  Draft(const std::filesystem::path& iFile, std::optional<mode_t> iMode);
  ~Draft();
  Draft(const Draft&) = delete;
  Draft& operator=(const Draft&) = delete;

  const std::filesystem::path& Path() const { return path_; }
  Descriptor& File() { return descriptor_; }
  bool IsLocked() const { return isLocked_; }

  // All bytes, down to the disk.
  void Write(std::string_view iBytes);
  // InputError leaves what was there, also where something is and the place has to be free.
  void Place(bool iOnlyIfFree);

 private:
  bool Begin(std::optional<mode_t> mode);
  bool MoveIfFree() const;

  std::filesystem::path file_;
  std::filesystem::path path_;
  Descriptor descriptor_;
  bool isLocked_ = false;
  bool isPlaced_ = false;
};

// What becomes of a file's name survives a loss of power from now on; false when that cannot be
// made sure.
bool FlushFolderOf(const std::filesystem::path& iFile);

}  // namespace embedded
