#pragma once

#include "host/document/ZefDocument.h"
#include "host/document/ZefFrmEditor.h"
#include "host/document/ZefIAlias.h"
#include "host/document/ZefICompoundContainer.h"
#include "host/document/ZefIContainer.h"
#include "host/document/ZefILinkableObject.h"
#include "host/document/ZefIPointingHolder.h"
#include "host/document/ZefIRedrawEvent.h"
#include "host/document/ZefISpecObject.h"
#include "host/document/ZefInit.h"
