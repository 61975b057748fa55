#include "KOBWBEquationShape.h"

#include "KOBWBSlotTable.h"
#include "KOBWBTapeBuilder.h"

#include "KOBWBExpression.h"
#include "KOBWBValue.h"
#include "KOBWBVariable.h"

#include <cstring>

namespace kobwb {

namespace {

// What a token of the key says the next node is.
enum : std::uint64_t { VariableToken = 1, ConstantToken = 2, OperatorToken = 3 };

std::uint64_t Bits(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

} // namespace

bool EquationShape::Known(const KOBWBExpression* node) const {
    for (const auto& known : m_ids)
        if (known.first == node) return true;
    return false;
}

int EquationShape::IdOf(const KOBWBExpression* node) const {
    for (const auto& known : m_ids)
        if (known.first == node) return known.second;
    return -1;
}

bool EquationShape::Read(KOBWBExpression* root, const std::vector<bool>& isUnknown) {
    m_ids.clear();
    m_variables.clear();
    m_unknown.clear();
    m_key.clear();
    if (!root) return false;
    // Nodes are numbered children first; a node met again is read by its number.
    m_frames.assign(1, {root, 0});
    m_ids.emplace_back(root, -1);
    int nextId = 0;
    while (!m_frames.empty()) {
        Frame& top = m_frames.back();
        KOBWBExpression* node = top.node;
        const KOBWBExpressionType type = node->GetType();
        const bool leaf = type == KOBWBConstantType || type == KOBWBVariableType;
        if (!leaf && !HasPointForm(type)) return false;
        if (!leaf && top.nextChild < node->GetNbOfChildren()) {
            KOBWBExpression* child = node->GetChild(top.nextChild++);
            if (!child) return false;
            // In a graph without cycles a node met again has been numbered already.
            if (!Known(child)) {
                if (m_ids.size() >= maxNodes) return false;
                m_ids.emplace_back(child, -1);
                m_frames.push_back({child, 0});
            }
            continue;
        }
        m_frames.pop_back();
        for (auto& known : m_ids)
            if (known.first == node) known.second = nextId++;
        if (type == KOBWBVariableType) {
            auto* variable = static_cast<KOBWBVariable*>(node);
            const int index = variable->GetIdx();
            const bool unknown = index >= 0 && static_cast<std::size_t>(index) < isUnknown.size() &&
                                 isUnknown[static_cast<std::size_t>(index)];
            m_key.insert(m_key.end(), {VariableToken, m_variables.size(), unknown ? 1u : 0u});
            m_variables.push_back(variable);
            m_unknown.push_back(unknown);
        } else if (type == KOBWBConstantType) {
            const KOBWBValue& value = node->GetExprValue();
            if (value.IsAFraction()) return false;
            if (value.IsAKindOf(KOBWBIntegerValue)) {
                const KOBWBIntegerInterval n = value.GetAsIntegerInterval();
                m_key.insert(m_key.end(), {ConstantToken, KOBWBIntegerValue, static_cast<std::uint64_t>(n.lower),
                                           static_cast<std::uint64_t>(n.upper)});
            } else if (value.IsAKindOf(KOBWBRealValue)) {
                const KOBWBRealInterval x = value.GetAsRealInterval();
                m_key.insert(m_key.end(), {ConstantToken, KOBWBRealValue, Bits(x.lower), Bits(x.upper)});
            } else {
                return false;
            }
        } else {
            m_key.insert(m_key.end(), {OperatorToken, static_cast<std::uint64_t>(type),
                                       static_cast<std::uint64_t>(node->GetNbOfChildren())});
            for (int i = 0; i < node->GetNbOfChildren(); ++i)
                m_key.push_back(static_cast<std::uint64_t>(IdOf(node->GetChild(i))));
        }
    }
    m_hash = 0;
    for (std::uint64_t token : m_key) m_hash = SlotTable::Mix(m_hash, token);
    return true;
}

} // namespace kobwb
