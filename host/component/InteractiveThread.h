#pragma once

// The interactive thread is the first one that takes or gives back a reference of any object; it
// stays so until the process ends. Code that is compiled for debugging asks at every count, and a
// debug build of the platform then stops on another thread. Part of the library in every build, so
// that code in any build links to it.
void CheckInteractiveThread();

inline void AssertInteractiveThread() {
#ifndef NDEBUG
  CheckInteractiveThread();
#endif
}
