#ifndef KOBWBFactoryConversion_h
#define KOBWBFactoryConversion_h

#include "KOBWBDataLists.h"
#include "KOBWBExpressionType.h"
#include "KOBWBModelLists.h"

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

class KOBWBEqNode;
class KOBWBExpression;
class KOBWBFactory;
class KOBWBNode;

// Builds factory expressions from model terms: one factory variable per distinct
// name, the factory creation of each operator's code, constants in the factory's
// internal units. Terms are walked with an explicit stack, so the depth of a
// model tree is limited by memory only.
class KOBWBFactoryConversion {
public:
    KOBWBFactoryConversion(KOBWBFactory& factory, KOBLVRListPKOBWBVarNode& variableNodes,
                           KOBLVRListPKOBWBVariable& factoryVariables);

    // The root of the factory equation of the model equation; null when a node
    // has no factory counterpart (an unknown unit or function, a call of an
    // unknown black box, a wrong number of arguments).
    KOBWBExpression* ConvertTerm(KOBWBNode* term, bool amongAngles);
    // Whether the ambiguous units of the equation ("'" and '"') are read as
    // minutes and seconds of arc: the equation involves an angle.
    static bool IsAmongAngles(const KOBWBEqNode& equation);

private:
    KOBWBExpression* Build(KOBWBNode* node, KOBWBExpression** children, int count, bool amongAngles);
    KOBWBExpression* Variable(KOBWBNode* node);
    KOBWBExpression* Chain(KOBWBExpressionType type, KOBWBExpression** children, int count);

    KOBWBFactory& m_factory;
    KOBLVRListPKOBWBVarNode& m_variableNodes;
    KOBLVRListPKOBWBVariable& m_factoryVariables;
    std::unordered_map<std::string, KOBWBVariable*> m_byName;
    // Sums and products built here from operators of the text, which no other
    // node shares yet.
    std::unordered_set<KOBWBExpression*> m_chains;
};

#endif
