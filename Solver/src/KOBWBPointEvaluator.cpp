#include "KOBWBPointEvaluator.h"

#include "KOBWBExpression.h"
#include "KOBWBSlotTable.h"
#include "KOBWBValue.h"
#include "KOBWBVariable.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

// Step codes: the expression type of the node, or one of these forms of it.
enum : std::uint8_t {
    IntegerPower = 100, // a ^ b with b an integer held in the step
    Square = 101,       // a * a
    ByNode = 102        // the node's own evaluation
};

bool HasPointForm(KOBWBExpressionType type) {
    switch (type) {
    case KOBWBSumType:
    case KOBWBProductType:
    case KOBWBMinType:
    case KOBWBMaxType:
    case KOBWBQuotientType:
    case KOBWBPowerType:
    case KOBWBRootType:
    case KOBWBAtan2Type:
    case KOBWBSqrtType:
    case KOBWBLogType:
    case KOBWBLnType:
    case KOBWBExpType:
    case KOBWBSinType:
    case KOBWBCosType:
    case KOBWBTanType:
    case KOBWBAsinType:
    case KOBWBAcosType:
    case KOBWBAtanType:
    case KOBWBSinhType:
    case KOBWBCoshType:
    case KOBWBTanhType:
    case KOBWBAsinhType:
    case KOBWBAcoshType:
    case KOBWBAtanhType:
    case KOBWBAbsType:
    case KOBWBCeilType:
    case KOBWBFloorType:
    case KOBWBRoundType:
    case KOBWBTruncType: return true;
    default: return false;
    }
}

bool IsNary(KOBWBExpressionType type) {
    return type == KOBWBSumType || type == KOBWBProductType || type == KOBWBMinType || type == KOBWBMaxType;
}

// The point reading of a leaf's value: a number as it is, an interval by its midpoint.
double PointOf(const KOBWBValue& value) {
    if (value.IsAKindOf(KOBWBRealValue) || value.IsAKindOf(KOBWBIntegerValue) || value.IsAFraction())
        return value.GetAsDouble();
    const KOBWBRealInterval box = value.GetAsRealInterval();
    if (box.lower > box.upper) return std::nan("");
    return box.lower / 2 + box.upper / 2;
}

// The exponent of a power whose exponent is an integer constant, in *k.
bool IntegerExponent(KOBWBExpression* exponent, int* k) {
    if (!exponent || exponent->GetType() != KOBWBConstantType) return false;
    const KOBWBValue& value = exponent->GetExprValue();
    if (!value.IsAKindOf(KOBWBIntegerValue)) return false;
    *k = value.GetAsInteger();
    return true;
}

} // namespace

bool KOBWBPointEvaluator::Compile(int expressionCount, KOBWBExpression* const* expressions, int variableCount,
                                  KOBWBVariable* const* variables) {
    *this = KOBWBPointEvaluator();
    if (expressionCount < 0 || variableCount < 0 || (expressionCount > 0 && !expressions) ||
        (variableCount > 0 && !variables))
        return false;
    for (int i = 0; i < variableCount; ++i)
        if (!variables[i]) return false;
    for (int i = 0; i < expressionCount; ++i)
        if (!expressions[i]) return false;

    m_inputs.assign(variables, variables + variableCount);
    // Slots: the inputs, then leaves and steps in the order they are met.
    int nextSlot = variableCount;
    std::vector<int> stepOfSlot; // for slots past the inputs: the step, or -1 for a leaf
    kobwb::SlotTable nodes;
    kobwb::SlotTable constants(64);
    std::vector<double> constantValues; // by slot - variableCount, for leaves
    const auto nodeHash = [](const KOBWBExpression* node) {
        return kobwb::SlotTable::Mix(0, reinterpret_cast<std::uintptr_t>(node));
    };
    // The slots of the nodes met, by node number (nodes without a number in a hash
    // table); several nodes may share a slot.
    std::vector<int> slotByNumber;
    std::vector<std::pair<const KOBWBExpression*, int>> unnumbered;
    const auto slotOfNode = [&](const KOBWBExpression* node) {
        const int number = node->GetNumber();
        if (number >= 0)
            return static_cast<std::size_t>(number) < slotByNumber.size() ? slotByNumber[static_cast<std::size_t>(number)] : -1;
        const int entry = nodes.Find(nodeHash(node), [&](int k) { return unnumbered[static_cast<std::size_t>(k)].first == node; });
        return entry < 0 ? -1 : unnumbered[static_cast<std::size_t>(entry)].second;
    };
    const auto bind = [&](const KOBWBExpression* node, int slot) {
        const int number = node->GetNumber();
        if (number >= 0) {
            if (static_cast<std::size_t>(number) >= slotByNumber.size())
                slotByNumber.resize(std::max(static_cast<std::size_t>(number) + 1, 2 * slotByNumber.size()), -1);
            slotByNumber[static_cast<std::size_t>(number)] = slot;
            return;
        }
        nodes.Insert(nodeHash(node), static_cast<int>(unnumbered.size()));
        unnumbered.emplace_back(node, slot);
    };
    for (int i = 0; i < variableCount; ++i)
        if (slotOfNode(variables[i]) < 0) bind(variables[i], i);
    const auto newSlot = [&](const KOBWBExpression* node, int step) {
        stepOfSlot.push_back(step);
        const int slot = nextSlot++;
        bind(node, slot);
        return slot;
    };
    // A leaf: constants of one value share a slot.
    const auto leafSlot = [&](KOBWBExpression* node) {
        const double value = PointOf(node->GetExprValue());
        const bool isConstant = node->GetType() == KOBWBConstantType;
        std::uint64_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        const std::uint64_t hash = kobwb::SlotTable::Mix(1, bits);
        if (isConstant) {
            const int known = constants.Find(hash, [&](int slot) {
                return std::memcmp(&constantValues[slot - variableCount], &value, sizeof value) == 0;
            });
            if (known >= 0) {
                bind(node, known);
                return known;
            }
        }
        const int slot = newSlot(node, -1);
        constantValues.resize(static_cast<std::size_t>(slot - variableCount + 1), 0.0);
        constantValues[slot - variableCount] = value;
        m_leaves.push_back({slot, node});
        if (isConstant) constants.Insert(hash, slot);
        return slot;
    };
    const auto sameStep = [&](const Step& x, const Step& y) {
        if (x.code != y.code || x.a != y.a || x.b != y.b || x.count != y.count || x.node != y.node) return false;
        return std::equal(m_arguments.begin() + x.first, m_arguments.begin() + x.first + x.count,
                          m_arguments.begin() + y.first);
    };
    // Steps are found again through their latest operand (the one of the largest
    // slot, constants left out: one constant such as -1 is an operand of thousands of
    // steps): each slot heads a chain of the steps whose latest operand it is, most of
    // them one or two long. Operands are mostly recent slots, so the chains are read
    // near where the tape is growing, where a hash table would miss the cache.
    std::vector<int> chainOf;     // by slot: the last step whose latest operand it is
    std::vector<int> nextInChain; // by step
    const auto isConstantSlot = [&](int slot) {
        return slot >= variableCount && stepOfSlot[static_cast<std::size_t>(slot - variableCount)] < 0;
    };
    const auto latestOperand = [&](const Step& step) {
        int latest = -1;
        int latestConstant = -1;
        const auto consider = [&](int slot) {
            if (slot < 0) return;
            int& into = isConstantSlot(slot) ? latestConstant : latest;
            into = std::max(into, slot);
        };
        consider(step.a);
        if (step.code != IntegerPower) consider(step.b);
        for (int i = 0; i < step.count; ++i) consider(m_arguments[step.first + i]);
        return latest >= 0 ? latest : latestConstant;
    };
    // The slot of node's step, made once per value: a step equal to an earlier one
    // takes its slot.
    const auto stepSlot = [&](KOBWBExpression* node, Step step) {
        const int latest = step.node ? -1 : latestOperand(step);
        if (latest >= 0 && static_cast<std::size_t>(latest) < chainOf.size())
            for (int k = chainOf[static_cast<std::size_t>(latest)]; k >= 0; k = nextInChain[static_cast<std::size_t>(k)])
                if (sameStep(m_steps[static_cast<std::size_t>(k)], step)) {
                    m_arguments.resize(static_cast<std::size_t>(step.first));
                    bind(node, m_steps[static_cast<std::size_t>(k)].out);
                    return m_steps[static_cast<std::size_t>(k)].out;
                }
        const int index = static_cast<int>(m_steps.size());
        step.out = newSlot(node, index);
        m_steps.push_back(step);
        nextInChain.push_back(-1);
        if (latest >= 0) {
            if (static_cast<std::size_t>(latest) >= chainOf.size())
                chainOf.resize(std::max(static_cast<std::size_t>(latest) + 1, 2 * chainOf.size()), -1);
            nextInChain.back() = chainOf[static_cast<std::size_t>(latest)];
            chainOf[static_cast<std::size_t>(latest)] = index;
        }
        return step.out;
    };

    struct Frame {
        KOBWBExpression* node;
        int nextChild;
    };
    std::vector<Frame> frames;
    for (int e = 0; e < expressionCount; ++e) {
        KOBWBExpression* root = expressions[e];
        if (slotOfNode(root) < 0) frames.push_back({root, 0});
        while (!frames.empty()) {
            Frame& top = frames.back();
            KOBWBExpression* node = top.node;
            const KOBWBExpressionType type = node->GetType();
            const bool leaf = type == KOBWBConstantType || type == KOBWBVariableType;
            // Nodes evaluated by themselves read their own children.
            const bool byNode = !leaf && !HasPointForm(type);
            if (!leaf && !byNode && top.nextChild < node->GetNbOfChildren()) {
                KOBWBExpression* child = node->GetChild(top.nextChild++);
                if (!child) {
                    *this = KOBWBPointEvaluator();
                    return false;
                }
                if (slotOfNode(child) < 0) frames.push_back({child, 0});
                continue;
            }
            frames.pop_back();
            if (slotOfNode(node) >= 0) continue;
            if (leaf) {
                leafSlot(node);
                continue;
            }
            Step step{ByNode, -1, -1, static_cast<int>(m_arguments.size()), 0, -1, nullptr};
            if (byNode) {
                step.node = node;
                m_usesNodes = true;
            } else if (IsNary(type)) {
                step.code = static_cast<std::uint8_t>(type);
                for (int i = 0; i < node->GetNbOfChildren(); ++i) m_arguments.push_back(slotOfNode(node->GetChild(i)));
                step.count = node->GetNbOfChildren();
            } else {
                step.code = static_cast<std::uint8_t>(type);
                step.a = slotOfNode(node->GetChild(0));
                int k = 0;
                if (type == KOBWBPowerType && IntegerExponent(node->GetChild(1), &k)) {
                    step.code = k == 2 ? Square : IntegerPower;
                    step.b = k == 2 ? -1 : k;
                } else if (node->GetNbOfChildren() > 1) {
                    step.b = slotOfNode(node->GetChild(1));
                }
            }
            stepSlot(node, step);
        }
        m_outputs.push_back(slotOfNode(root));
    }
    // Each output needs the steps up to the last one its graph made.
    std::size_t made = 0;
    for (int output : m_outputs) {
        if (output >= variableCount && stepOfSlot[output - variableCount] >= 0)
            made = std::max(made, static_cast<std::size_t>(stepOfSlot[output - variableCount]) + 1);
        m_stepsUpTo.push_back(made);
    }
    m_values.assign(static_cast<std::size_t>(nextSlot), 0.0);
    Refresh();
    return true;
}

void KOBWBPointEvaluator::Refresh() {
    for (const Leaf& leaf : m_leaves) m_values[static_cast<std::size_t>(leaf.slot)] = PointOf(leaf.node->GetExprValue());
}

void KOBWBPointEvaluator::Evaluate(const double* inputs, double* values) {
    Evaluate(inputs, values, GetNbOfExpressions());
}

void KOBWBPointEvaluator::Evaluate(const double* inputs, double* values, int count) {
    if (!values || count <= 0) return;
    count = std::min(count, GetNbOfExpressions());
    if (!m_inputs.empty() && !inputs) return;
    Run(inputs, m_stepsUpTo[static_cast<std::size_t>(count - 1)]);
    for (int i = 0; i < count; ++i) values[i] = m_values[static_cast<std::size_t>(m_outputs[static_cast<std::size_t>(i)])];
}

void KOBWBPointEvaluator::Run(const double* inputs, std::size_t stepCount) {
    double* v = m_values.data();
    std::copy(inputs, inputs + m_inputs.size(), v);
    if (m_usesNodes)
        for (std::size_t i = 0; i < m_inputs.size(); ++i) m_inputs[i]->SetExprValue(KOBWBValue(inputs[i]));
    const int* arguments = m_arguments.data();
    for (std::size_t s = 0; s < stepCount; ++s) {
        const Step& step = m_steps[s];
        const double a = step.a >= 0 ? v[step.a] : 0.0;
        const double b = step.b >= 0 ? v[step.b] : 0.0;
        double r = 0.0;
        switch (step.code) {
        case KOBWBSumType:
            for (int i = 0; i < step.count; ++i) r += v[arguments[step.first + i]];
            break;
        case KOBWBProductType:
            r = 1.0;
            for (int i = 0; i < step.count; ++i) r *= v[arguments[step.first + i]];
            break;
        case KOBWBMinType:
            r = v[arguments[step.first]];
            for (int i = 1; i < step.count; ++i) r = std::min(r, v[arguments[step.first + i]]);
            break;
        case KOBWBMaxType:
            r = v[arguments[step.first]];
            for (int i = 1; i < step.count; ++i) r = std::max(r, v[arguments[step.first + i]]);
            break;
        case Square: r = a * a; break;
        case IntegerPower: r = std::pow(a, static_cast<double>(step.b)); break;
        case KOBWBQuotientType: r = a / b; break;
        case KOBWBPowerType: r = std::pow(a, b); break;
        case KOBWBRootType: r = std::pow(a, 1.0 / b); break;
        case KOBWBAtan2Type: r = std::atan2(a, b); break;
        case KOBWBSqrtType: r = std::sqrt(a); break;
        case KOBWBLogType: r = std::log10(a); break;
        case KOBWBLnType: r = std::log(a); break;
        case KOBWBExpType: r = std::exp(a); break;
        case KOBWBSinType: r = std::sin(a); break;
        case KOBWBCosType: r = std::cos(a); break;
        case KOBWBTanType: r = std::tan(a); break;
        case KOBWBAsinType: r = std::asin(a); break;
        case KOBWBAcosType: r = std::acos(a); break;
        case KOBWBAtanType: r = std::atan(a); break;
        case KOBWBSinhType: r = std::sinh(a); break;
        case KOBWBCoshType: r = std::cosh(a); break;
        case KOBWBTanhType: r = std::tanh(a); break;
        case KOBWBAsinhType: r = std::asinh(a); break;
        case KOBWBAcoshType: r = std::acosh(a); break;
        case KOBWBAtanhType: r = std::atanh(a); break;
        case KOBWBAbsType: r = std::fabs(a); break;
        case KOBWBCeilType: r = std::ceil(a); break;
        case KOBWBFloorType: r = std::floor(a); break;
        case KOBWBRoundType: r = std::round(a); break;
        case KOBWBTruncType: r = std::trunc(a); break;
        default: r = PointOf(step.node->GetValue()); break;
        }
        v[step.out] = r;
    }
}
