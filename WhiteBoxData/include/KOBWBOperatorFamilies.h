#ifndef KOBWBOperatorFamilies_h
#define KOBWBOperatorFamilies_h

#include "KOBWBAlgebraicOperator.h"
#include "KOBWBBinaryOperator.h"
#include "KOBWBBooleanOperator.h"
#include "KOBWBIfThenElseOperator.h"
#include "KOBWBTrigonometricOperator.h"
#include "KOBWBUnaryOperator.h"

#endif
