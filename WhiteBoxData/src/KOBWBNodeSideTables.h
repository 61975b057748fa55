#ifndef KOBWBNodeSideTables_h
#define KOBWBNodeSideTables_h

#include "KOBWBValue.h"

#include <memory>
#include <unordered_map>

class KOBWBExpression;

namespace kobwb {

// Per-node values of the factory's registered properties; -1 means "the default".
// Made when a node first stores a value other than the default.
struct PropertyTable {
    int count = 0;
    int capacity = 0;
    std::unique_ptr<int[]> data;
};

// What only a few nodes of a factory carry, kept beside the nodes.
struct NodeSideTables {
    std::unordered_map<const KOBWBExpression*, KOBWBValue> ownValues;
    std::unordered_map<const KOBWBExpression*, PropertyTable> properties;
};

} // namespace kobwb

#endif
