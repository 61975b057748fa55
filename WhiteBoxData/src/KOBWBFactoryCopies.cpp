#include "KOBWBFactory.h"

#include "KOBWBBlackBoxOperator.h"
#include "KOBWBConstant.h"
#include "KOBWBEquation.h"
#include "KOBWBVariable.h"

#include <unordered_map>
#include <vector>

// Copying services: one node, a whole graph under a renaming of variables, the
// equations of a set of ids, and the temporary storage that keeps only what the
// equations reach.

namespace {

std::vector<KOBWBExpression*> Children(KOBWBExpression* node) {
    std::vector<KOBWBExpression*> children(static_cast<size_t>(node->GetNbOfChildren()));
    for (size_t i = 0; i < children.size(); ++i) children[i] = node->GetChild(static_cast<int>(i));
    return children;
}

} // namespace

KOBWBExpression* KOBWBFactory::CreateOperator(KOBWBExpression* expr) {
    if (!expr) return nullptr;
    switch (expr->GetType()) {
    case KOBWBVariableType: return expr;
    case KOBWBConstantType: return CreateConstant(expr->GetExprValue());
    case KOBWBBlackBoxType: {
        KOBWBBlackBox* blackBox = static_cast<KOBWBBlackBoxOperator*>(expr)->GetBlackBox();
        std::vector<KOBWBExpression*> children = Children(expr);
        return DeclareBlackBox(blackBox, static_cast<int>(children.size()), children.data(), 0);
    }
    case KOBWBStepType: {
        KOBWBExpression* step = CreateUnaryOperator(KOBWBStepType, expr->GetChild(0));
        for (int i = 0; step && i < expr->GetNbOfParameters(); ++i)
            step->SetParameter(i, expr->GetParameter(i));
        return step;
    }
    default: {
        std::vector<KOBWBExpression*> children = Children(expr);
        return CreateOperator(expr->GetType(), static_cast<int>(children.size()), children.data());
    }
    }
}

namespace {

// A deep copy that keeps the sharing of the source graph: each source node is
// copied once.
class GraphCopier {
public:
    GraphCopier(KOBWBFactory& factory, KOBLVRListPKOBWBExpression& substitution,
                KOBWBExpression* (KOBWBFactory::*copyNode)(KOBWBExpression*))
        : m_factory(factory), m_substitution(substitution), m_copyNode(copyNode) {}

    // Copies root and what lies below it, with an explicit stack so that a deep
    // graph cannot exhaust the call stack: each copy is made over the original
    // children, which are then exchanged for their copies one by one.
    KOBWBExpression* Copy(KOBWBExpression* root) {
        bool made = false;
        KOBWBExpression* rootCopy = Resolve(root, made);
        if (!made) return rootCopy;
        struct Frame {
            KOBWBExpression* node;
            KOBWBExpression* copy;
            int nextChild;
        };
        std::vector<Frame> frames{{root, rootCopy, 0}};
        while (!frames.empty()) {
            const size_t top = frames.size() - 1;
            KOBWBExpression* node = frames[top].node;
            KOBWBExpression* copy = frames[top].copy;
            if (!copy || frames[top].nextChild >= node->GetNbOfChildren()) {
                frames.pop_back();
                continue;
            }
            const int i = frames[top].nextChild++;
            KOBWBExpression* child = node->GetChild(i);
            KOBWBExpression* childCopy = Resolve(child, made);
            if (childCopy) copy->ReplaceChild(i, childCopy);
            if (made) frames.push_back({child, childCopy, 0});
        }
        return rootCopy;
    }

private:
    // The counterpart of node in the copy: its substitute for a variable, the copy
    // already made for a node met before, or a new copy (made tells so, and its
    // children are still to be copied).
    KOBWBExpression* Resolve(KOBWBExpression* node, bool& made) {
        made = false;
        if (!node) return nullptr;
        if (node->GetType() == KOBWBVariableType) {
            const int index = static_cast<KOBWBVariable*>(node)->GetIdx();
            KOBWBExpression* replacement =
                index >= 0 && index < m_substitution.Size() ? m_substitution[index] : nullptr;
            return replacement ? replacement : node;
        }
        const auto known = m_copies.find(node);
        if (known != m_copies.end()) return known->second;
        KOBWBExpression* copy = (m_factory.*m_copyNode)(node);
        m_copies.emplace(node, copy);
        made = copy != nullptr;
        return copy;
    }

    KOBWBFactory& m_factory;
    KOBLVRListPKOBWBExpression& m_substitution;
    KOBWBExpression* (KOBWBFactory::*m_copyNode)(KOBWBExpression*);
    std::unordered_map<KOBWBExpression*, KOBWBExpression*> m_copies;
};

} // namespace

KOBWBExpression* KOBWBFactory::CloneExpression(KOBWBExpression* expr,
                                               KOBLVRListPKOBWBExpression& substitution) {
    GraphCopier copier(*this, substitution, &KOBWBFactory::CreateOperator);
    return copier.Copy(expr);
}

KOBWBExpression* KOBWBFactory::CloneExpression(KOBWBExpression* expr) {
    KOBLVRListPKOBWBExpression none;
    return CloneExpression(expr, none);
}

int KOBWBFactory::CloneEquations(KOBLVRIntArray& sourceIds, KOBLVRIntArray& newIds,
                                 KOBLVRArrayKOBLVRString& oldNames, KOBLVRArrayKOBLVRString& newNames) {
    if (oldNames.Size() != newNames.Size()) return 0;
    KOBLVRListPKOBWBExpression substitution;
    substitution.Size(GetNbOfVariables(), nullptr);
    for (int i = 0; i < oldNames.Size(); ++i) {
        KOBWBVariable* old = GetVariable(oldNames[i]);
        if (!old) continue;
        KOBWBVariable* renamed = GetVariable(newNames[i]);
        if (!renamed) {
            renamed = CreateVariable();
            if (!renamed) continue;
            renamed->SetName(newNames[i]);
        }
        substitution[old->GetIdx()] = renamed;
    }
    newIds.Fill(sourceIds.Size(), -1);
    for (int i = 0; i < sourceIds.Size(); ++i) {
        KOBWBEquation* source = GetEquationById(sourceIds[i]);
        if (!source) continue;
        KOBWBEquation* copy = AddEquation(CloneExpression(source->GetRoot(), substitution), source->GetType());
        if (copy) newIds[i] = copy->GetId();
    }
    return 0;
}

void KOBWBFactory::UseTemporaryStorage(unsigned char on) {
    if (on) {
        m_temporaryMode = 1;
        return;
    }
    m_temporaryMode = 0;
    for (KOBWBEquation* equation = GetFirstEquation(); equation; equation = equation->GetNext())
        equation->SetRoot(ReplaceTemporaryExpressions(equation->GetRoot()));
    m_temporaryExpressions.DeleteAll();
}

KOBWBExpression* KOBWBFactory::ReplaceTemporaryExpressions(KOBWBExpression* expr) {
    if (!expr) return nullptr;
    if (expr->GetProperty(m_temporaryProperty) != GetDefaultPropertyValue(m_temporaryProperty)) {
        KOBWBExpression* copy = CreateOperator(expr);
        if (!copy) return nullptr;
        const int properties = m_properties ? static_cast<int>(m_properties->size()) : 0;
        for (int p = 0; p < properties; ++p)
            if (p != m_temporaryProperty) copy->SetProperty(p, expr->GetProperty(p));
        expr = copy;
    }
    for (int i = 0; i < expr->GetNbOfChildren(); ++i)
        expr->ReplaceChild(i, ReplaceTemporaryExpressions(expr->GetChild(i)));
    return expr;
}
