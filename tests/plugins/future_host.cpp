const char* HostVersion() { return "9.9.0"; }
