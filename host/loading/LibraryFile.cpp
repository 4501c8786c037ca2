#include "host/loading/LibraryFile.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <link.h>

#include "host/loading/LibraryUnusable.h"

namespace {

using Header = ElfW(Ehdr);
using Segment = ElfW(Phdr);
using Entry = ElfW(Dyn);

constexpr unsigned char kClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
// More than any linker writes of one table or name; what a file claims beyond is not followed.
constexpr std::uint64_t kMostEntries = 4096;
constexpr std::size_t kLongestName = 4096;

template <class T>
bool Read(std::istream& stream, std::uint64_t offset, T& out) {
  stream.seekg(static_cast<std::streamoff>(offset));
  return static_cast<bool>(stream.read(reinterpret_cast<char*>(&out), sizeof out));
}

bool IsSharedLibrary(const Header& header) {
  return std::memcmp(header.e_ident, ELFMAG, SELFMAG) == 0 && header.e_ident[EI_CLASS] == kClass &&
         header.e_type == ET_DYN && header.e_phentsize == sizeof(Segment);
}

// False when one lies beyond the end of the file.
bool ReadSegments(std::istream& stream, const Header& header, std::uint64_t size,
                  std::vector<Segment>& out) {
  for (std::uint64_t i = 0; i < header.e_phnum; ++i) {
    Segment segment;
    if (!Read(stream, header.e_phoff + i * sizeof segment, segment)) return false;
    if (segment.p_offset > size || segment.p_filesz > size - segment.p_offset) return false;
    out.push_back(segment);
  }
  return true;
}

std::vector<Entry> ReadDynamicEntries(std::istream& stream, const std::vector<Segment>& segments) {
  std::vector<Entry> entries;
  const auto dynamic = std::ranges::find(segments, std::uint32_t{PT_DYNAMIC}, &Segment::p_type);
  if (dynamic == segments.end()) return entries;
  const std::uint64_t count = std::min(dynamic->p_filesz / sizeof(Entry), kMostEntries);
  Entry entry;
  for (std::uint64_t i = 0; i < count; ++i) {
    if (!Read(stream, dynamic->p_offset + i * sizeof entry, entry) || entry.d_tag == DT_NULL) break;
    entries.push_back(entry);
  }
  return entries;
}

// The name at an address of the library in memory; empty when the file does not hold it.
std::string NameAt(std::istream& stream, const std::vector<Segment>& segments,
                   std::uint64_t address) {
  std::string name;
  for (const Segment& segment : segments) {
    if (segment.p_type != PT_LOAD || address < segment.p_vaddr ||
        address - segment.p_vaddr >= segment.p_filesz) {
      continue;
    }
    stream.seekg(static_cast<std::streamoff>(segment.p_offset + (address - segment.p_vaddr)));
    for (char letter; name.size() < kLongestName && stream.get(letter) && letter;) name += letter;
    break;
  }
  return name;
}

}  // namespace

std::vector<std::string> LibrariesNeededBy(const std::filesystem::path& iFile) {
  const auto fail = [&](const char* what) {
    throw LibraryUnusable("The library " + iFile.string() + " cannot be loaded: " + what + ".");
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
  std::vector<Segment> segments;
  if (!ReadSegments(stream, header, size, segments)) fail("it is cut short; copy it again");

  const std::vector<Entry> entries = ReadDynamicEntries(stream, segments);
  const auto names = std::ranges::find(entries, DT_STRTAB, &Entry::d_tag);
  std::vector<std::string> needed;
  for (const Entry& entry : entries) {
    if (entry.d_tag != DT_NEEDED || names == entries.end()) continue;
    stream.clear();
    needed.push_back(NameAt(stream, segments, names->d_un.d_ptr + entry.d_un.d_val));
  }
  return needed;
}
