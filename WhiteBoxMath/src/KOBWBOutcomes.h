#ifndef KOBWBOutcomes_h
#define KOBWBOutcomes_h

#include "KOBWBBoolean.h"

// A four-valued boolean as the set of its possible outcomes: bit 0 false, bit 1 true.
// "Undef" is both outcomes and "Contr" none, so combining booleans is combining the
// outcomes of every pair.
namespace kobwb {

constexpr unsigned outcomeFalse = 1;
constexpr unsigned outcomeTrue = 2;

inline unsigned OutcomesOf(KOBWBBoolean b) {
    switch (b) {
    case KOBWBFalse:
        return outcomeFalse;
    case KOBWBTrue:
        return outcomeTrue;
    case KOBWBUndef:
        return outcomeFalse | outcomeTrue;
    default:
        return 0;
    }
}

inline KOBWBBoolean BooleanOf(unsigned outcomes) {
    constexpr KOBWBBoolean booleans[] = {KOBWBContr, KOBWBFalse, KOBWBTrue, KOBWBUndef};
    return booleans[outcomes & 3];
}

// The outcomes of op(x, y) for every outcome x of a and y of b.
template <class Operation>
KOBWBBoolean CombineOutcomes(KOBWBBoolean a, KOBWBBoolean b, Operation op) {
    const unsigned left = OutcomesOf(a);
    const unsigned right = OutcomesOf(b);
    unsigned result = 0;
    for (int x = 0; x < 2; ++x) {
        for (int y = 0; y < 2; ++y) {
            if ((left & (1u << x)) && (right & (1u << y)))
                result |= op(x != 0, y != 0) ? outcomeTrue : outcomeFalse;
        }
    }
    return BooleanOf(result);
}

inline KOBWBBoolean Negation(KOBWBBoolean b) {
    const unsigned outcomes = OutcomesOf(b);
    return BooleanOf(((outcomes & outcomeFalse) ? outcomeTrue : 0) |
                     ((outcomes & outcomeTrue) ? outcomeFalse : 0));
}

} // namespace kobwb

#endif
