#include "KOBWBRationalAccess.h"

#include "KOBWBFlintValues.h"
#include "KOBWBRationalBig.h"

namespace {

// A read-only GMP view of a FLINT integer: FLINT's own GMP value when it holds one,
// otherwise the machine word.
class IntegerView {
public:
    explicit IntegerView(const fmpz_t value) {
        if (COEFF_IS_MPZ(*value)) {
            m_view = COEFF_TO_PTR(*value);
            return;
        }
        const slong word = *value;
        m_word = word < 0 ? 0UL - static_cast<mp_limb_t>(word) : static_cast<mp_limb_t>(word);
        m_view = mpz_roinit_n(m_value, &m_word, word < 0 ? -1 : (word > 0 ? 1 : 0));
    }
    IntegerView(const IntegerView&) = delete;
    IntegerView& operator=(const IntegerView&) = delete;
    mpz_srcptr get() const { return m_view; }

private:
    mp_limb_t m_word = 0;
    mpz_t m_value;
    mpz_srcptr m_view;
};

} // namespace

void KOBWBRationalAccess::Numerator(const KOBWBRational& value, fmpz_t result) {
    if (value.m_big)
        fmpz_set_mpz(result, KOBWBRational::Big::View(value).Numerator());
    else
        fmpz_set_si(result, value.m_numerator);
}

void KOBWBRationalAccess::Denominator(const KOBWBRational& value, fmpz_t result) {
    if (value.m_big)
        fmpz_set_mpz(result, KOBWBRational::Big::View(value).Denominator());
    else
        fmpz_set_si(result, value.m_denominator);
}

void KOBWBRationalAccess::ToFlint(const KOBWBRational& value, fmpq_t result) {
    Numerator(value, fmpq_numref(result));
    Denominator(value, fmpq_denref(result));
}

KOBWBRational KOBWBRationalAccess::FromFlint(const fmpz_t value) {
    if (!COEFF_IS_MPZ(*value)) return KOBWBRational(static_cast<long long>(*value));
    const mpz_srcptr integer = COEFF_TO_PTR(*value);
    KOBWBRational result;
    if (KOBWBRational::Big::AssignInteger(result, integer)) return result;
    const fmpz one = 1;
    const IntegerView numerator(value), denominator(&one);
    KOBWBRational::Big::Assign(result, numerator.get(), denominator.get());
    return result;
}

KOBWBRational KOBWBRationalAccess::FromFlint(const fmpq_t value) {
    KOBWBRational result;
    if (fmpz_fits_si(fmpq_numref(value)) && fmpz_fits_si(fmpq_denref(value))) {
        result.m_numerator = fmpz_get_si(fmpq_numref(value));
        result.m_denominator = fmpz_get_si(fmpq_denref(value));
        return result;
    }
    const IntegerView numerator(fmpq_numref(value)), denominator(fmpq_denref(value));
    KOBWBRational::Big::Assign(result, numerator.get(), denominator.get());
    return result;
}

KOBWBRational KOBWBRationalAccess::FromFlint(const fmpz_t numerator, const fmpz_t denominator) {
    if (fmpz_is_zero(denominator)) return KOBWBRational();
    if (fmpz_is_one(denominator)) return FromFlint(numerator);
    KOBWBFlint::Rational value;
    fmpq_set_fmpz_frac(value.get(), numerator, denominator);
    return FromFlint(value.get());
}
