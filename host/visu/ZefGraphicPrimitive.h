#pragma once

#include <cstddef>

// Something drawn. The representation that it is added to owns it.
class ZefGraphicPrimitive {
 public:
  ZefGraphicPrimitive() = default;
  virtual ~ZefGraphicPrimitive();
  ZefGraphicPrimitive(const ZefGraphicPrimitive&) = delete;
  ZefGraphicPrimitive& operator=(const ZefGraphicPrimitive&) = delete;

  // Answers null when memory is exhausted.
  static void* operator new(std::size_t size) noexcept;
  static void operator delete(void* memory) noexcept;
};
