// tuv-host-check: the contract of host/, checked on the embedded host.

#include <filesystem>
#include <memory>
#include <system_error>

#include "embeddedcheck/EmbeddedHooks.h"

namespace {

namespace fs = std::filesystem;

// The catalogs of the installed package, or those of the sources above a build.
fs::path FindCatalogs() {
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error);
  for (fs::path folder = program.parent_path(); folder.has_relative_path();
       folder = folder.parent_path()) {
    for (const char* const place : {"share/TuvKelBIWUtils/catalogs", "resources/catalogs"}) {
      if (fs::is_directory(folder / place, error)) return folder / place;
    }
  }
  return {};
}

}  // namespace

int main(int argc, char** argv) {
  return hostcheck::HostCheckMain(argc, argv, [catalogs = FindCatalogs()] {
    return std::make_unique<embeddedcheck::EmbeddedHooks>(catalogs);
  });
}
