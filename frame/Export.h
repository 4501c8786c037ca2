#pragma once

// Part of the library's public surface; everything else stays inside.
#define TUV_EXPORT __attribute__((visibility("default")))
// A private member of an exported class.
#define TUV_INTERNAL __attribute__((visibility("hidden")))
