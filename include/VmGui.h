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
#include "GwMessages.h"
#include "GwWindow.h"
#include "GwWindowClass.h"
#include "GwControl.h"
#include "GwApplication.h"
#include "GwThisDll.h"
#include "GwMenu.h"
#include "GwResource.h"
#include "GwBitmap.h"
#include "GwRcData.h"
#include "GwDialog.h"
#include "GwMessageBox.h"
