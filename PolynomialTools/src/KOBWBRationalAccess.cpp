#include "KOBWBRationalAccess.h"

#include "KOBWBFlintValues.h"
#include "KOBWBRationalBig.h"

void KOBWBRationalAccess::Numerator(const KOBWBRational& value, fmpz_t result) {
    if (value.m_big)
        fmpz_set_mpz(result, mpq_numref(value.m_big->value));
    else
        fmpz_set_si(result, value.m_numerator);
}

void KOBWBRationalAccess::Denominator(const KOBWBRational& value, fmpz_t result) {
    if (value.m_big)
        fmpz_set_mpz(result, mpq_denref(value.m_big->value));
    else
        fmpz_set_si(result, value.m_denominator);
}

void KOBWBRationalAccess::ToFlint(const KOBWBRational& value, fmpq_t result) {
    Numerator(value, fmpq_numref(result));
    Denominator(value, fmpq_denref(result));
}

KOBWBRational KOBWBRationalAccess::FromFlint(const fmpz_t value) {
    if (fmpz_fits_si(value)) return KOBWBRational(static_cast<long long>(fmpz_get_si(value)));
    KOBWBRational result;
    result.m_big = KOBWBRational::BigPointer(new KOBWBRational::Big);
    fmpz_get_mpz(mpq_numref(result.m_big->value), value);
    return result;
}

KOBWBRational KOBWBRationalAccess::FromFlint(const fmpq_t value) {
    KOBWBRational result;
    if (fmpz_fits_si(fmpq_numref(value)) && fmpz_fits_si(fmpq_denref(value))) {
        result.m_numerator = fmpz_get_si(fmpq_numref(value));
        result.m_denominator = fmpz_get_si(fmpq_denref(value));
        return result;
    }
    result.m_big = KOBWBRational::BigPointer(new KOBWBRational::Big);
    fmpz_get_mpz(mpq_numref(result.m_big->value), fmpq_numref(value));
    fmpz_get_mpz(mpq_denref(result.m_big->value), fmpq_denref(value));
    return result;
}

KOBWBRational KOBWBRationalAccess::FromFlint(const fmpz_t numerator, const fmpz_t denominator) {
    if (fmpz_is_zero(denominator)) return KOBWBRational();
    if (fmpz_is_one(denominator)) return FromFlint(numerator);
    KOBWBFlint::Rational value;
    fmpq_set_fmpz_frac(value.get(), numerator, denominator);
    return FromFlint(value.get());
}
