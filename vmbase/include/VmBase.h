// VmBase: the base class library (class records, objects, events, strings, files).
#pragma once

#include "VmBaseExport.h"
#include "Class.h"
#include "Object.h"
#include "Event.h"
#include "String.h"
#include "FileIO.h"
