#pragma once

#ifdef NDEBUG
inline void AssertInteractiveThread() {}
#else
// Objects belong to the first thread that counts one; a debug build stops when another does.
void AssertInteractiveThread();
#endif
