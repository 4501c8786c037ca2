#pragma once

// Part of the library's public surface; everything else stays inside.
#define TUV_EXPORT __attribute__((visibility("default")))
