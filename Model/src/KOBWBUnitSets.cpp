#include "KOBWBUnitSets.h"

KOBWBUnitSets::KOBWBUnitSets(int nbOfVariables)
    : m_parent(nbOfVariables), m_kinds(nbOfVariables, 0), m_hasVariable(nbOfVariables, 1),
      m_conflictTold(nbOfVariables, 0) {
    for (int i = 0; i < nbOfVariables; ++i)
        m_parent[i] = i;
}

int KOBWBUnitSets::Add(unsigned char kinds) {
    const int set = static_cast<int>(m_parent.size());
    m_parent.push_back(set);
    m_kinds.push_back(kinds);
    m_hasVariable.push_back(0);
    m_conflictTold.push_back(0);
    return set;
}

int KOBWBUnitSets::Find(int a) {
    int root = a;
    while (m_parent[root] != root)
        root = m_parent[root];
    while (m_parent[a] != root) {
        const int next = m_parent[a];
        m_parent[a] = root;
        a = next;
    }
    return root;
}

int KOBWBUnitSets::Merge(int a, int b, bool& conflict) {
    conflict = false;
    if (a == None) return b;
    if (b == None) return a;
    const int rootA = Find(a);
    const int rootB = Find(b);
    if (rootA == rootB) return rootA;
    // The smaller index stays the root: variable sets come first, which keeps
    // the paths from names short.
    const int root = rootA < rootB ? rootA : rootB;
    const int child = rootA < rootB ? rootB : rootA;
    m_parent[child] = root;
    m_kinds[root] |= m_kinds[child];
    m_hasVariable[root] |= m_hasVariable[child];
    m_conflictTold[root] |= m_conflictTold[child];
    if (m_kinds[root] == Both && m_hasVariable[root] && !m_conflictTold[root]) {
        m_conflictTold[root] = 1;
        conflict = true;
    }
    return root;
}

unsigned char KOBWBUnitSets::GetKinds(int a) {
    return a == None ? 0 : m_kinds[Find(a)];
}

KOBWBUnitFlow KOBWBUnitFlowOf(KOBWBExpressionType type) {
    switch (type) {
    case KOBWBOppositeType:
    case KOBWBAbsType:
    case KOBWBCeilType:
    case KOBWBFloorType:
    case KOBWBRoundType:
    case KOBWBTruncType:
    case KOBWBSignType:
        return KOBWBUnitFlow::First;
    case KOBWBSumType:
    case KOBWBMinusType:
    case KOBWBMinType:
    case KOBWBMaxType:
    case KOBWBDimType:
    case KOBWBModType:
        return KOBWBUnitFlow::Shared;
    default:
        return KOBWBUnitFlow::Other;
    }
}
