#include "host/product/ZefIAsmGraphicProperties.h"
#include "host/product/ZefIMovable.h"
#include "host/product/ZefINavigateObject.h"
#include "host/product/ZefIProduct.h"

constinit const _GUID IID_ZefIAsmGraphicProperties = NameIdentifier(ZefIAsmGraphicProperties::Name);
constinit const _GUID IID_ZefIMovable = NameIdentifier(ZefIMovable::Name);
constinit const _GUID IID_ZefINavigateObject = NameIdentifier(ZefINavigateObject::Name);
constinit const _GUID IID_ZefIProduct = NameIdentifier(ZefIProduct::Name);
