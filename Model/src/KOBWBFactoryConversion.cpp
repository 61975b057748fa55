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
            m_byName.emplace(variableNodes[i]->GetName().str(), factoryVariables[i]);
}

namespace {

std::vector<KOBWBNode*> Children(const KOBWBOpNode& op) {
    std::vector<KOBWBNode*> children;
    for (int i = 1; i <= op.GetNbOfChildren(); ++i) children.push_back(op.GetChild(i));
    return children;
}

bool IsAngleUnit(const KOBWBNode& node) {
    return node.HasUnit() && KOBWBClassifyUnit(node.GetUnit().str()) == KOBWBUnitKind::Angle;
}

} // namespace

bool KOBWBFactoryConversion::IsAmongAngles(const KOBWBEqNode& equation) {
    std::vector<KOBWBNode*> pending{equation.GetLeftTerm(), equation.GetRightTerm()};
    while (!pending.empty()) {
        KOBWBNode* node = pending.back();
        pending.pop_back();
        if (!node) continue;
        if (IsAngleUnit(*node) || node->GetUnitType() == KOBWBUnitClassAngle) return true;
        if (node->GetNodeType() == KOBWBOpNodeType) {
            const std::vector<KOBWBNode*> children = Children(static_cast<KOBWBOpNode&>(*node));
            pending.insert(pending.end(), children.begin(), children.end());
        }
    }
    return false;
}

KOBWBExpression* KOBWBFactoryConversion::ConvertTerm(KOBWBNode* term, bool amongAngles) {
    if (!term) return nullptr;
    // Post-order walk: a frame converts its node once the results of all its
    // children stand on the result stack above its base.
    struct Frame {
        KOBWBNode* node;
        int nextChild;
        size_t base;
    };
    std::vector<Frame> frames{{term, 1, 0}};
    std::vector<KOBWBExpression*> results;
    while (!frames.empty()) {
        const size_t top = frames.size() - 1;
        KOBWBNode* node = frames[top].node;
        if (node && node->GetNodeType() == KOBWBOpNodeType) {
            const auto* op = static_cast<KOBWBOpNode*>(node);
            if (frames[top].nextChild <= op->GetNbOfChildren()) {
                KOBWBNode* child = op->GetChild(frames[top].nextChild++);
                frames.push_back({child, 1, results.size()});
                continue;
            }
        }
        const size_t base = frames[top].base;
        const int count = static_cast<int>(results.size() - base);
        KOBWBExpression* built = node ? Build(node, results.data() + base, count, amongAngles) : nullptr;
        results.resize(base);
        results.push_back(built);
        frames.pop_back();
    }
    return results.back();
}

KOBWBExpression* KOBWBFactoryConversion::Variable(KOBWBNode* node) {
    auto* occurrence = static_cast<KOBWBVarNode*>(node);
    const std::string name = occurrence->GetName().str();
    const auto known = m_byName.find(name);
    if (known != m_byName.end()) return known->second;
    KOBWBVariable* variable = m_factory.CreateVariable();
    if (!variable) return nullptr;
    variable->SetName(occurrence->GetName());
    m_byName.emplace(name, variable);
    m_variableNodes.Append(occurrence);
    m_factoryVariables.Append(variable);
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
KOBWBExpression* KOBWBFactoryConversion::Chain(KOBWBExpressionType type, KOBWBExpression** children,
                                               int count) {
    if (count != 2) return nullptr;
    const bool product = type == KOBWBProductType;
    KOBWBExpression* left = children[0];
    KOBWBExpression* right = type == KOBWBMinusType ? m_factory.CreateOpposite(children[1]) : children[1];
    if (!right) return nullptr;
    const KOBWBExpressionType family = product ? KOBWBProductType : KOBWBSumType;
    if (left->GetType() == family && m_chains.count(left)) {
        left->AddChild(right);
        return left;
    }
    KOBWBExpression* chain = product ? m_factory.CreateProduct(left, right) : m_factory.CreateSum(left, right);
    if (chain) m_chains.insert(chain);
    return chain;
}

KOBWBExpression* KOBWBFactoryConversion::Build(KOBWBNode* node, KOBWBExpression** children, int count,
                                               bool amongAngles) {
    for (int i = 0; i < count; ++i)
        if (!children[i]) return nullptr;
    KOBWBValue factor(1);
    if (node->HasUnit() && !KOBWBGetUnitFactor(node->GetUnit().str(), amongAngles, factor)) return nullptr;
    switch (node->GetNodeType()) {
    case KOBWBConstNodeType: {
        const KOBWBValue value = static_cast<KOBWBConstNode*>(node)->GetValue();
        if (!node->HasUnit()) return m_factory.CreateConstant(value);
        return m_factory.CreateConstant(KOBWBMul(m_factory.GetEnvironment(), value, factor));
    }
    case KOBWBVarNodeType:
    case KOBWBOpNodeType: break;
    default: return nullptr;
    }
    KOBWBExpression* built = nullptr;
    if (node->GetNodeType() == KOBWBVarNodeType) {
        built = Variable(node);
    } else {
        auto* op = static_cast<KOBWBOpNode*>(node);
        switch (op->GetType()) {
        case KOBWBOppositeType: built = count == 1 ? m_factory.CreateOpposite(children[0]) : nullptr; break;
        case KOBWBSumType:
        case KOBWBMinusType:
        case KOBWBProductType: built = Chain(op->GetType(), children, count); break;
        case KOBWBLessEqualType:
            built = count == 2 ? Comparison(m_factory, op->GetComparisonType(), children[0], children[1]) : nullptr;
            break;
        case KOBWBBlackBoxType:
            built = op->GetBlackBox() ? m_factory.DeclareBlackBox(op->GetBlackBox(), count, children, 0) : nullptr;
            break;
        default: built = m_factory.CreateOperator(op->GetType(), count, children); break;
        }
    }
    if (!built || !node->HasUnit() || factor.IsEqualTo(m_factory.GetEnvironment(), KOBWBValue(1))) return built;
    return m_factory.CreateProduct(built, m_factory.CreateConstant(factor));
}
