#include "KOBWBModel.h"

#include "KOBWBBlackBox.h"
#include "KOBWBConstNode.h"
#include "KOBWBEqNode.h"
#include "KOBWBModelStatus.h"
#include "KOBWBNodeStore.h"
#include "KOBWBNodeUnit.h"
#include "KOBWBNodeWalk.h"
#include "KOBWBOpNode.h"
#include "KOBWBVarNode.h"
#include "KOBWBVariableIndex.h"
#include "KOBWBVisitor.h"

#include <algorithm>

KOBWBModel::KOBWBModel(int level)
    : m_level(level), m_variables(new KOBWBVariableIndex), m_nodes(new KOBWBNodeStore) {}

KOBWBModel::~KOBWBModel() = default;

long KOBWBModel::Accept(KOBWBVisitor& visitor) {
    return visitor.VisitModel(*this);
}

template <class T> T* KOBWBModel::Own(long status, T* node) {
    if (status != KOBWBModelOk || !node) return nullptr;
    m_nodes->Take(node);
    return node;
}

void* KOBWBModel::Room(size_t size) {
    return m_nodes->Allocate(size);
}

KOBWBConstNode* KOBWBModel::CreateConstant(const KOBWBLocation& location, const KOBWBValue& value) {
    KOBWBConstNode* node = nullptr;
    const long status = KOBWBConstNode::New(location, value, node, Room(sizeof(KOBWBConstNode)));
    return Own(status, node);
}

KOBWBConstNode* KOBWBModel::CreateConstant(const KOBWBLocation& location, const KOBWBValue& value,
                                           const KOBWBLocation& unitLocation,
                                           const KOBLVRString& unit) {
    KOBWBConstNode* node = nullptr;
    // The unit's data goes right after the node, which it is read with.
    void* room = Room(sizeof(KOBWBConstNode));
    void* unitRoom = room ? Room(sizeof(KOBWBNodeUnit)) : nullptr;
    const long status =
        KOBWBConstNode::New(location, value, unitLocation, unit, node, room, unitRoom);
    return Own(status, node);
}

KOBWBVarNode* KOBWBModel::CreateVariable(const KOBWBLocation& location, const KOBLVRString& name) {
    return CreateVariable(location, name.str());
}

KOBWBVarNode* KOBWBModel::CreateVariable(const KOBWBLocation& location, const char* name) {
    KOBWBVarNode* node = m_variables->Create(location, name, Room(sizeof(KOBWBVarNode)));
    return Own(node ? KOBWBModelOk : KOBWBModelFailure, node);
}

KOBWBOpNode* KOBWBModel::CreateOperator(const KOBWBLocation& location, KOBWBExpressionType type,
                                        const KOBLVRListPKOBWBNode& children) {
    return CreateOperator(location, type, KOBWBNoComparison, children);
}

KOBWBOpNode* KOBWBModel::CreateOperator(const KOBWBLocation& location, KOBWBExpressionType type,
                                        KOBWBComparisonType comparison,
                                        const KOBLVRListPKOBWBNode& children) {
    KOBWBOpNode* node = nullptr;
    const long status =
        KOBWBOpNode::New(location, type, comparison, children, node, Room(sizeof(KOBWBOpNode)));
    return Own(status, node);
}

KOBWBOpNode* KOBWBModel::CreateOperator(const KOBWBLocation& location, KOBWBExpressionType type,
                                        KOBWBComparisonType comparison, int count,
                                        KOBWBNode* const* children) {
    KOBWBOpNode* node = nullptr;
    const long status = KOBWBOpNode::New(location, type, comparison, count, children, node,
                                         Room(sizeof(KOBWBOpNode)));
    return Own(status, node);
}

KOBWBOpNode* KOBWBModel::DeclareBlackBox(const KOBWBLocation& location, KOBWBBlackBox* blackBox,
                                         const KOBLVRListPKOBWBNode& arguments) {
    if (!blackBox) return nullptr;
    KOBWBOpNode* node = nullptr;
    const long status = KOBWBOpNode::NewCall(location, blackBox, blackBox->GetName(), arguments,
                                             node, Room(sizeof(KOBWBOpNode)));
    if (Own(status, node) && m_blackBoxes.Locate(blackBox) < 0) m_blackBoxes.Append(blackBox);
    return node;
}

KOBWBOpNode* KOBWBModel::GetBBxOp(const KOBWBLocation& location, const KOBLVRString& name,
                                  const KOBLVRListPKOBWBNode& arguments) {
    KOBWBBlackBox* declared = nullptr;
    for (int i = 0; i < m_blackBoxes.Size() && !declared; ++i)
        if (m_blackBoxes[i]->GetName() == name) declared = m_blackBoxes[i];
    KOBWBOpNode* node = nullptr;
    const long status =
        KOBWBOpNode::NewCall(location, declared, name, arguments, node, Room(sizeof(KOBWBOpNode)));
    return Own(status, node);
}

KOBWBEqNode* KOBWBModel::AddEquation(const KOBWBLocation& location, KOBWBNode* left,
                                     KOBWBEquationType type, KOBWBNode* right) {
    KOBWBEqNode* equation = nullptr;
    const long status = KOBWBEqNode::New(location, left, type, right, m_nextId, equation,
                                         Room(sizeof(KOBWBEqNode)));
    if (!Own(status, equation)) return nullptr;
    ++m_nextId;
    equation->SetPrev(m_last);
    if (m_last)
        m_last->SetNext(equation);
    else
        m_first = equation;
    m_last = equation;
    ++m_nbOfEquations;
    m_equationsById.push_back(equation);
    return equation;
}

KOBWBEqNode* KOBWBModel::AddEquation(KOBWBNode* term) {
    if (!term) return nullptr;
    return AddEquation(term->GetLocation(), term, KOBWBEqUndefined, nullptr);
}

KOBWBEqNode* KOBWBModel::GetNextEquation(const KOBWBEqNode* equation) const {
    return equation ? equation->GetNext() : nullptr;
}

KOBWBEqNode* KOBWBModel::GetPrevEquation(const KOBWBEqNode* equation) const {
    return equation ? equation->GetPrev() : nullptr;
}

KOBWBEqNode* KOBWBModel::GetEquationById(int id) const {
    // Ids are handed out in order and rarely removed, so an equation mostly sits
    // at its id's distance from the first one; the search is for the others.
    if (!m_equationsById.empty()) {
        const long long guess = static_cast<long long>(id) - m_equationsById.front()->GetId();
        if (guess >= 0 && guess < static_cast<long long>(m_equationsById.size()) &&
            m_equationsById[static_cast<size_t>(guess)]->GetId() == id)
            return m_equationsById[static_cast<size_t>(guess)];
    }
    const auto found = std::lower_bound(
        m_equationsById.begin(), m_equationsById.end(), id,
        [](const KOBWBEqNode* equation, int wanted) { return equation->GetId() < wanted; });
    return found != m_equationsById.end() && (*found)->GetId() == id ? *found : nullptr;
}

int KOBWBModel::GetNbOfVariables() const {
    return m_variables->GetNbOfOccurrences();
}

int KOBWBModel::GetNbOfDifferentVariables() const {
    return m_variables->GetNbOfLiveNames();
}

KOBWBVarNode* KOBWBModel::GetVariable(const KOBLVRString& name) const {
    return m_variables->GetFirst(name.str());
}

KOBWBVarNode* KOBWBModel::GetVariable(const char* name) const {
    return m_variables->GetFirst(name);
}

KOBWBVarNode* KOBWBModel::GetVariable(const KOBLVRString& name,
                                      const KOBWBLocation& location) const {
    return m_variables->Find(name.str(), location);
}

KOBWBVarNode* KOBWBModel::GetVariable(const char* name, const KOBWBLocation& location) const {
    return m_variables->Find(name, location);
}

int KOBWBModel::GetVariable(const KOBLVRString& name, KOBLVRListPKOBWBVarNode& occurrences) const {
    return m_variables->AppendOccurrences(m_variables->IndexOf(name.str()), occurrences);
}

void KOBWBModel::SetUnitTypes(const std::vector<const KOBLVRString*>& classes) {
    m_variables->SetUnitTypes(classes);
}

void KOBWBModel::ForeseeVariable(const char* name, size_t length) const {
    m_variables->Foresee(name, length);
}

int KOBWBModel::GetNbOfVariableNames() const {
    return m_variables->GetNbOfNames();
}

int KOBWBModel::GetOccurrences(int nameIndex, KOBLVRListPKOBWBVarNode& occurrences) const {
    return m_variables->AppendOccurrences(nameIndex, occurrences);
}

int KOBWBModel::GetVariables(KOBLVRListPKOBWBVarNode& occurrences) const {
    return m_variables->AppendAll(occurrences);
}

void KOBWBModel::GetBlackBoxes(KOBLVRListPKOBWBBlackBox& blackBoxes) const {
    blackBoxes.Append(m_blackBoxes);
}

long KOBWBModel::RemoveEquation(KOBWBEqNode*& equation) {
    if (!equation || GetEquationById(equation->GetId()) != equation) return KOBWBModelFailure;
    KOBWBEqNode* prev = equation->GetPrev();
    KOBWBEqNode* next = equation->GetNext();
    if (prev)
        prev->SetNext(next);
    else
        m_first = next;
    if (next)
        next->SetPrev(prev);
    else
        m_last = prev;
    --m_nbOfEquations;
    m_equationsById.erase(std::lower_bound(
        m_equationsById.begin(), m_equationsById.end(), equation->GetId(),
        [](const KOBWBEqNode* stored, int wanted) { return stored->GetId() < wanted; }));
    FreeSubtree(equation);
    equation = nullptr;
    return KOBWBModelOk;
}

void KOBWBModel::FreeSubtree(KOBWBNode* root) {
    std::vector<KOBWBNode*> nodes;
    std::vector<KOBWBVarNode*> variables;
    KOBWBWalkSubtree(root, [&](KOBWBNode* node) {
        nodes.push_back(node);
        if (node->GetNodeType() == KOBWBVarNodeType)
            variables.push_back(static_cast<KOBWBVarNode*>(node));
    });
    m_variables->Remove(variables);
    for (KOBWBNode* node : nodes)
        m_nodes->Free(node);
}
