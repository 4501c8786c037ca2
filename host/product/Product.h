#pragma once

#include "host/product/ZefIAsmGraphicProperties.h"
#include "host/product/ZefIMovable.h"
#include "host/product/ZefINavigateObject.h"
#include "host/product/ZefIProduct.h"
