#include "host/loading/LibraryLoader.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <cxxabi.h>
#include <dlfcn.h>
#include <link.h>
#include <map>
#include <memory>
#include <string_view>
#include <typeinfo>
#include <utility>

#include "host/HostVersion.h"
#include "host/component/Callbacks.h"
#include "host/component/Dictionary.h"
#include "host/component/LiveObjects.h"
#include "host/loading/LibraryFile.h"

namespace {

struct Place {
  const char* name;
  std::uintptr_t begin = UINTPTR_MAX;
  std::uintptr_t end = 0;
};

int MeasureIfNamed(dl_phdr_info* info, std::size_t, void* ioPlace) {
  auto& place = *static_cast<Place*>(ioPlace);
  if (std::strcmp(info->dlpi_name, place.name) != 0) return 0;
  for (int i = 0; i < info->dlpi_phnum; ++i) {
    const auto& segment = info->dlpi_phdr[i];
    if (segment.p_type != PT_LOAD) continue;
    const std::uintptr_t begin = info->dlpi_addr + segment.p_vaddr;
    place.begin = std::min(place.begin, begin);
    place.end = std::max(place.end, begin + segment.p_memsz);
  }
  return 1;
}

Place PlaceOf(void* handle) {
  link_map* map = nullptr;
  dlinfo(handle, RTLD_DI_LINKMAP, &map);
  Place place{.name = map->l_name};
  dl_iterate_phdr(&MeasureIfNamed, &place);
  return place;
}

bool IsInMemory(const std::string& name) {
  void* const handle = dlopen(name.c_str(), RTLD_NOW | RTLD_NOLOAD);
  if (handle) dlclose(handle);
  return handle != nullptr;
}

// The reason without the path that the system puts in front of it.
std::string LoadingError(const std::string& name) {
  std::string_view reason = dlerror();
  if (reason.starts_with(name + ": ")) reason.remove_prefix(name.size() + 2);
  return std::string(reason);
}

std::string NameOf(const std::type_info& type) {
  const std::unique_ptr<char, decltype(&std::free)> name(
      abi::__cxa_demangle(type.name(), nullptr, nullptr, nullptr), &std::free);
  return name ? name.get() : type.name();
}

// "A (2), B (1)"; empty when none is alive.
std::string NamesOfLiveObjects(const void* begin, const void* end) {
  std::map<std::string, int> counts;
  for (const std::type_info* const type : ClassesOfObjectsWithCodeIn(begin, end)) {
    ++counts[NameOf(*type)];
  }
  std::string text;
  for (const auto& [name, count] : counts) {
    text += (text.empty() ? "" : ", ") + name + " (" + std::to_string(count) + ")";
  }
  return text;
}

// A library of another version would bring a libTuvHost of its own, whose objects look alike and
// are laid out otherwise.
void CheckVersion(const std::string& name) {
  const std::string own = "libTuvHost.so." + std::to_string(kHostVersionMajor) + "." +
                          std::to_string(kHostVersionMinor);
  for (const std::string& needed : LibrariesNeededBy(name)) {
    if (!needed.starts_with("libTuvHost.so") || needed == own) continue;
    throw LibraryUnusable("The library " + name + " cannot be loaded: it was built for " + needed +
                          " and this application has " + own +
                          "; use the library of the application's version.");
  }
}

}  // namespace

LibraryLoader::LibraryLoader(const std::filesystem::path& iFile)
    : name_(std::filesystem::absolute(iFile).string()) {
  CheckVersion(name_);
  if (IsInMemory(name_)) {
    throw LibraryUnusable("The library " + name_ + " is in memory already; load it once.");
  }
  handle_ = dlopen(name_.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!handle_) {
    throw LibraryUnusable("The library " + name_ + " cannot be loaded: " + LoadingError(name_) +
                          "; it must be built for this application.");
  }
  const Place place = PlaceOf(handle_);
  begin_ = reinterpret_cast<const void*>(place.begin);
  end_ = reinterpret_cast<const void*>(place.end);
}

LibraryLoader::~LibraryLoader() {
  try {
    Unload();
  } catch (const std::exception&) {
    // Code that is still needed must stay where it is.
  }
}

void LibraryLoader::Unload() {
  if (!handle_) return;
  if (const std::string alive = NamesOfLiveObjects(begin_, end_); !alive.empty()) {
    throw LibraryInUse("The library " + name_ +
                       " cannot be unloaded while objects of its classes are alive: " + alive +
                       ".");
  }
  PurgeCallbacks(begin_, end_);
  PurgeFactories(begin_, end_);
  dlclose(std::exchange(handle_, nullptr));
  if (IsInMemory(name_)) {
    throw LibraryInUse("The library " + name_ +
                       " stays in memory, without its registrations: it is linked in a way that "
                       "forbids unloading, or another library needs it.");
  }
}

void* LibraryLoader::Find(const char* iSymbol) const {
  return handle_ ? dlsym(handle_, iSymbol) : nullptr;
}
