#ifndef IntervalTape_h
#define IntervalTape_h

#include "KOBWBx.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <vector>

// The baseline of the evaluation benchmarks: the graphs of some expressions copied
// once into a topologically ordered array of nodes, every node computed by a plain
// loop over two-double intervals, children before parents, each shared node once.
namespace bench {

struct Interval {
    double lower;
    double upper;
};

inline Interval Clamp(double lower, double upper) {
    constexpr double max = 3.4028234663852886e+38;
    if (!(lower <= upper) || lower > max || upper < -max) return {max, -max};
    return {std::max(lower, -max), std::min(upper, max)};
}

// A node of the tape: its code and the positions of its children.
struct TapeNode {
    KOBWBExpressionType type;
    int first;
    int count;
    Interval constant;
};

struct Tape {
    std::vector<TapeNode> nodes;
    std::vector<int> children;
    std::vector<int> roots;
};

inline int Record(Tape& tape, KOBWBExpression* node, std::unordered_map<KOBWBExpression*, int>& seen) {
    const auto known = seen.find(node);
    if (known != seen.end()) return known->second;
    std::vector<int> children;
    for (int i = 0; i < node->GetNbOfChildren(); ++i) children.push_back(Record(tape, node->GetChild(i), seen));
    TapeNode entry{node->GetType(), static_cast<int>(tape.children.size()), static_cast<int>(children.size()), {0, 0}};
    if (node->GetNbOfChildren() == 0) {
        const KOBWBRealInterval value = node->GetExprValue().GetAsRealInterval();
        entry.constant = {value.lower, value.upper};
    }
    tape.children.insert(tape.children.end(), children.begin(), children.end());
    tape.nodes.push_back(entry);
    const int position = static_cast<int>(tape.nodes.size()) - 1;
    seen.emplace(node, position);
    return position;
}

// The tape of the graphs of the roots, which it lists in the given order.
inline Tape RecordAll(const std::vector<KOBWBExpression*>& roots) {
    Tape tape;
    std::unordered_map<KOBWBExpression*, int> seen;
    for (KOBWBExpression* root : roots) tape.roots.push_back(Record(tape, root, seen));
    return tape;
}

inline Interval Multiply(Interval a, Interval b) {
    const double p[] = {a.lower * b.lower, a.lower * b.upper, a.upper * b.lower, a.upper * b.upper};
    return Clamp(*std::min_element(p, p + 4), *std::max_element(p, p + 4));
}

inline Interval Divide(Interval a, Interval b) {
    constexpr double max = 3.4028234663852886e+38;
    if (b.lower <= 0 && b.upper >= 0) return {-max, max};
    const double q[] = {a.lower / b.lower, a.lower / b.upper, a.upper / b.lower, a.upper / b.upper};
    return Clamp(*std::min_element(q, q + 4), *std::max_element(q, q + 4));
}

inline Interval Square(Interval a) {
    const double l = a.lower * a.lower, u = a.upper * a.upper;
    return a.lower <= 0 && a.upper >= 0 ? Clamp(0, std::max(l, u)) : Clamp(std::min(l, u), std::max(l, u));
}

inline Interval Atan2(Interval y, Interval x) {
    if (x.lower <= 0) return {-3.141592653589793, 3.141592653589793};
    const double c[] = {std::atan2(y.lower, x.lower), std::atan2(y.lower, x.upper), std::atan2(y.upper, x.lower),
                        std::atan2(y.upper, x.upper)};
    return Clamp(*std::min_element(c, c + 4), *std::max_element(c, c + 4));
}

inline void EvaluateTape(const Tape& tape, std::vector<Interval>& values) {
    for (size_t i = 0; i < tape.nodes.size(); ++i) {
        const TapeNode& node = tape.nodes[i];
        const int* c = tape.children.data() + node.first;
        Interval result = node.constant;
        switch (node.type) {
        case KOBWBSumType:
            result = values[c[0]];
            for (int k = 1; k < node.count; ++k)
                result = Clamp(result.lower + values[c[k]].lower, result.upper + values[c[k]].upper);
            break;
        case KOBWBProductType:
            result = values[c[0]];
            for (int k = 1; k < node.count; ++k) result = Multiply(result, values[c[k]]);
            break;
        case KOBWBQuotientType: result = Divide(values[c[0]], values[c[1]]); break;
        case KOBWBPowerType: {
            const int exponent = static_cast<int>(values[c[1]].lower);
            result = exponent == 2 ? Square(values[c[0]]) : values[c[0]];
            for (int k = 2; k < exponent; ++k) result = Multiply(result, values[c[0]]);
            break;
        }
        case KOBWBSqrtType: {
            const Interval a = values[c[0]];
            result = a.upper < 0 ? Interval{1, -1} : Clamp(std::sqrt(std::max(a.lower, 0.0)), std::sqrt(a.upper));
            break;
        }
        case KOBWBAtan2Type: result = Atan2(values[c[0]], values[c[1]]); break;
        default: break;
        }
        values[i] = result;
    }
}

} // namespace bench

#endif
