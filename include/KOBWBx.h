#ifndef KOBWBx_h
#define KOBWBx_h

// The whole public interface of the library.

#include "KOBLVRUtilities.h"

#include "KOBWBBoolean.h"
#include "KOBWBEnumRepresentation.h"
#include "KOBWBEnvironment.h"
#include "KOBWBFraction.h"
#include "KOBWBIntegerEnum.h"
#include "KOBWBInterval.h"
#include "KOBWBLimits.h"
#include "KOBWBRealEnum.h"
#include "KOBWBValue.h"
#include "KOBWBValueType.h"

#endif
