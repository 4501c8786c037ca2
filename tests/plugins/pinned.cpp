// Linked so that the system never takes it out of memory again.
extern "C" int Pinned() { return 1; }
