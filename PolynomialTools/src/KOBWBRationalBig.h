#ifndef KOBWBRationalBig_h
#define KOBWBRationalBig_h

#include "KOBWBRational.h"

#include <gmp.h>

// The arbitrary-precision form of a KOBWBRational: the limbs of the numerator and
// of the denominator, reduced, in one block of memory, so that a big value costs
// one allocation. GMP reads it through read-only views; results are computed in a
// per-thread GMP rational and copied into a new block of the exact size.
struct alignas(mp_limb_t) KOBWBRational::Big {
    // GMP's convention: the numerator's sign is the sign of its size.
    int numeratorSize;
    int denominatorSize;
    // The limbs the block holds, at least |numeratorSize| + denominatorSize.
    int capacity;

    mp_limb_t* Limbs() { return reinterpret_cast<mp_limb_t*>(this + 1); }
    const mp_limb_t* Limbs() const { return reinterpret_cast<const mp_limb_t*>(this + 1); }

    // A block holding numerator / denominator, which must be reduced with a
    // positive denominator.
    static Big* Create(mpz_srcptr numerator, mpz_srcptr denominator);
    static Big* Copy(const Big& other);
    static void Destroy(Big* big);

    // Sets value to a reduced GMP rational: machine words when both parts fit.
    static void Assign(KOBWBRational& value, mpq_srcptr from);
    // A GMP rational of the calling thread for results, reused from call to call.
    static mpq_ptr Scratch();

    // A read-only GMP view of a rational, valid while the rational is unchanged.
    class View {
    public:
        explicit View(const KOBWBRational& value);
        View(const View&) = delete;
        View& operator=(const View&) = delete;
        mpq_srcptr get() const { return m_value; }
        mpz_srcptr Numerator() const { return mpq_numref(m_value); }
        mpz_srcptr Denominator() const { return mpq_denref(m_value); }

    private:
        mp_limb_t m_words[2];
        mpq_t m_value;
    };
};

static_assert(sizeof(KOBWBRational::Big) % sizeof(mp_limb_t) == 0, "the limbs follow the sizes unpadded");

#endif
