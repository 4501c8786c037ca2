// Linked to a libTuvHost of another version.
const char* HostVersion();
extern "C" const char* Future() { return HostVersion(); }
