#include "embedded/loading/LibraryFile.h"

#include <cstdint>
#include <cstring>
#include <fstream>
#include <link.h>
#include <string>

#include "embedded/Error.h"

namespace embedded {

namespace {

using Header = ElfW(Ehdr);
using Segment = ElfW(Phdr);

constexpr unsigned char kClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;

template <class T>
bool Read(std::istream& stream, std::uint64_t offset, T& out) {
  stream.seekg(static_cast<std::streamoff>(offset));
  return static_cast<bool>(stream.read(reinterpret_cast<char*>(&out), sizeof out));
}

bool IsSharedLibrary(const Header& header) {
  return std::memcmp(header.e_ident, ELFMAG, SELFMAG) == 0 && header.e_ident[EI_CLASS] == kClass &&
         header.e_type == ET_DYN && header.e_phentsize == sizeof(Segment);
}

bool HasAllSegments(std::istream& stream, const Header& header, std::uint64_t size) {
  for (std::uint64_t i = 0; i < header.e_phnum; ++i) {
    Segment segment;
    if (!Read(stream, header.e_phoff + i * sizeof segment, segment)) return false;
    if (segment.p_offset > size || segment.p_filesz > size - segment.p_offset) return false;
  }
  return true;
}

}  // namespace

void CheckLibraryFile(const std::filesystem::path& iFile) {
  const auto fail = [&](const char* what) {
    throw InputError("The library " + iFile.string() + " cannot be loaded: " + what + ".");
  };
  std::error_code error;
  if (!std::filesystem::is_regular_file(iFile, error)) fail("it must be a readable file");
  const std::uint64_t size = std::filesystem::file_size(iFile, error);
  std::ifstream stream(iFile, std::ios::binary);
  if (error || !stream) fail("it must be a readable file");
  Header header;
  if (!Read(stream, 0, header) || !IsSharedLibrary(header)) {
    fail("it must be a shared library for this machine");
  }
  if (!HasAllSegments(stream, header, size)) fail("it is cut short; copy it again");
}

}  // namespace embedded
