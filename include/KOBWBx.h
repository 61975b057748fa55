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

#include "KOBWBBlackBox.h"

#include "KOBWBComparisonType.h"
#include "KOBWBConstNode.h"
#include "KOBWBEqNode.h"
#include "KOBWBLocation.h"
#include "KOBWBModel.h"
#include "KOBWBModelCheck.h"
#include "KOBWBModelHomogeneity.h"
#include "KOBWBModelLists.h"
#include "KOBWBModelStatus.h"
#include "KOBWBNode.h"
#include "KOBWBNodeType.h"
#include "KOBWBOpNode.h"
#include "KOBWBParser.h"
#include "KOBWBParserMessenger.h"
#include "KOBWBUnitClass.h"
#include "KOBWBVarNode.h"
#include "KOBWBVisitor.h"

#endif
