#pragma once

#include <cstdint>

// How a primitive is drawn.
struct ZefGraphicAttributeSet {
  // Bits 31..24 set: the colour was chosen explicitly.
  std::uint32_t Attributes = 0xFD040400u;
  // 0xRRGGBBAA; opaque black by default.
  std::uint32_t Color = 0x000000FFu;

  friend bool operator==(const ZefGraphicAttributeSet&, const ZefGraphicAttributeSet&) = default;
};

static_assert(sizeof(ZefGraphicAttributeSet) == 8);
