#include "KOBWBEquationTape.h"

#include "KOBWBEnvironment.h"
#include "KOBWBEquation.h"
#include "KOBWBExpression.h"
#include "KOBWBIntervalKernels.h"
#include "KOBWBLimits.h"
#include "KOBWBOperatorEvaluation.h"
#include "KOBWBOperatorTable.h"
#include "KOBWBVariable.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <utility>

namespace kobwb {

namespace {

// Bit 2 of the error flags: an argument of a kind the function does not take.
constexpr unsigned badKind = 2;

// The root's domain narrowed to the equation's relation to 0, within the tolerance
// under which evaluation takes the relation as holding (a root within the tolerance of
// 0 satisfies an equality, one at most the tolerance above 0 satisfies an order), so
// that a point accepted by evaluation is kept; false when nothing is left.
bool NarrowRoot(const KOBWBEnvironment& environment, KOBWBEquationType type, KOBWBValue& root) {
    const double max = KOBWBMaxReal;
    const double tolerance = std::max(environment.GetTolerance(), 0.0);
    switch (type) {
    case KOBWBEqEqual:
        return root.Intersect(environment, KOBWBValue(KOBWBRealInterval{-tolerance, tolerance}));
    case KOBWBEqLessEqual:
    case KOBWBEqLess:
        return root.Intersect(environment, KOBWBValue(KOBWBRealInterval{-max, tolerance}));
    case KOBWBEqGreaterEqual:
    case KOBWBEqGreater:
        return root.Intersect(environment, KOBWBValue(KOBWBRealInterval{-tolerance, max}));
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

// A real interval computed from intervals widened outwards by one step of double per
// bound: its bounds are rounded images, and a point of the argument evaluated on its own
// may round to the other side of one. The library's infinity stays where it is.
void WidenByRounding(KOBWBValue& v) {
    const KOBWBRealInterval* r = v.GetRealIntervalPayload();
    if (!r || !(r->lower <= r->upper)) return;
    const double max = KOBWBMaxReal;
    const double lower = r->lower <= -max ? r->lower : NextBelow(r->lower);
    const double upper = r->upper >= max ? r->upper : NextAbove(r->upper);
    v.Set(KOBWBRealInterval{lower, upper});
}

double WidthOf(const KOBWBValue& v) {
    const KOBWBRealInterval hull = v.GetAsRealInterval();
    return hull.upper - hull.lower;
}

} // namespace

TapePlace AppendTape(TapeStore& store, const KOBWBEquation& equation) {
    TapePlace place;
    place.type = equation.GetType();
    place.node = store.nodes.size();
    place.firstChild = store.firstChild.size();
    place.child = store.children.size();
    place.variable = store.variables.size();
    place.constant = store.constants.size();
    KOBWBExpression* root = equation.GetRoot();
    if (!root) {
        store.firstChild.push_back(0);
        return place;
    }
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
    place.count = count;
    store.nodes.insert(store.nodes.end(), order.rbegin(), order.rend());
    KOBWBExpression* const* nodes = store.nodes.data() + place.node;
    for (int i = 0; i < count; ++i)
        seen[nodes[i]] = i;
    int children = 0;
    for (int i = 0; i < count; ++i) {
        KOBWBExpression* node = nodes[i];
        store.firstChild.push_back(children);
        store.codes.push_back(node->GetType());
        if (node->GetType() == KOBWBVariableType) store.variables.push_back(i);
        if (node->GetType() == KOBWBConstantType)
            store.constants.emplace_back(i, node->GetExprValue());
        const int childCount = node->GetNbOfChildren();
        bool complete = true;
        for (int c = 0; c < childCount; ++c)
            complete = complete && node->GetChild(c);
        if (!complete) continue;
        for (int c = 0; c < childCount; ++c)
            store.children.push_back(seen[node->GetChild(c)]);
        children += childCount;
    }
    store.firstChild.push_back(children);
    place.variables = static_cast<int>(store.variables.size() - place.variable);
    place.constants = static_cast<int>(store.constants.size() - place.constant);
    return place;
}

EquationTape TapeAt(const TapeStore& store, const TapePlace& place) {
    EquationTape tape;
    tape.type = place.type;
    tape.count = place.count;
    tape.nodes = store.nodes.data() + place.node;
    tape.codes = store.codes.data() + place.node;
    tape.firstChild = store.firstChild.data() + place.firstChild;
    tape.children = store.children.data() + place.child;
    tape.variables = {store.variables.data() + place.variable, place.variables};
    tape.constants = {store.constants.data() + place.constant, place.constants};
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

bool TapeReviser::Store(int child, const KOBWBRealInterval& domain) {
    if (!(domain.lower <= domain.upper)) return false;
    const KOBWBRealInterval* current = m_domains[child].GetRealIntervalPayload();
    if (current->lower != domain.lower || current->upper != domain.upper) {
        m_domains[child].Set(domain);
        m_narrowed[child] = 1;
    }
    return true;
}

bool TapeReviser::NarrowRealUnary(const Projections& projections, int node, int child,
                                  KOBWBEnvironment& scratch, bool& consistent) {
    const KOBWBRealInterval* z = m_domains[node].GetRealIntervalPayload();
    const KOBWBRealInterval* x = m_domains[child].GetRealIntervalPayload();
    if (!projections.realUnary || !z || !x) return false;
    consistent = Store(child, projections.realUnary(scratch, *z, *x));
    return true;
}

bool TapeReviser::NarrowRealBinary(const Projections& projections, int node, int narrowed,
                                   int other, bool first, KOBWBEnvironment& scratch,
                                   bool& consistent) {
    const KOBWBRealInterval* z = m_domains[node].GetRealIntervalPayload();
    const KOBWBRealInterval* x = m_domains[narrowed].GetRealIntervalPayload();
    if (!z || !x) return false;
    const RealOperand operand = ReadRealOperand(m_domains[other]);
    if (operand.kind == RealOperand::Kind::Other) return false;
    consistent = true;
    // An integral index is taken as such and is not narrowed itself.
    if (projections.indexed && operand.integral) {
        if (first)
            consistent = Store(narrowed, projections.indexed(scratch, *z, *x, operand.exponent));
        return true;
    }
    const RealBinaryProjection real = first ? projections.realFirst : projections.realSecond;
    if (!real) return false;
    consistent = Store(narrowed, first ? real(scratch, *z, *x, operand.interval)
                                       : real(scratch, *z, operand.interval, *x));
    return true;
}

bool TapeReviser::NarrowFolded(const EquationTape& tape, int node, KOBWBEnvironment& scratch) {
    const OperatorInfo& info = GetOperatorInfo(tape.codes[node]);
    const int* children = tape.children + tape.firstChild[node];
    const int count = tape.firstChild[node + 1] - tape.firstChild[node];
    const KOBWBValue& z = m_domains[node];
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
    const OperatorInfo& info = GetOperatorInfo(tape.codes[node]);
    const Projections& projections = info.projections;
    const int* children = tape.children + tape.firstChild[node];
    const KOBWBValue& z = m_domains[node];
    bool consistent = true;
    if (count == 1) {
        if (!projections.unary) return true;
        if (NarrowRealUnary(projections, node, children[0], scratch, consistent)) return consistent;
        return Store(children[0], projections.unary(scratch, z, m_domains[children[0]]), scratch);
    }
    if (!projections.first) return true;
    if (info.family == OperatorFamily::Algebraic && count > 2)
        return NarrowFolded(tape, node, scratch);
    if (count != 2) return true;
    if (NarrowRealBinary(projections, node, children[0], children[1], true, scratch, consistent)) {
        if (!consistent) return false;
    } else if (!Store(children[0],
                      projections.first(scratch, z, m_domains[children[0]], m_domains[children[1]]),
                      scratch)) {
        return false;
    }
    if (!projections.second) return true;
    if (NarrowRealBinary(projections, node, children[1], children[0], false, scratch, consistent))
        return consistent;
    return Store(children[1],
                 projections.second(scratch, z, m_domains[children[0]], m_domains[children[1]]),
                 scratch);
}

void TapeReviser::EvaluateNode(const EquationTape& tape, int node, KOBWBEnvironment& scratch) {
    const OperatorInfo& info = GetOperatorInfo(tape.codes[node]);
    const int* children = tape.children + tape.firstChild[node];
    const int count = tape.firstChild[node + 1] - tape.firstChild[node];
    KOBWBValue& result = m_domains[node];
    KOBWBRealInterval image;
    switch (count == 0 ? OperatorFamily::None : info.family) {
    case OperatorFamily::Algebraic:
        if (!info.binary) break;
        result = m_domains[children[0]];
        for (int k = 1; k < count; ++k) {
            const KOBWBValue& child = m_domains[children[k]];
            if (ApplyIntervalForm(info, scratch, ReadRealOperand(result), ReadRealOperand(child),
                                  image))
                StoreInterval(result, image);
            else
                result = info.binary(scratch, result, child);
        }
        return;
    case OperatorFamily::Binary:
    case OperatorFamily::Boolean:
        if (count == 2 && info.binary) {
            const KOBWBValue& a = m_domains[children[0]];
            const KOBWBValue& b = m_domains[children[1]];
            if (ApplyIntervalForm(info, scratch, ReadRealOperand(a), ReadRealOperand(b), image))
                StoreInterval(result, image);
            else
                result = info.binary(scratch, a, b);
            return;
        }
        if (count == 1 && info.unary) {
            result = info.unary(scratch, m_domains[children[0]]);
            return;
        }
        break;
    case OperatorFamily::Unary:
    case OperatorFamily::Trigonometric:
        if (count == 1 && info.unary) {
            const KOBWBValue& x = m_domains[children[0]];
            if (ApplyIntervalForm(info, scratch, ReadRealOperand(x), image))
                StoreInterval(result, image);
            else
                result = info.unary(scratch, x);
            return;
        }
        break;
    default:
        break;
    }
    // Nodes the table does not evaluate (if-then-else, step, black boxes, incomplete
    // nodes) evaluate themselves.
    result = tape.nodes[node]->GetValue();
}

void TapeReviser::Evaluate(const EquationTape& tape, KOBWBEnvironment& scratch) {
    for (const auto& [position, value] : tape.constants)
        m_domains[position] = value;
    for (int i = tape.count - 1; i >= 0; --i) {
        const KOBWBExpressionType code = tape.codes[i];
        if (code == KOBWBVariableType)
            m_domains[i] = tape.nodes[i]->GetExprValue();
        else if (code != KOBWBConstantType) {
            EvaluateNode(tape, i, scratch);
            WidenByRounding(m_domains[i]);
        }
    }
}

bool TapeReviser::Revise(const EquationTape& tape, const KOBWBEnvironment& environment,
                         std::vector<NarrowedVariable>& narrowed) {
    const int count = tape.count;
    if (count == 0 || !Revisable(tape.type)) return true;
    if (static_cast<int>(m_domains.size()) < count) m_domains.resize(count);
    m_narrowed.assign(count, 0);
    KOBWBEnvironment scratch = environment;
    Evaluate(tape, scratch);
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
