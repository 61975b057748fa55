#ifndef KOBWBFactoryConversion_h
#define KOBWBFactoryConversion_h

#include "KOBWBDataLists.h"
#include "KOBWBExpressionType.h"
#include "KOBWBModelLists.h"
#include "KOBWBValue.h"

#include <string>
#include <unordered_map>
#include <vector>

class KOBWBEqNode;
class KOBWBExpression;
class KOBWBFactory;
class KOBWBNode;
class KOBWBOpNode;

// Builds factory expressions from model terms: one factory variable per distinct
// name, the factory creation of each operator's code, constants in the factory's
// internal units. Terms are walked with an explicit stack, so the depth of a
// model tree is limited by memory only.
class KOBWBFactoryConversion {
public:
    KOBWBFactoryConversion(KOBWBFactory& factory, KOBLVRListPKOBWBVarNode& variableNodes,
                           KOBLVRListPKOBWBVariable& factoryVariables);

    // Starts the terms of an equation.
    void BeginEquation(const KOBWBEqNode& equation);
    // The factory expression of a term of the current equation; null when a node
    // has no factory counterpart (an unknown unit or function, a call of an
    // unknown black box, a wrong number of arguments).
    KOBWBExpression* ConvertTerm(KOBWBNode* term);

private:
    // A converted node; chain tells that it is a sum or product built here from
    // operators of the text, which no other node shares yet.
    struct Converted {
        KOBWBExpression* expression;
        bool chain;
    };
    // An operator waiting for its children: their results stand on the result
    // stack from base on.
    struct Frame {
        Frame(KOBWBOpNode* op, size_t resultBase) : node(op), base(resultBase) {}
        KOBWBOpNode* node;
        int nextChild = 1;
        size_t base;
    };

    // Converts a leaf (or a null node) at once; stacks a frame for an operator.
    void Visit(KOBWBNode* node);
    Converted Build(KOBWBNode* node, const Converted* children, int count);
    // The factor into the factory's units of a unit text; false for an unknown unit.
    bool UnitFactor(const KOBLVRString& unit, KOBWBValue& factor);
    // Whether the ambiguous units of the current equation ("'" and '"') are
    // minutes and seconds of arc: the equation involves an angle. Decided when
    // first asked.
    bool IsAmongAngles();
    KOBWBExpression* Variable(KOBWBNode* node);
    Converted Chain(KOBWBExpressionType type, const Converted* children);

    KOBWBFactory& m_factory;
    KOBLVRListPKOBWBVarNode& m_variableNodes;
    KOBLVRListPKOBWBVariable& m_factoryVariables;
    // The variables given by the caller, by name.
    std::unordered_map<std::string, KOBWBVariable*> m_given;
    // The factory variable of each name index of the model.
    std::vector<KOBWBVariable*> m_byNameIndex;
    std::vector<Frame> m_frames;
    std::vector<Converted> m_results;
    std::vector<KOBWBNode*> m_pending;
    std::vector<KOBWBExpression*> m_childExpressions;
    const KOBWBEqNode* m_equation = nullptr;
    enum class Angles { Unknown, Yes, No } m_amongAngles = Angles::Unknown;
    const KOBLVRString* m_lastUnit = nullptr;
    KOBWBValue m_lastFactor;
};

#endif
