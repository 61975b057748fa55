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

#include "KOBWBAlgebraicOperator.h"
#include "KOBWBBinaryOperator.h"
#include "KOBWBBlackBox.h"
#include "KOBWBBlackBoxOperator.h"
#include "KOBWBBooleanOperator.h"
#include "KOBWBConstant.h"
#include "KOBWBDataLists.h"
#include "KOBWBDerivBlackBox.h"
#include "KOBWBEquation.h"
#include "KOBWBEquationType.h"
#include "KOBWBExpression.h"
#include "KOBWBExpressionType.h"
#include "KOBWBFactory.h"
#include "KOBWBIfThenElseOperator.h"
#include "KOBWBOperator.h"
#include "KOBWBOperatorFamilies.h"
#include "KOBWBTrigonometricOperator.h"
#include "KOBWBUnaryOperator.h"
#include "KOBWBVariable.h"

#endif
