#include "KOBWBPrintedNodes.h"

#include "KOBWBEquation.h"
#include "KOBWBExpression.h"
#include "KOBWBFactory.h"

#include <utility>

KOBWBPrintedNodes::KOBWBPrintedNodes(const KOBWBFactory& factory) {
    for (KOBWBEquation* equation = factory.GetFirstEquation(); equation; equation = factory.GetNextEquation(equation))
        Add(equation->GetRoot());
}

KOBWBPrintedNodes::KOBWBPrintedNodes(const KOBWBExpression* root) { Add(root); }

int KOBWBPrintedNodes::Id(const KOBWBExpression* node) const {
    const auto found = m_ids.find(node);
    return found == m_ids.end() ? -1 : found->second;
}

void KOBWBPrintedNodes::Add(const KOBWBExpression* root) {
    if (!root || m_ids.count(root)) return;
    // Each node with the number of its children already pushed.
    std::vector<std::pair<const KOBWBExpression*, int>> stack;
    stack.emplace_back(root, 0);
    m_ids.emplace(root, -1);
    while (!stack.empty()) {
        auto& [node, next] = stack.back();
        if (next < node->GetNbOfChildren()) {
            const KOBWBExpression* child = node->GetChild(next++);
            if (child && m_ids.emplace(child, -1).second) stack.emplace_back(child, 0);
            continue;
        }
        m_ids[node] = static_cast<int>(m_nodes.size());
        m_nodes.push_back(node);
        stack.pop_back();
    }
}
