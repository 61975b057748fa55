#ifndef KOBWBRationalBig_h
#define KOBWBRationalBig_h

#include "KOBWBRational.h"

#include <gmp.h>

// The arbitrary-precision form of a KOBWBRational: a GMP rational, always reduced.
struct KOBWBRational::Big {
    Big() { mpq_init(value); }
    ~Big() { mpq_clear(value); }
    Big(const Big&) = delete;
    Big& operator=(const Big&) = delete;
    mpq_t value;
};

#endif
