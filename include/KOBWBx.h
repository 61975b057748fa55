#ifndef KOBWBx_h
#define KOBWBx_h

// The whole public interface of the library.

#include "KOBLVRUtilities.h"

#include "KOBWBArithmetic.h"
#include "KOBWBBoolean.h"
#include "KOBWBComparisons.h"
#include "KOBWBEnumRepresentation.h"
#include "KOBWBEnvironment.h"
#include "KOBWBExponentials.h"
#include "KOBWBFraction.h"
#include "KOBWBHyperbolic.h"
#include "KOBWBIntegerEnum.h"
#include "KOBWBInterval.h"
#include "KOBWBLimits.h"
#include "KOBWBPowers.h"
#include "KOBWBRealEnum.h"
#include "KOBWBRounding.h"
#include "KOBWBStep.h"
#include "KOBWBTrigonometry.h"
#include "KOBWBValue.h"
#include "KOBWBValueType.h"

#endif
