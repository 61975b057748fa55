#ifndef KOBWBIntegerForms_h
#define KOBWBIntegerForms_h

#include "KOBWBInterval.h"

class KOBWBEnvironment;

// Integer forms that the value level uses and the public interval level does not
// offer: the positive difference and the transfer of sign on integer intervals.
namespace kobwb {

KOBWBIntegerInterval IntegerDim(const KOBWBEnvironment& environment, const KOBWBIntegerInterval& a,
                                const KOBWBIntegerInterval& b);
KOBWBIntegerInterval IntegerSign(const KOBWBEnvironment& environment, const KOBWBIntegerInterval& a,
                                 const KOBWBIntegerInterval& b);

} // namespace kobwb

#endif
