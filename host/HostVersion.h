#pragma once

// The version of host/ that a program is compiled with. Until 1.0 each minor version has a binary
// interface of its own, so the names of the libraries carry both numbers; the build reads them
// here.
inline constexpr int kHostVersionMajor = 0;
inline constexpr int kHostVersionMinor = 1;
inline constexpr int kHostVersionPatch = 0;

// The version of libTuvHost in memory, "0.1.0"; static text.
const char* HostVersion();
