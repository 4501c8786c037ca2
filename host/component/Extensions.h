#pragma once

#include "host/component/ZefBaseUnknown.h"

// Extensions of live objects. An extension is created once per object, on the first query, shares
// the object's identity and count, and is destroyed with it, before the object itself.
//
// ComponentObject and ZefBaseUnknown see to all this. A class that queries and counts on its own
// does two things: what it does not answer itself it asks of FindOrCreateExtension, with its
// identity, and when its last reference goes it calls DestroyExtensions before it is destroyed,
// during which it may be counted once more.

// The object's extension for `iIID`, created when the dictionary has a factory for the object's
// late class; null when there is none. The pointer carries no reference.
ZefBaseUnknown* FindOrCreateExtension(ZefBaseUnknown* iObject, const _GUID& iIID);

// Hands an extension over to the object.
void KeepExtension(ZefBaseUnknown* iObject, const _GUID& iIID, ZefBaseUnknown* iExtension);

// The object that `iExtension` extends, or null.
ZefBaseUnknown* ExtendedObject(const ZefBaseUnknown* iExtension);
void SetExtendedObject(ZefBaseUnknown* iExtension, ZefBaseUnknown* iObject);

// Destroys all extensions of an object whose last reference went.
void DestroyExtensions(ZefBaseUnknown* iObject);
