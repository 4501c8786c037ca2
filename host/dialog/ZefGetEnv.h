#pragma once

// The variable of the application's environment; null only when it is not set: a variable set to
// the empty text counts as set. Valid until the next call.
const char* ZefGetEnv(const char* iName);
