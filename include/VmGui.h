// VmGui: every public header of the library.
#pragma once

#include <VmBase.h>

#include "GwExport.h"
#include "GwObject.h"
#include "GwObjectTable.h"
#include "GwStartup.h"
#include "GwGeometry.h"
#include "GwTools.h"
#include "GwEventData.h"
#include "GwEventHandler.h"
#include "GwItem.h"
#include "GwUserData.h"
#include "GwWindow.h"
