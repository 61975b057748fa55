#include "KOBWBModel.h"

#include "KOBWBEqNode.h"
#include "KOBWBFactory.h"
#include "KOBWBFactoryConversion.h"
#include "KOBWBModelGraphDump.h"
#include "KOBWBPrefetch.h"

#include "KOBWBEquation.h"

long KOBWBModel::FillFactory(KOBWBFactory& factory, KOBLVRIntArray& equationIds, int count,
                             KOBLVRListPKOBWBVarNode& variableNodes,
                             KOBLVRListPKOBWBVariable& factoryVariables) {
    // A dump of the model for inspection when the environment asks for one.
    KOBWBModelGraphDump::WriteFile(*this);
    KOBWBFactoryConversion conversion(factory, variableNodes, factoryVariables);
    const int last = count < 0 || count > equationIds.Size() ? equationIds.Size() : count;
    long made = 0;
    for (int i = 0; i < last; ++i) {
        const KOBWBEqNode* equation = GetEquationById(equationIds[i]);
        equationIds[i] = -1;
        if (!equation) continue;
        KOBWBPrefetchNextEquation(equation);
        conversion.BeginEquation(*equation);
        KOBWBExpression* left = conversion.ConvertTerm(equation->GetLeftTerm());
        KOBWBNode* rightTerm = equation->GetRightTerm();
        KOBWBExpression* right = rightTerm ? conversion.ConvertTerm(rightTerm) : nullptr;
        if (!left || (rightTerm && !right)) continue;
        KOBWBEquation* converted = factory.AddEquation(left, equation->GetWBEqType(), right);
        if (!converted) continue;
        equationIds[i] = converted->GetId();
        ++made;
    }
    return made;
}
