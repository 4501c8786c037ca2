#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// 16-byte identifier of an interface or a class, laid out as in RFC 9562 with the first three
// fields in the machine's byte order.
struct _GUID {
  std::uint32_t Data1;
  std::uint16_t Data2;
  std::uint16_t Data3;
  std::uint8_t Data4[8];

  friend constexpr bool operator==(const _GUID&, const _GUID&) = default;
};

static_assert(sizeof(_GUID) == 16, "identifiers are 16 bytes on every platform");

using IID = _GUID;
using CLSID = _GUID;

// FNV-1a, 64 bits, started from `seed`.
constexpr std::uint64_t HashName(std::string_view name, std::uint64_t seed) {
  for (const char c : name) seed = (seed ^ static_cast<std::uint8_t>(c)) * 0x100000001b3u;
  return seed;
}

// The identifier that a name has for ever: a version 8 identifier (RFC 9562, section 5.8) made of
// two FNV-1a hashes of the name.
constexpr _GUID NameIdentifier(std::string_view name) {
  const std::uint64_t high = HashName(name, 0xcbf29ce484222325u);
  const std::uint64_t low = HashName(name, high ^ 0x9e3779b97f4a7c15u);
  _GUID id{static_cast<std::uint32_t>(high >> 32),
           static_cast<std::uint16_t>(high >> 16),
           static_cast<std::uint16_t>((high & 0x0fffu) | 0x8000u),
           {}};
  for (std::size_t i = 0; i < 8; ++i) id.Data4[i] = static_cast<std::uint8_t>(low >> (8 * i));
  id.Data4[0] = static_cast<std::uint8_t>((id.Data4[0] & 0x3fu) | 0x80u);
  return id;
}
