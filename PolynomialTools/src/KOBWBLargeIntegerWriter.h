#ifndef KOBWBLargeIntegerWriter_h
#define KOBWBLargeIntegerWriter_h

#include "KOBWBRational.h"

class KOBWBExpression;
class KOBWBFactory;

// An integer past the factory's 32-bit integer constants, written exactly: as a
// power of a whole number (3.0^40), as a real constant below 2^53 (which a double
// holds exactly), or as a product of integer constants and powers of whole numbers
// (7*3.0^40). The algebra reads these back exactly, and the factory evaluates them
// in reals (a power or product of integer constants would be evaluated in 32-bit
// integers, which do not hold it). Null when its factors are not all small enough to find (a prime factor
// of more than four digits other than one cofactor that fits an integer constant),
// and for any value that is not such an integer.
KOBWBExpression* KOBWBWriteLargeInteger(KOBWBFactory& factory, const KOBWBRational& value);

#endif
