// Needs a function that nothing defines.
int MissingFromEveryLibrary();
extern "C" int Unresolved() { return MissingFromEveryLibrary(); }
