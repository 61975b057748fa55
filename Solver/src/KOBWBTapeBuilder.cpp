#include "KOBWBTapeBuilder.h"

#include "KOBWBExpression.h"
#include "KOBWBValue.h"
#include "KOBWBVariable.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace kobwb {

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

double PointOf(const KOBWBValue& value) {
    if (value.IsAKindOf(KOBWBRealValue) || value.IsAKindOf(KOBWBIntegerValue) || value.IsAFraction())
        return value.GetAsDouble();
    const KOBWBRealInterval box = value.GetAsRealInterval();
    if (box.lower > box.upper) return std::nan("");
    return box.lower / 2 + box.upper / 2;
}

namespace {

bool IsNaryCode(std::uint8_t code) {
    return code == KOBWBSumType || code == KOBWBProductType || code == KOBWBMinType || code == KOBWBMaxType;
}

// The exponent of a power whose exponent is an integer constant, in *k.
bool IntegerExponent(KOBWBExpression* exponent, int* k) {
    if (!exponent || exponent->GetType() != KOBWBConstantType) return false;
    const KOBWBValue& value = exponent->GetExprValue();
    if (!value.IsAKindOf(KOBWBIntegerValue)) return false;
    *k = value.GetAsInteger();
    return true;
}

std::uint64_t NodeHash(const KOBWBExpression* node) { return SlotTable::Mix(0, reinterpret_cast<std::uintptr_t>(node)); }

} // namespace

TapeBuilder::TapeBuilder(KOBWBPointEvaluator& evaluator, int variableCount, KOBWBVariable* const* variables)
    : m_tape(evaluator), m_nextSlot(variableCount), m_inputCount(variableCount) {
    m_tape = KOBWBPointEvaluator();
    m_tape.m_inputs.assign(variables, variables + variableCount);
    for (int i = 0; i < variableCount; ++i)
        if (SlotOf(variables[i]) < 0) Bind(variables[i], i);
}

int TapeBuilder::SlotOf(const KOBWBExpression* node) const {
    const int number = node->GetNumber();
    if (number >= 0)
        return static_cast<std::size_t>(number) < m_slotByNumber.size() ? m_slotByNumber[static_cast<std::size_t>(number)] : -1;
    const int entry = m_unnumberedTable.Find(
        NodeHash(node), [&](int k) { return m_unnumbered[static_cast<std::size_t>(k)].first == node; });
    return entry < 0 ? -1 : m_unnumbered[static_cast<std::size_t>(entry)].second;
}

void TapeBuilder::Bind(const KOBWBExpression* node, int slot) {
    const int number = node->GetNumber();
    if (number >= 0) {
        if (static_cast<std::size_t>(number) >= m_slotByNumber.size())
            m_slotByNumber.resize(std::max(static_cast<std::size_t>(number) + 1, 2 * m_slotByNumber.size()), -1);
        m_slotByNumber[static_cast<std::size_t>(number)] = slot;
        return;
    }
    m_unnumberedTable.Insert(NodeHash(node), static_cast<int>(m_unnumbered.size()));
    m_unnumbered.emplace_back(node, slot);
}

int TapeBuilder::NewSlot(const KOBWBExpression* node, int step) {
    m_stepOfSlot.push_back(step);
    const int slot = m_nextSlot++;
    if (node) Bind(node, slot);
    return slot;
}

bool TapeBuilder::IsConstantSlot(int slot) const {
    return slot >= m_inputCount && m_stepOfSlot[static_cast<std::size_t>(slot - m_inputCount)] < 0;
}

int TapeBuilder::ConstantSlot(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return m_constants.Find(SlotTable::Mix(1, bits), [&](int slot) {
        return std::memcmp(&m_constantValues[static_cast<std::size_t>(slot - m_inputCount)], &value, sizeof value) == 0;
    });
}

int TapeBuilder::Leaf(KOBWBExpression* node) {
    const int known = SlotOf(node);
    if (known >= 0) return known;
    // Constants of one value share a slot.
    const double value = PointOf(node->GetExprValue());
    const bool isConstant = node->GetType() == KOBWBConstantType;
    if (isConstant) {
        const int shared = ConstantSlot(value);
        if (shared >= 0) {
            Bind(node, shared);
            return shared;
        }
    }
    const int slot = NewSlot(node, -1);
    m_constantValues.resize(static_cast<std::size_t>(slot - m_inputCount + 1), 0.0);
    m_constantValues[static_cast<std::size_t>(slot - m_inputCount)] = value;
    m_tape.m_leaves.push_back({slot, node});
    if (isConstant) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        m_constants.Insert(SlotTable::Mix(1, bits), slot);
    }
    return slot;
}

bool TapeBuilder::SameStep(const Step& x, const Step& y) const {
    if (x.code != y.code || x.b != y.b) return false;
    if (!IsNaryCode(x.code)) return x.a == y.a;
    return std::equal(m_tape.m_arguments.begin() + x.a, m_tape.m_arguments.begin() + x.a + x.b,
                      m_tape.m_arguments.begin() + y.a);
}

int TapeBuilder::LatestOperand(const Step& step) const {
    int latest = -1;
    int latestConstant = -1;
    const auto consider = [&](int slot) {
        if (slot < 0) return;
        int& into = IsConstantSlot(slot) ? latestConstant : latest;
        into = std::max(into, slot);
    };
    if (IsNaryCode(step.code)) {
        for (int i = 0; i < step.b; ++i) consider(m_tape.m_arguments[static_cast<std::size_t>(step.a + i)]);
    } else {
        consider(step.a);
        if (step.code != IntegerPower) consider(step.b);
    }
    return latest >= 0 ? latest : latestConstant;
}

int TapeBuilder::StepSlot(const KOBWBExpression* node, Step step) {
    std::vector<Step>& steps = m_tape.m_steps;
    const int latest = step.code == ByNode ? -1 : LatestOperand(step);
    if (latest >= 0 && static_cast<std::size_t>(latest) < m_chainOf.size())
        for (int k = m_chainOf[static_cast<std::size_t>(latest)]; k >= 0; k = m_nextInChain[static_cast<std::size_t>(k)])
            if (SameStep(steps[static_cast<std::size_t>(k)], step)) {
                if (IsNaryCode(step.code)) m_tape.m_arguments.resize(static_cast<std::size_t>(step.a));
                const int out = steps[static_cast<std::size_t>(k)].out;
                if (node) Bind(node, out);
                return out;
            }
    const int index = static_cast<int>(steps.size());
    step.out = NewSlot(node, index);
    steps.push_back(step);
    m_nextInChain.push_back(-1);
    if (latest >= 0) {
        if (static_cast<std::size_t>(latest) >= m_chainOf.size())
            m_chainOf.resize(std::max(static_cast<std::size_t>(latest) + 1, 2 * m_chainOf.size()), -1);
        m_nextInChain.back() = m_chainOf[static_cast<std::size_t>(latest)];
        m_chainOf[static_cast<std::size_t>(latest)] = index;
    }
    return step.out;
}

int TapeBuilder::Graph(KOBWBExpression* root) {
    if (!root) return -1;
    const int known = SlotOf(root);
    if (known >= 0) return known;
    std::vector<int>& arguments = m_tape.m_arguments;
    m_frames.assign(1, {root, 0});
    while (!m_frames.empty()) {
        Frame& top = m_frames.back();
        KOBWBExpression* node = top.node;
        const KOBWBExpressionType type = node->GetType();
        const bool leaf = type == KOBWBConstantType || type == KOBWBVariableType;
        // Nodes evaluated by themselves read their own children.
        const bool byNode = !leaf && !HasPointForm(type);
        if (!leaf && !byNode && top.nextChild < node->GetNbOfChildren()) {
            KOBWBExpression* child = node->GetChild(top.nextChild++);
            if (!child) return -1;
            if (SlotOf(child) < 0) m_frames.push_back({child, 0});
            continue;
        }
        m_frames.pop_back();
        if (SlotOf(node) >= 0) continue;
        if (leaf) {
            Leaf(node);
            continue;
        }
        Step step{ByNode, -1, -1, -1};
        if (byNode) {
            step.a = static_cast<int>(m_tape.m_nodes.size());
            m_tape.m_nodes.push_back(node);
            m_tape.m_usesNodes = true;
        } else if (IsNaryCode(static_cast<std::uint8_t>(type))) {
            step.code = static_cast<std::uint8_t>(type);
            step.a = static_cast<int>(arguments.size());
            for (int i = 0; i < node->GetNbOfChildren(); ++i) arguments.push_back(SlotOf(node->GetChild(i)));
            step.b = node->GetNbOfChildren();
        } else {
            step.code = static_cast<std::uint8_t>(type);
            step.a = SlotOf(node->GetChild(0));
            int k = 0;
            if (type == KOBWBPowerType && IntegerExponent(node->GetChild(1), &k)) {
                step.code = k == 2 ? Square : IntegerPower;
                step.b = k == 2 ? -1 : k;
            } else if (node->GetNbOfChildren() > 1) {
                step.b = SlotOf(node->GetChild(1));
            }
        }
        StepSlot(node, step);
    }
    return SlotOf(root);
}

void TapeBuilder::Copy(const KOBWBPointEvaluator& pattern, std::size_t first, std::size_t last, const int* inputSlots,
                       std::vector<int>& leafSlots, std::vector<int>& stepSlots, std::vector<int>& outputSlots) {
    if (leafSlots.empty())
        for (const KOBWBPointEvaluator::Leaf& leaf : pattern.m_leaves) leafSlots.push_back(Leaf(leaf.node));
    last = std::min(last, pattern.m_steps.size());
    // The slot here of each slot of the pattern.
    std::vector<int>& slotHere = m_copySlots;
    slotHere.assign(pattern.m_values.size(), -1);
    std::copy(inputSlots, inputSlots + pattern.m_inputs.size(), slotHere.begin());
    for (std::size_t k = 0; k < pattern.m_leaves.size(); ++k)
        slotHere[static_cast<std::size_t>(pattern.m_leaves[k].slot)] = leafSlots[k];
    for (std::size_t s = 0; s < first && s < stepSlots.size(); ++s)
        slotHere[static_cast<std::size_t>(pattern.m_steps[s].out)] = stepSlots[s];
    std::vector<int>& arguments = m_tape.m_arguments;
    for (std::size_t s = first; s < last; ++s) {
        const Step& from = pattern.m_steps[s];
        Step step = from;
        if (IsNaryCode(from.code)) {
            step.a = static_cast<int>(arguments.size());
            for (int i = 0; i < from.b; ++i)
                arguments.push_back(slotHere[static_cast<std::size_t>(pattern.m_arguments[static_cast<std::size_t>(from.a + i)])]);
        } else {
            step.a = slotHere[static_cast<std::size_t>(from.a)];
            if (from.b >= 0 && from.code != IntegerPower) step.b = slotHere[static_cast<std::size_t>(from.b)];
        }
        const int slot = StepSlot(nullptr, step);
        slotHere[static_cast<std::size_t>(from.out)] = slot;
        stepSlots.push_back(slot);
    }
    outputSlots.clear();
    for (int output : pattern.m_outputs) outputSlots.push_back(slotHere[static_cast<std::size_t>(output)]);
}

void TapeBuilder::Output(int slot) { m_tape.m_outputs.push_back(slot); }

void TapeBuilder::Finish() {
    // Each output needs the steps up to the last one its graph made.
    std::size_t made = 0;
    for (int output : m_tape.m_outputs) {
        if (output >= m_inputCount && m_stepOfSlot[static_cast<std::size_t>(output - m_inputCount)] >= 0)
            made = std::max(made, static_cast<std::size_t>(m_stepOfSlot[static_cast<std::size_t>(output - m_inputCount)]) + 1);
        m_tape.m_stepsUpTo.push_back(made);
    }
    m_tape.m_values.assign(static_cast<std::size_t>(m_nextSlot), 0.0);
    m_tape.Refresh();
}

} // namespace kobwb
