#pragma once

// Objects belong to the first thread that counts one; a debug build of the platform stops when
// another does. Part of the library in every build, so that code in any build links to it.
void CheckInteractiveThread();

inline void AssertInteractiveThread() {
#ifndef NDEBUG
  CheckInteractiveThread();
#endif
}
