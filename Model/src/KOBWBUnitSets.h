#ifndef KOBWBUnitSets_h
#define KOBWBUnitSets_h

#include "KOBWBExpressionType.h"

#include <vector>

// Sets of model quantities that must share one unit class, merged as the
// equations relate them (a union-find). Each set knows whether it holds a
// variable and which kinds its members carry: a length, an angle, or both when
// the model is inconsistent.
class KOBWBUnitSets {
public:
    enum Kind : unsigned char { Length = 1, Angle = 2, Both = Length | Angle };
    static constexpr int None = -1;

    // The first count sets, one per variable name, start empty of kinds.
    explicit KOBWBUnitSets(int nbOfVariables);

    // A new set of one quantity of the given kinds.
    int Add(unsigned char kinds);
    // Merges the sets of a and b (either may be None) and answers the merged
    // set. conflict tells whether this merge made a set holding a variable
    // both a length and an angle for the first time.
    int Merge(int a, int b, bool& conflict);
    // The kinds of the set of a; none for None.
    unsigned char GetKinds(int a);

private:
    int Find(int a);

    std::vector<int> m_parent;
    std::vector<unsigned char> m_kinds;
    // Whether the set holds a variable, and whether its conflict was told.
    std::vector<unsigned char> m_hasVariable;
    std::vector<unsigned char> m_conflictTold;
};

// How an operator's quantity follows from its arguments', as the model check and the
// explanation of its unit errors both take it: the first argument's, changed in value
// only (-x, abs, rounding, sign); or one kind shared by every argument (added,
// subtracted, compared); other operators have rules of their own.
enum class KOBWBUnitFlow { First, Shared, Other };
KOBWBUnitFlow KOBWBUnitFlowOf(KOBWBExpressionType type);

#endif
