#include "KOBWBFactoryConversion.h"

#include "KOBWBArithmetic.h"
#include "KOBWBConstNode.h"
#include "KOBWBEqNode.h"
#include "KOBWBFactory.h"
#include "KOBWBOpNode.h"
#include "KOBWBUnitClass.h"
#include "KOBWBUnitConversion.h"
#include "KOBWBUnitTable.h"
#include "KOBWBVarNode.h"
#include "KOBWBVariable.h"

#include <cstring>

KOBWBFactoryConversion::KOBWBFactoryConversion(KOBWBFactory& factory,
                                               KOBLVRListPKOBWBVarNode& variableNodes,
                                               KOBLVRListPKOBWBVariable& factoryVariables)
    : m_factory(factory), m_variableNodes(variableNodes), m_factoryVariables(factoryVariables) {
    const int known = variableNodes.Size() < factoryVariables.Size() ? variableNodes.Size()
                                                                       : factoryVariables.Size();
    for (int i = 0; i < known; ++i)
        if (variableNodes[i] && factoryVariables[i])
            m_given.emplace(variableNodes[i]->GetName().str(), factoryVariables[i]);
}

namespace {

bool IsAngleUnit(const KOBWBNode& node) {
    return node.HasUnit() && KOBWBClassifyUnit(node.GetUnit()) == KOBWBUnitKind::Angle;
}

} // namespace

void KOBWBFactoryConversion::BeginEquation(const KOBWBEqNode& equation) {
    m_equation = &equation;
    m_amongAngles = Angles::Unknown;
}

bool KOBWBFactoryConversion::IsAmongAngles() {
    if (m_amongAngles != Angles::Unknown) return m_amongAngles == Angles::Yes;
    m_amongAngles = Angles::No;
    m_pending.assign({m_equation->GetLeftTerm(), m_equation->GetRightTerm()});
    while (!m_pending.empty()) {
        KOBWBNode* node = m_pending.back();
        m_pending.pop_back();
        if (!node) continue;
        if (IsAngleUnit(*node) || node->GetUnitType() == KOBWBUnitClassAngle) {
            m_amongAngles = Angles::Yes;
            break;
        }
        if (node->GetNodeType() != KOBWBOpNodeType) continue;
        const auto* op = static_cast<KOBWBOpNode*>(node);
        for (int i = 1; i <= op->GetNbOfChildren(); ++i) m_pending.push_back(op->GetChild(i));
    }
    return m_amongAngles == Angles::Yes;
}

void KOBWBFactoryConversion::Visit(KOBWBNode* node) {
    if (node && node->GetNodeType() == KOBWBOpNodeType)
        m_frames.emplace_back(static_cast<KOBWBOpNode*>(node), m_results.size());
    else
        m_results.push_back(node ? Build(node, nullptr, 0) : Converted{nullptr, false});
}

KOBWBExpression* KOBWBFactoryConversion::ConvertTerm(KOBWBNode* term) {
    if (!term) return nullptr;
    // Post-order walk: leaves are converted as they are met; a frame converts its
    // operator once the results of all its children stand on the result stack
    // above its base.
    m_frames.clear();
    m_results.clear();
    Visit(term);
    while (!m_frames.empty()) {
        Frame& frame = m_frames.back();
        if (frame.nextChild <= frame.node->GetNbOfChildren()) {
            Visit(frame.node->GetChild(frame.nextChild++));
            continue;
        }
        const size_t base = frame.base;
        const int count = static_cast<int>(m_results.size() - base);
        const Converted built = Build(frame.node, m_results.data() + base, count);
        m_frames.pop_back();
        m_results.resize(base);
        m_results.push_back(built);
    }
    return m_results.back().expression;
}

KOBWBExpression* KOBWBFactoryConversion::Variable(KOBWBNode* node) {
    auto* occurrence = static_cast<KOBWBVarNode*>(node);
    const int index = occurrence->GetNameIndex();
    if (index >= 0 && index < static_cast<int>(m_byNameIndex.size()) && m_byNameIndex[index])
        return m_byNameIndex[index];
    KOBWBVariable* variable = nullptr;
    const auto given = m_given.empty() ? m_given.end() : m_given.find(occurrence->GetName().str());
    if (given != m_given.end()) {
        variable = given->second;
    } else {
        variable = m_factory.CreateVariable();
        if (!variable) return nullptr;
        variable->SetName(occurrence->GetName());
        m_variableNodes.Append(occurrence);
        m_factoryVariables.Append(variable);
        if (index < 0) m_given.emplace(occurrence->GetName().str(), variable);
    }
    if (index >= 0) {
        if (index >= static_cast<int>(m_byNameIndex.size())) m_byNameIndex.resize(static_cast<size_t>(index) + 1);
        m_byNameIndex[index] = variable;
    }
    return variable;
}

namespace {

KOBWBExpression* Comparison(KOBWBFactory& f, KOBWBComparisonType kind, KOBWBExpression* a,
                            KOBWBExpression* b) {
    switch (kind) {
    case KOBWBCompareEqual: return f.CreateEqual(a, b);
    case KOBWBCompareNotEqual: return f.CreateNotEqual(a, b);
    case KOBWBCompareLess: return f.CreateLess(a, b);
    case KOBWBCompareGreaterEqual: return f.CreateGreaterEqual(a, b);
    case KOBWBCompareGreater: return f.CreateGreater(a, b);
    default: return f.CreateLessEqual(a, b);
    }
}

} // namespace

// a + b, a - b and a * b, where a left operand built here as a sum (a product)
// takes b as one more term (factor): a chain of n terms becomes one node of n
// children instead of n - 1 nested nodes.
KOBWBFactoryConversion::Converted KOBWBFactoryConversion::Chain(KOBWBExpressionType type,
                                                                const Converted* children) {
    const bool product = type == KOBWBProductType;
    KOBWBExpression* left = children[0].expression;
    KOBWBExpression* right =
        type == KOBWBMinusType ? m_factory.CreateOpposite(children[1].expression) : children[1].expression;
    if (!right) return {nullptr, false};
    if (children[0].chain && left->GetType() == (product ? KOBWBProductType : KOBWBSumType)) {
        left->AddChild(right);
        return {left, true};
    }
    return {product ? m_factory.CreateProduct(left, right) : m_factory.CreateSum(left, right), true};
}

bool KOBWBFactoryConversion::UnitFactor(const KOBLVRString& unit, KOBWBValue& factor) {
    // Nodes share the texts of the known units, so the last one is found again by
    // its address; the reading of feet and minutes depends on the equation.
    if (&unit == m_lastUnit) {
        factor = m_lastFactor;
        return true;
    }
    const bool ambiguous = KOBWBIsAmbiguousUnit(unit.str());
    if (!KOBWBGetUnitFactor(unit.str(), ambiguous && IsAmongAngles(), factor)) return false;
    m_lastUnit = ambiguous ? nullptr : &unit;
    m_lastFactor = factor;
    return true;
}

KOBWBFactoryConversion::Converted KOBWBFactoryConversion::Build(KOBWBNode* node, const Converted* children,
                                                                int count) {
    const Converted failed = {nullptr, false};
    std::vector<KOBWBExpression*>& expressions = m_childExpressions;
    expressions.clear();
    for (int i = 0; i < count; ++i) {
        if (!children[i].expression) return failed;
        expressions.push_back(children[i].expression);
    }
    KOBWBValue factor(1);
    bool unitFactor = false;
    if (node->HasUnit()) {
        if (!UnitFactor(node->GetUnit(), factor)) return failed;
        unitFactor = !factor.IsAKindOf(KOBWBIntegerValue) || factor.GetAsInteger() != 1;
    }
    Converted built = failed;
    switch (node->GetNodeType()) {
    case KOBWBConstNodeType: {
        const KOBWBValue value = static_cast<KOBWBConstNode*>(node)->GetValue();
        return {m_factory.CreateConstant(unitFactor ? KOBWBMul(m_factory.GetEnvironment(), value, factor) : value),
                false};
    }
    case KOBWBVarNodeType: built.expression = Variable(node); break;
    case KOBWBOpNodeType: {
        auto* op = static_cast<KOBWBOpNode*>(node);
        KOBWBExpression** arguments = expressions.data();
        switch (op->GetType()) {
        case KOBWBOppositeType:
            if (count == 1) built.expression = m_factory.CreateOpposite(arguments[0]);
            break;
        case KOBWBSumType:
        case KOBWBMinusType:
        case KOBWBProductType:
            if (count == 2) built = Chain(op->GetType(), children);
            break;
        case KOBWBLessEqualType:
            if (count == 2) built.expression = Comparison(m_factory, op->GetComparisonType(), arguments[0], arguments[1]);
            break;
        case KOBWBBlackBoxType:
            if (op->GetBlackBox()) built.expression = m_factory.DeclareBlackBox(op->GetBlackBox(), count, arguments, 0);
            break;
        default: built.expression = m_factory.CreateOperator(op->GetType(), count, arguments); break;
        }
        break;
    }
    default: return failed;
    }
    if (!built.expression || !unitFactor) return built;
    return {m_factory.CreateProduct(built.expression, m_factory.CreateConstant(factor)), false};
}
