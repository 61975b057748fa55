#ifndef KOBWBRationalAccess_h
#define KOBWBRationalAccess_h

#include "KOBWBRational.h"

#include <flint/fmpq.h>
#include <flint/fmpz.h>

// Moves exact rationals to FLINT and back without text or reduction where none is
// needed: machine words go as words, GMP values as GMP values.
struct KOBWBRationalAccess {
    // The numerator of value (its value when it is an integer).
    static void Numerator(const KOBWBRational& value, fmpz_t result);
    static void Denominator(const KOBWBRational& value, fmpz_t result);
    static void ToFlint(const KOBWBRational& value, fmpq_t result);
    static KOBWBRational FromFlint(const fmpz_t value);
    // A canonical FLINT rational (reduced, positive denominator), taken as it is.
    static KOBWBRational FromFlint(const fmpq_t value);
    // numerator / denominator, reduced; 0 for a zero denominator.
    static KOBWBRational FromFlint(const fmpz_t numerator, const fmpz_t denominator);
};

#endif
