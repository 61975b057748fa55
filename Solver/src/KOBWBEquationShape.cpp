#include "KOBWBEquationShape.h"

#include "KOBWBSlotTable.h"
#include "KOBWBTapeBuilder.h"

#include "KOBWBExpression.h"
#include "KOBWBValue.h"
#include "KOBWBVariable.h"

#include <algorithm>
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

EquationShape::Seen& EquationShape::SeenOf(const KOBWBExpression* node) {
    const std::size_t number = static_cast<std::size_t>(node->GetNumber());
    if (number >= m_seen.size()) m_seen.resize(std::max(number + 1, 2 * m_seen.size()));
    return m_seen[number];
}

bool EquationShape::Read(KOBWBExpression* root, const std::vector<bool>& isUnknown) {
    m_variables.clear();
    m_unknown.clear();
    m_key.clear();
    if (!root || root->GetNumber() < 0) return false;
    // Marks of earlier reads are told apart by the read they were made in.
    ++m_read;
    // Nodes are numbered children first; a node met again is read by its number.
    m_frames.assign(1, {root, 0});
    SeenOf(root) = {m_read, -1};
    std::size_t nodeCount = 1;
    int nextId = 0;
    while (!m_frames.empty()) {
        Frame& top = m_frames.back();
        KOBWBExpression* node = top.node;
        const KOBWBExpressionType type = node->GetType();
        const bool leaf = type == KOBWBConstantType || type == KOBWBVariableType;
        if (!leaf && !HasPointForm(type)) return false;
        if (!leaf && top.nextChild < node->GetNbOfChildren()) {
            KOBWBExpression* child = node->GetChild(top.nextChild++);
            if (!child || child->GetNumber() < 0) return false;
            // In a graph without cycles a node met again has been numbered already.
            Seen& seen = SeenOf(child);
            if (seen.read != m_read) {
                if (++nodeCount > maxNodes) return false;
                seen = {m_read, -1};
                m_frames.push_back({child, 0});
            }
            continue;
        }
        m_frames.pop_back();
        SeenOf(node).id = nextId++;
        if (type == KOBWBVariableType) {
            auto* variable = static_cast<KOBWBVariable*>(node);
            const int index = variable->GetIdx();
            const bool unknown = index >= 0 && static_cast<std::size_t>(index) < isUnknown.size() &&
                                 isUnknown[static_cast<std::size_t>(index)];
            m_key.push_back(VariableToken);
            m_key.push_back(unknown ? 1 : 0);
            m_variables.push_back(variable);
            m_unknown.push_back(unknown);
        } else if (type == KOBWBConstantType) {
            const KOBWBValue& value = node->GetExprValue();
            if (value.IsAFraction()) return false;
            m_key.push_back(ConstantToken);
            if (value.IsAKindOf(KOBWBIntegerValue)) {
                const KOBWBIntegerInterval n = value.GetAsIntegerInterval();
                m_key.push_back(KOBWBIntegerValue);
                m_key.push_back(static_cast<std::uint64_t>(n.lower));
                m_key.push_back(static_cast<std::uint64_t>(n.upper));
            } else if (value.IsAKindOf(KOBWBRealValue)) {
                const KOBWBRealInterval x = value.GetAsRealInterval();
                m_key.push_back(KOBWBRealValue);
                m_key.push_back(Bits(x.lower));
                m_key.push_back(Bits(x.upper));
            } else {
                return false;
            }
        } else {
            const int childCount = node->GetNbOfChildren();
            m_key.push_back(OperatorToken);
            m_key.push_back(static_cast<std::uint64_t>(type));
            m_key.push_back(static_cast<std::uint64_t>(childCount));
            for (int i = 0; i < childCount; ++i) m_key.push_back(static_cast<std::uint64_t>(SeenOf(node->GetChild(i)).id));
        }
    }
    m_hash = 0;
    for (std::uint64_t token : m_key) m_hash = SlotTable::Mix(m_hash, token);
    return true;
}

} // namespace kobwb
