#ifndef KOBWBBoxContraction_h
#define KOBWBBoxContraction_h

#include "KOBWBContractor.h"
#include "KOBWBValue.h"

#include <vector>

class KOBWBFactory;
class KOBWBIntervalNewton;
class KOBWBVariable;

namespace kobwb {

// Contracts the boxes of a search over a factory's unknowns at a cost that follows what
// changed, not the size of the system. A box is loaded into the unknowns' values by
// writing only the intervals that differ from what they hold; a half of a split box is
// propagated from the unknown cut alone (its parent's other unknowns were contracted
// already), a box without a parent from every equation. The contractor (HC4) narrows
// it first; then, when given, interval Newton one equation at a time
// (KOBWBIntervalNewton::Propagate) from the unknowns that changed, and the contractor
// again from those it narrowed.
class BoxContraction {
public:
    // rows may be null: the contractor alone.
    BoxContraction(KOBWBFactory& factory, const std::vector<KOBWBVariable*>& unknowns, KOBWBIntervalNewton* rows);

    // Narrows box (an interval per unknown); split is the unknown whose split made it,
    // -1 for a box contracted from every equation. False when the box holds no point
    // that satisfies the equations within the tolerance. The equation revisions made
    // are added to revisions.
    bool Contract(std::vector<KOBWBRealInterval>& box, int split, long& revisions);
    // The unknowns' values were written by others since (interval Newton steps): the
    // next box is written whole.
    void Forget();

private:
    void Load(const std::vector<KOBWBRealInterval>& box);
    // Reads the box back from the unknowns' values, listing those that changed.
    void ReadBack(std::vector<KOBWBRealInterval>& box);
    bool ContractFrom(const std::vector<int>& unknowns, std::vector<KOBWBRealInterval>& box, long& revisions);

    KOBWBContractor m_contractor;
    const std::vector<KOBWBVariable*>& m_unknowns;
    KOBWBIntervalNewton* m_rows;
    // The intervals the unknowns hold; NaN where not known.
    std::vector<KOBWBRealInterval> m_current;
    std::vector<int> m_changed;
    std::vector<int> m_narrowed;
    std::vector<KOBWBVariable*> m_from;
};

} // namespace kobwb

#endif
