#ifndef KOBWBRationalBig_h
#define KOBWBRationalBig_h

#include "KOBWBRational.h"

#include <gmp.h>

// The forms of a KOBWBRational past machine words.
// - A wide integer: an integer that does not fit in a long long but whose magnitude
//   is below 2^127. It stays in the rational's own two words, the low half in
//   m_numerator and the high half in m_denominator, and m_big holds WideMark(): the
//   products and sums of machine-word coefficients cost no allocation.
// - A big value: the limbs of the numerator and of the denominator, reduced, in one
//   block of memory, so that it costs one allocation.
// GMP reads both through read-only views; results are computed in a per-thread GMP
// rational and copied into the form they fit.
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
    // Writes numerator / denominator into this block, whose capacity holds them.
    void Fill(mpz_srcptr numerator, mpz_srcptr denominator);
    // A copy of a block, or the mark itself.
    static Big* Copy(const Big* other);
    static void Destroy(Big* big);

    static Big* WideMark();
    static bool IsWide(const KOBWBRational& value) { return value.m_big.get() == WideMark(); }
    static __int128 WideValue(const KOBWBRational& value);
    // Sets value to an integer in the form it fits: machine word or wide integer;
    // false, value untouched, for -2^127.
    static bool AssignInteger(KOBWBRational& value, __int128 integer);
    // The same for a GMP integer; false, value untouched, past the wide form.
    static bool AssignInteger(KOBWBRational& value, mpz_srcptr integer);

    // Sets value to numerator / denominator, reduced with a positive denominator, in
    // the smallest form it fits.
    static void Assign(KOBWBRational& value, mpz_srcptr numerator, mpz_srcptr denominator);
    static void Assign(KOBWBRational& value, mpq_srcptr from) { Assign(value, mpq_numref(from), mpq_denref(from)); }
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
        mp_limb_t m_words[3];
        mpq_t m_value;
    };
};

static_assert(sizeof(KOBWBRational::Big) % sizeof(mp_limb_t) == 0, "the limbs follow the sizes unpadded");
static_assert(GMP_LIMB_BITS == 64 && GMP_NAIL_BITS == 0, "a wide integer is two full limbs");

#endif
