#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

#include "host/loading/LibraryUnusable.h"

// A library that cannot leave memory. The text is one sentence that says what keeps it there.
class LibraryInUse : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A plug-in library, in memory from construction until it is unloaded. What it registers while it
// is loaded ends with it, so that nothing leads into code that is gone.
class LibraryLoader {
 public:
  // LibraryUnusable when the file is no library that fits this application, was built for another
  // version of host/, or is in memory already.
  explicit LibraryLoader(const std::filesystem::path& iFile);
  // A library that is in use stays in memory until the process ends, with all that it registered.
  ~LibraryLoader();
  LibraryLoader(const LibraryLoader&) = delete;
  LibraryLoader& operator=(const LibraryLoader&) = delete;

  // Ends the library's registrations and subscriptions and takes it out of memory; again is
  // harmless. LibraryInUse, with nothing changed, while objects of its classes are alive. Not to
  // be called from within the library.
  void Unload();
  bool IsLoaded() const { return handle_ != nullptr; }

  // An exported function or constant by its plain name; null when there is none.
  void* Find(const char* iSymbol) const;

 private:
  std::string name_;
  void* handle_ = nullptr;
  // Where the library lies in memory.
  const void* begin_ = nullptr;
  const void* end_ = nullptr;
};
