#include "KOBWBEquationTape.h"

#include "KOBWBEnvironment.h"
#include "KOBWBEquation.h"
#include "KOBWBExpression.h"
#include "KOBWBLimits.h"
#include "KOBWBOperatorTable.h"
#include "KOBWBVariable.h"

#include <cmath>
#include <unordered_map>
#include <utility>

namespace kobwb {

namespace {

// Bit 2 of the error flags: an argument of a kind the function does not take.
constexpr unsigned badKind = 2;

// The root's domain narrowed to the equation's relation to 0; false when empty.
bool NarrowRoot(const KOBWBEnvironment& environment, KOBWBEquationType type, KOBWBValue& root) {
    const double max = KOBWBMaxReal;
    switch (type) {
    case KOBWBEqEqual:
        return root.Intersect(environment, KOBWBValue(KOBWBRealInterval{0.0, 0.0}));
    case KOBWBEqLessEqual:
    case KOBWBEqLess:
        return root.Intersect(environment, KOBWBValue(KOBWBRealInterval{-max, 0.0}));
    case KOBWBEqGreaterEqual:
    case KOBWBEqGreater:
        return root.Intersect(environment, KOBWBValue(KOBWBRealInterval{0.0, max}));
    case KOBWBEqNotEqual:
        return !(KOBWBIsExact(environment, root) &&
                 std::fabs(root.GetAsDouble()) <= environment.GetTolerance());
    default:
        return !KOBWBIsEmpty(environment, root);
    }
}

bool Revisable(KOBWBEquationType type) {
    return type >= KOBWBEqEqual && type <= KOBWBEqGreater;
}

// Whether a narrowing changed a domain enough to narrow below it: real intervals by
// their bounds, other kinds by equality under the tolerance and by their element counts.
bool Differs(const KOBWBEnvironment& environment, const KOBWBValue& before,
             const KOBWBValue& after) {
    const KOBWBRealInterval* a = before.GetRealIntervalPayload();
    const KOBWBRealInterval* b = after.GetRealIntervalPayload();
    if (a && b) return a->lower != b->lower || a->upper != b->upper;
    if (before.GetType() != after.GetType()) return true;
    if (before.GetType() == KOBWBIntegerEnumValue)
        return before.GetIntegerEnum().GetSize() != after.GetIntegerEnum().GetSize() ||
               !KOBWBIsEqual(environment, before, after);
    if (before.GetType() == KOBWBRealEnumValue)
        return before.GetRealEnum().GetSize() != after.GetRealEnum().GetSize() ||
               !KOBWBIsEqual(environment, before, after);
    if (before.GetType() == KOBWBBooleanValue) return before.GetAsBoolean() != after.GetAsBoolean();
    return !KOBWBIsEqual(environment, before, after);
}

double WidthOf(const KOBWBValue& v) {
    const KOBWBRealInterval hull = v.GetAsRealInterval();
    return hull.upper - hull.lower;
}

} // namespace

EquationTape MakeTape(const KOBWBEquation& equation) {
    EquationTape tape;
    tape.type = equation.GetType();
    KOBWBExpression* root = equation.GetRoot();
    if (!root) return tape;
    // Depth-first post-order with an explicit stack; reversed, it puts every parent
    // before its children.
    std::vector<KOBWBExpression*> order;
    std::unordered_map<const KOBWBExpression*, int> seen;
    std::vector<std::pair<KOBWBExpression*, int>> stack = {{root, 0}};
    seen.emplace(root, -1);
    while (!stack.empty()) {
        auto& [node, next] = stack.back();
        if (next < node->GetNbOfChildren()) {
            KOBWBExpression* child = node->GetChild(next++);
            if (child && seen.emplace(child, -1).second) stack.push_back({child, 0});
            continue;
        }
        order.push_back(node);
        stack.pop_back();
    }
    const int count = static_cast<int>(order.size());
    tape.nodes.assign(order.rbegin(), order.rend());
    for (int i = 0; i < count; ++i)
        seen[tape.nodes[i]] = i;
    tape.firstChild.reserve(count + 1);
    for (int i = 0; i < count; ++i) {
        KOBWBExpression* node = tape.nodes[i];
        tape.firstChild.push_back(static_cast<int>(tape.children.size()));
        if (node->GetType() == KOBWBVariableType) tape.variables.push_back(i);
        const int children = node->GetNbOfChildren();
        bool complete = true;
        for (int c = 0; c < children; ++c)
            complete = complete && node->GetChild(c);
        if (!complete) continue;
        for (int c = 0; c < children; ++c)
            tape.children.push_back(seen[node->GetChild(c)]);
    }
    tape.firstChild.push_back(static_cast<int>(tape.children.size()));
    return tape;
}

bool TapeReviser::Store(int child, KOBWBValue&& domain, KOBWBEnvironment& scratch) {
    // A projection that did not take the kinds of its operands narrows nothing.
    if (scratch.GetError() & badKind) {
        scratch.ClearError();
        return true;
    }
    scratch.ClearError();
    if (KOBWBIsEmpty(scratch, domain)) return false;
    if (Differs(scratch, m_domains[child], domain)) {
        m_domains[child] = std::move(domain);
        m_narrowed[child] = 1;
    }
    return true;
}

bool TapeReviser::NarrowFolded(const EquationTape& tape, int node, KOBWBEnvironment& scratch) {
    const OperatorInfo& info = GetOperatorInfo(tape.nodes[node]->GetType());
    const int* children = tape.children.data() + tape.firstChild[node];
    const int count = tape.firstChild[node + 1] - tape.firstChild[node];
    const KOBWBValue& z = m_domains[node];
    if (count == 2) {
        if (!Store(
                children[0],
                info.projections.first(scratch, z, m_domains[children[0]], m_domains[children[1]]),
                scratch))
            return false;
        return Store(
            children[1],
            info.projections.second(scratch, z, m_domains[children[0]], m_domains[children[1]]),
            scratch);
    }
    // Each child against the fold of the others, folded from both ends once.
    m_prefix.resize(count);
    m_suffix.resize(count);
    m_prefix[1] = m_domains[children[0]];
    for (int k = 2; k < count; ++k)
        m_prefix[k] = info.binary(scratch, m_prefix[k - 1], m_domains[children[k - 1]]);
    m_suffix[count - 2] = m_domains[children[count - 1]];
    for (int k = count - 3; k >= 0; --k)
        m_suffix[k] = info.binary(scratch, m_domains[children[k + 1]], m_suffix[k + 1]);
    scratch.ClearError();
    for (int k = 0; k < count; ++k) {
        const KOBWBValue others = k == 0           ? m_suffix[0]
                                  : k == count - 1 ? m_prefix[count - 1]
                                                   : info.binary(scratch, m_prefix[k], m_suffix[k]);
        if (!Store(children[k], info.projections.first(scratch, z, m_domains[children[k]], others),
                   scratch))
            return false;
    }
    return true;
}

bool TapeReviser::NarrowChildren(const EquationTape& tape, int node, KOBWBEnvironment& scratch) {
    const int count = tape.firstChild[node + 1] - tape.firstChild[node];
    if (count == 0) return true;
    const OperatorInfo& info = GetOperatorInfo(tape.nodes[node]->GetType());
    const Projections& projections = info.projections;
    const int* children = tape.children.data() + tape.firstChild[node];
    const KOBWBValue& z = m_domains[node];
    if (count == 1) {
        if (!projections.unary) return true;
        return Store(children[0], projections.unary(scratch, z, m_domains[children[0]]), scratch);
    }
    if (!projections.first) return true;
    if (info.family == OperatorFamily::Algebraic) return NarrowFolded(tape, node, scratch);
    if (count != 2) return true;
    if (!Store(children[0],
               projections.first(scratch, z, m_domains[children[0]], m_domains[children[1]]),
               scratch))
        return false;
    if (!projections.second) return true;
    return Store(children[1],
                 projections.second(scratch, z, m_domains[children[0]], m_domains[children[1]]),
                 scratch);
}

bool TapeReviser::Revise(const EquationTape& tape, const KOBWBEnvironment& environment,
                         std::vector<NarrowedVariable>& narrowed) {
    const int count = static_cast<int>(tape.nodes.size());
    if (count == 0 || !Revisable(tape.type)) return true;
    if (static_cast<int>(m_domains.size()) < count) m_domains.resize(count);
    m_narrowed.assign(count, 0);
    tape.nodes[0]->GetValue();
    for (int i = 0; i < count; ++i)
        m_domains[i] = tape.nodes[i]->GetValue();
    KOBWBEnvironment scratch = environment;
    scratch.ClearError();
    const KOBWBValue forward = m_domains[0];
    if (!NarrowRoot(scratch, tape.type, m_domains[0])) return false;
    m_narrowed[0] = Differs(scratch, forward, m_domains[0]);
    for (int i = 0; i < count; ++i)
        if (m_narrowed[i] && !NarrowChildren(tape, i, scratch)) return false;
    for (const int position : tape.variables) {
        if (!m_narrowed[position]) continue;
        auto* variable = static_cast<KOBWBVariable*>(tape.nodes[position]);
        if (variable->IsFixed()) continue;
        const double before = WidthOf(variable->GetExprValue());
        const double after = WidthOf(m_domains[position]);
        variable->SetExprValue(m_domains[position]);
        narrowed.push_back({variable, before > 0 ? (before - after) / before : 0.0});
    }
    return true;
}

} // namespace kobwb
