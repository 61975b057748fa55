#include "KOBWBFactory.h"

#include "KOBWBAlgebraicOperator.h"
#include "KOBWBBlackBox.h"
#include "KOBWBBlackBoxOperator.h"
#include "KOBWBConstant.h"
#include "KOBWBEquation.h"
#include "KOBWBNodeMap.h"
#include "KOBWBOperatorTable.h"
#include "KOBWBVariable.h"

#include <new>
#include <unordered_map>
#include <vector>

// Copying services: one node, a whole graph under a renaming of variables, the
// equations of a set of ids, and the temporary storage that keeps only what the
// equations reach.

namespace {

// The children of a node, kept in place for the few that most nodes have, so that
// copying a node costs no allocation besides the copy.
class ChildList {
public:
    explicit ChildList(KOBWBExpression* node) : m_count(node->GetNbOfChildren()) {
        if (m_count > inlineCount) m_heap.resize(static_cast<size_t>(m_count));
        KOBWBExpression** data = Data();
        for (int i = 0; i < m_count; ++i) data[i] = node->GetChild(i);
    }
    int Size() const { return m_count; }
    KOBWBExpression** Data() { return m_count > inlineCount ? m_heap.data() : m_inline; }

private:
    static constexpr int inlineCount = 8;
    int m_count;
    KOBWBExpression* m_inline[inlineCount];
    std::vector<KOBWBExpression*> m_heap;
};

} // namespace

KOBWBExpression* KOBWBFactory::CreateOperator(KOBWBExpression* expr) {
    if (!expr) return nullptr;
    switch (expr->GetType()) {
    case KOBWBVariableType: return expr;
    case KOBWBConstantType: return CreateConstant(expr->GetExprValue());
    case KOBWBBlackBoxType: {
        KOBWBBlackBox* blackBox = static_cast<KOBWBBlackBoxOperator*>(expr)->GetBlackBox();
        ChildList children(expr);
        return DeclareBlackBox(blackBox, children.Size(), children.Data(), 0);
    }
    case KOBWBStepType: {
        KOBWBExpression* step = CreateUnaryOperator(KOBWBStepType, expr->GetChild(0));
        for (int i = 0; step && i < expr->GetNbOfParameters(); ++i)
            step->SetParameter(i, expr->GetParameter(i));
        return step;
    }
    default: {
        ChildList children(expr);
        const int count = children.Size();
        // A sum, product, minimum or maximum may have lost children down to one or
        // none: the copy keeps them as they are, where the creation forms want two.
        if (kobwb::FamilyOf(expr->GetType()) == kobwb::OperatorFamily::Algebraic)
            return AddExpression(new (*this) KOBWBAlgebraicOperator(*this, expr->GetType(), count, children.Data()));
        return CreateOperator(expr->GetType(), count, children.Data());
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
        std::vector<Frame> frames;
        frames.reserve(32);
        frames.push_back({root, rootCopy, 0});
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
        if (KOBWBExpression* const* known = m_copies.Find(node)) return *known;
        KOBWBExpression* copy = (m_factory.*m_copyNode)(node);
        m_copies.Insert(node, copy);
        made = copy != nullptr;
        return copy;
    }

    KOBWBFactory& m_factory;
    KOBLVRListPKOBWBExpression& m_substitution;
    KOBWBExpression* (KOBWBFactory::*m_copyNode)(KOBWBExpression*);
    // Most graphs copied are a handful of nodes: the map keeps those in place.
    kobwb::NodeMap<KOBWBExpression*> m_copies;
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

// The nodes that outlast temporary storage. A temporary node that something lasting
// reaches (an equation's root, a permanent node, a declared black box) gets one
// permanent copy, however many paths lead to it, so that the copies share what the
// temporary nodes shared; the copy carries the node's properties but "temporary".
// A node that cannot be copied is kept itself rather than left to be destroyed under
// a lasting parent. Temporary means made in temporary mode (a mark of the node's that
// callers cannot change), whatever the node's "temporary" property says. The copies
// are found by the temporary nodes' slots, which follow their order on the list. The
// walk keeps its own stack: temporary graphs may be deep.
struct KOBWBFactory::TemporaryCopier {
    TemporaryCopier(KOBWBFactory& factory, int properties, int temporaryProperty)
        : m_factory(factory), m_properties(properties), m_temporaryProperty(temporaryProperty) {
        // The first and the last slotted node, looked for from each end of the list:
        // the nodes between them are not read here.
        const KOBLVRListPKOBWBExpression& temporaries = factory.m_temporaryExpressions;
        for (int i = 0; i < temporaries.Size() && m_firstSlot < 0; ++i) m_firstSlot = temporaries[i]->m_slot;
        for (int i = temporaries.Size() - 1; i >= 0 && m_lastSlot < 0; --i) m_lastSlot = temporaries[i]->m_slot;
        if (m_firstSlot >= 0) m_bySlot.assign(static_cast<size_t>(m_lastSlot - m_firstSlot) + 1, nullptr);
    }

    // node itself when it is not temporary, else its lasting counterpart, made on
    // first request; either way with lasting children.
    KOBWBExpression* Lasting(KOBWBExpression* node) {
        bool made = false;
        KOBWBExpression* lasting = Counterpart(node, made);
        if (lasting) ExchangeTemporaryChildren(lasting);
        return lasting;
    }

    // Puts lasting counterparts in place of the temporary children of node, and of
    // the nodes made for them.
    void ExchangeTemporaryChildren(KOBWBExpression* node) {
        m_pending.assign(1, node);
        while (!m_pending.empty()) {
            KOBWBExpression* parent = m_pending.back();
            m_pending.pop_back();
            for (int i = 0; i < parent->GetNbOfChildren(); ++i) {
                KOBWBExpression* child = parent->GetChild(i);
                bool made = false;
                KOBWBExpression* lasting = Counterpart(child, made);
                if (lasting != child) parent->ReplaceChild(i, lasting);
                if (made) m_pending.push_back(lasting);
            }
        }
    }

    // Whether the temporary node is to stay as it is, having no copy.
    bool IsKept(KOBWBExpression* node) { return Entry(node) == node; }

private:
    static bool IsTemporary(const KOBWBExpression* node) {
        return node && (node->m_flags & KOBWBExpression::temporaryNode);
    }

    // The place of a temporary node's counterpart.
    KOBWBExpression*& Entry(KOBWBExpression* node) {
        const int slot = node->m_slot;
        if (slot >= m_firstSlot && slot <= m_lastSlot && m_firstSlot >= 0)
            return m_bySlot[static_cast<size_t>(slot - m_firstSlot)];
        return m_unslotted[node];
    }

    // The counterpart of node without looking below it; made tells that it is new
    // and that its children are still those of the temporary node.
    KOBWBExpression* Counterpart(KOBWBExpression* node, bool& made) {
        made = false;
        if (!IsTemporary(node)) return node;
        KOBWBExpression*& entry = Entry(node);
        if (entry) return entry;
        KOBWBExpression* copy = m_factory.CreateOperator(node);
        if (copy) {
            for (int p = 0; p < m_properties; ++p)
                if (p != m_temporaryProperty) copy->SetProperty(p, node->GetProperty(p));
        }
        // Making the copy may have grown the table of unslotted nodes: find the place again.
        Entry(node) = copy ? copy : node;
        made = true;
        return Entry(node);
    }

    KOBWBFactory& m_factory;
    const int m_properties;
    const int m_temporaryProperty;
    int m_firstSlot = -1;
    int m_lastSlot = -1;
    // The counterparts of the temporary nodes by slot, null until made.
    std::vector<KOBWBExpression*> m_bySlot;
    std::unordered_map<const KOBWBExpression*, KOBWBExpression*> m_unslotted;
    // The counterparts made whose children are still those of temporary nodes.
    std::vector<KOBWBExpression*> m_pending;
};

// The temporary nodes that something lasting reaches, marked where they are: each
// is to become permanent itself. The walk keeps its own stack.
struct KOBWBFactory::TemporaryKeeper {
    // node, after marking it and the temporary nodes below it.
    KOBWBExpression* Lasting(KOBWBExpression* node) {
        Reach(node);
        Walk();
        return node;
    }

    // Marks the temporary nodes below node.
    void ExchangeTemporaryChildren(KOBWBExpression* node) {
        m_pending.assign(1, node);
        Walk();
    }

    // Whether the temporary node stays; clears its mark.
    bool IsKept(KOBWBExpression* node) {
        const bool reached = (node->m_flags & KOBWBExpression::reachedFromLastingNodes) != 0;
        node->m_flags &= ~KOBWBExpression::reachedFromLastingNodes;
        return reached;
    }

private:
    void Reach(KOBWBExpression* node) {
        if (!node || !(node->m_flags & KOBWBExpression::temporaryNode) ||
            (node->m_flags & KOBWBExpression::reachedFromLastingNodes))
            return;
        node->m_flags |= KOBWBExpression::reachedFromLastingNodes;
        m_pending.push_back(node);
    }

    void Walk() {
        while (!m_pending.empty()) {
            KOBWBExpression* parent = m_pending.back();
            m_pending.pop_back();
            for (int i = 0; i < parent->GetNbOfChildren(); ++i) Reach(parent->GetChild(i));
        }
    }

    std::vector<KOBWBExpression*> m_pending;
};

template <class Walker>
void KOBWBFactory::LeaveTemporaryMode(Walker& walker) {
    m_temporaryMode = 0;
    if (m_temporaryExpressions.Size() == 0) {
        for (KOBWBExpression* node : m_changedInTemporaryMode) node->m_flags &= ~KOBWBExpression::changedInTemporaryMode;
        m_changedInTemporaryMode.clear();
        return;
    }
    // Each pass below reads temporary nodes, of which there may be far more than fit
    // in the caches: there are as few passes as the order of the work allows.
    for (KOBWBEquation* equation = GetFirstEquation(); equation; equation = equation->GetNext())
        equation->SetRoot(walker.Lasting(equation->GetRoot()));
    // Permanent nodes whose children were changed in temporary mode.
    for (size_t i = 0; i < m_changedInTemporaryMode.size(); ++i) {
        KOBWBExpression* node = m_changedInTemporaryMode[i];
        node->m_flags &= ~KOBWBExpression::changedInTemporaryMode;
        walker.ExchangeTemporaryChildren(node);
    }
    m_changedInTemporaryMode.clear();
    // A black box's node is how it is named and how its derivatives are found again:
    // the box keeps a lasting one.
    const int temporaries = m_temporaryExpressions.Size();
    for (int i = 0; i < temporaries && m_temporaryBlackBoxes > 0; ++i) {
        KOBWBExpression* node = m_temporaryExpressions[i];
        if (node->GetType() != KOBWBBlackBoxType) continue;
        KOBWBBlackBox* blackBox = static_cast<KOBWBBlackBoxOperator*>(node)->GetBlackBox();
        if (blackBox->GetOperator() == node)
            blackBox->SetOperator(static_cast<KOBWBBlackBoxOperator*>(walker.Lasting(node)));
    }
    // One pass from the last node to the first: a node kept becomes lasting, the others
    // go, the later ones first; the kept ones join the list in their order.
    const int defaultTemporary = GetDefaultPropertyValue(m_temporaryProperty);
    std::vector<KOBWBExpression*> kept;
    for (int i = temporaries - 1; i >= 0; --i) {
        KOBWBExpression* node = m_temporaryExpressions[i];
        if (!walker.IsKept(node)) {
            delete node;
            continue;
        }
        node->SetProperty(m_temporaryProperty, defaultTemporary);
        node->m_flags &= ~KOBWBExpression::temporaryNode;
        kept.push_back(node);
    }
    for (auto node = kept.rbegin(); node != kept.rend(); ++node) m_expressions.Append(*node);
    m_temporaryExpressions.RemoveAll();
    m_temporaryBlackBoxes = 0;
}

void KOBWBFactory::UseTemporaryStorage(unsigned char on) {
    if (on) {
        m_temporaryMode = 1;
        return;
    }
    const int properties = m_properties ? static_cast<int>(m_properties->size()) : 0;
    TemporaryCopier copier(*this, properties, m_temporaryProperty);
    LeaveTemporaryMode(copier);
}

void KOBWBFactory::CommitTemporaryStorage() {
    TemporaryKeeper keeper;
    LeaveTemporaryMode(keeper);
}

KOBWBExpression* KOBWBFactory::ReplaceTemporaryExpressions(KOBWBExpression* expr) {
    if (!expr) return nullptr;
    const int properties = m_properties ? static_cast<int>(m_properties->size()) : 0;
    return TemporaryCopier(*this, properties, m_temporaryProperty).Lasting(expr);
}
