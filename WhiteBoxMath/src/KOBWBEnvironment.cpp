#include "KOBWBEnvironment.h"

#include "KOBLVRGlobalParameters.h"
#include "KOBWBLimits.h"

KOBWBEnvironment::KOBWBEnvironment()
    : m_tolerance(KOBWBAbsPrecision), m_useOldST(GetGlobalParameters().IsUseOldST()) {}
