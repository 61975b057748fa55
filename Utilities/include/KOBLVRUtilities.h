#ifndef KOBLVRUtilities_h
#define KOBLVRUtilities_h

#include "KOBLVRArray.h"
#include "KOBLVRArrayKOBLVRString.h"
#include "KOBLVRAssert.h"
#include "KOBLVRBoolArray.h"
#include "KOBLVRExpressionTerm.h"
#include "KOBLVRFile.h"
#include "KOBLVRGlobalParameters.h"
#include "KOBLVRIntArray.h"
#include "KOBLVRListP.h"
#include "KOBLVRListPV.h"
#include "KOBLVROperator.h"
#include "KOBLVRStorage.h"
#include "KOBLVRStream.h"
#include "KOBLVRString.h"

#endif
