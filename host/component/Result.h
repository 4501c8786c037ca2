#pragma once

#include <cstdint>

// Status of an operation. Negative values are failures; 32 bits wide so that E_FAIL is negative
// on platforms with a 64-bit long, too.
typedef std::int32_t HRESULT;

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005u);

static_assert(E_FAIL < 0, "failures are told from successes by their sign");

constexpr bool Succeeded(HRESULT status) { return status >= 0; }
constexpr bool Failed(HRESULT status) { return status < 0; }
