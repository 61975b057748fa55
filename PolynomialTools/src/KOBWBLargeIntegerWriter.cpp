#include "KOBWBLargeIntegerWriter.h"

#include "KOBWBConstant.h"
#include "KOBWBExpression.h"
#include "KOBWBFactory.h"
#include "KOBWBFlintValues.h"
#include "KOBWBLimits.h"
#include "KOBWBRationalAccess.h"

#include <algorithm>
#include <climits>
#include <vector>

namespace {

// Integers below this are exact as doubles.
constexpr long long exactDoubles = 1LL << 53;
// Trial division goes this far; a larger prime factor is found only as the cofactor.
constexpr long long largestTrialDivisor = 9999;

struct PrimePower {
    long long prime;
    long long exponent;
};

// Whether an integer constant holds the value as itself: the integers that stand
// for any or no integer, and those past them, are not numbers.
bool FitsInt(const KOBWBRational& value, long long& small) {
    int numerator = 0, denominator = 1;
    if (!value.FitsInt(numerator, denominator) || denominator != 1 || KOBWBIsAnyInteger(numerator) ||
        KOBWBIsNilInteger(numerator) || numerator == INT_MIN)
        return false;
    small = numerator;
    return true;
}

// base^exponent == value (positive, integer) for a base that fits an integer
// constant and an exponent of at most 62, the largest such exponent.
bool PerfectPower(const KOBWBRational& value, long long& base, long long& exponent) {
    constexpr long long largestExponent = 62;
    KOBWBFlint::ReleaseCachesAtThreadExit();
    // value = root^total with a root that is no perfect power: FLINT finds some
    // power, whose root is taken apart again until it is none.
    KOBWBFlint::Integer root, next;
    KOBWBRationalAccess::Numerator(value, root.get());
    long long total = 1;
    for (int k = 0; (k = fmpz_is_perfect_power(next.get(), root.get())) > 1;) {
        total *= k;
        fmpz_swap(root.get(), next.get());
    }
    // value is then an e-th power exactly when e divides total, of root^(total / e).
    const long long rootBits = static_cast<long long>(fmpz_bits(root.get()));
    for (long long e = std::min(total, largestExponent); e >= 2; --e) {
        // root^m is at least 2^((bits - 1) m): past INT_MAX without being formed.
        if (total % e != 0 || (rootBits - 1) * (total / e) >= 31) continue;
        fmpz_pow_ui(next.get(), root.get(), static_cast<unsigned long>(total / e));
        if (fmpz_cmp_si(next.get(), INT_MAX) > 0) continue;
        base = fmpz_get_si(next.get());
        exponent = e;
        return true;
    }
    return false;
}

// The prime powers of value (positive, integer); false when a factor is left that
// no integer constant or power of one holds. The trial divisions test divisibility
// by a word and take a prime out all at once: a value of thousands of digits costs
// one pass over its digits per divisor.
bool Factor(const KOBWBRational& value, std::vector<PrimePower>& factors) {
    KOBWBFlint::ReleaseCachesAtThreadExit();
    KOBWBFlint::Integer rest, divisor;
    KOBWBRationalAccess::Numerator(value, rest.get());
    for (long long p = 2; p <= largestTrialDivisor; p += p == 2 ? 1 : 2) {
        if (fmpz_cmp_si(rest.get(), p * p) < 0) break;
        if (!fmpz_divisible_si(rest.get(), p)) continue;
        fmpz_set_si(divisor.get(), p);
        factors.push_back({p, static_cast<long long>(fmpz_remove(rest.get(), rest.get(), divisor.get()))});
    }
    if (fmpz_is_one(rest.get())) return true;
    if (fmpz_cmp_si(rest.get(), INT_MAX) <= 0) {
        factors.push_back({fmpz_get_si(rest.get()), 1});
        return true;
    }
    long long base = 0, exponent = 0;
    if (!PerfectPower(KOBWBRationalAccess::FromFlint(rest.get()), base, exponent)) return false;
    factors.push_back({base, exponent});
    return true;
}

// base^exponent with a real base: the factory evaluates a power of integer
// constants in integers, which do not hold it, and a power of a real in reals,
// while the algebra reads the whole number base exactly.
KOBWBExpression* WritePower(KOBWBFactory& factory, long long base, long long exponent) {
    return factory.CreatePower(factory.CreateRealConstant(static_cast<double>(base)),
                               factory.CreateIntegerConstant(static_cast<int>(exponent)));
}

} // namespace

KOBWBExpression* KOBWBWriteLargeInteger(KOBWBFactory& factory, const KOBWBRational& value) {
    long long small = 0;
    if (!value.IsInteger() || value.IsZero() || FitsInt(value, small)) return nullptr;
    const KOBWBRational magnitude = value.Sign() < 0 ? -value : value;
    std::vector<KOBWBExpression*> operands;
    long long base = 0, exponent = 0;
    if (PerfectPower(magnitude, base, exponent)) {
        operands.push_back(WritePower(factory, base, exponent));
    } else if (magnitude < KOBWBRational(exactDoubles)) {
        // A real constant holds it exactly, and reads and prints as one number.
        return factory.CreateRealConstant(value.ToDouble());
    } else {
        std::vector<PrimePower> factors;
        if (!Factor(magnitude, factors)) return nullptr;
        // Prime powers that fit are multiplied into integer constants as far as they
        // fit, which come first; the others stay powers.
        std::vector<KOBWBExpression*> powers;
        long long chunk = 1;
        for (const PrimePower& factor : factors) {
            const KOBWBRational power = KOBWBRational(factor.prime).Power(factor.exponent);
            long long fits = 0;
            if (!FitsInt(power, fits)) {
                powers.push_back(WritePower(factory, factor.prime, factor.exponent));
                continue;
            }
            if (chunk * fits >= KOBWBSingleInteger_Any) {
                operands.push_back(factory.CreateIntegerConstant(static_cast<int>(chunk)));
                chunk = 1;
            }
            chunk *= fits;
        }
        if (chunk > 1) operands.push_back(factory.CreateIntegerConstant(static_cast<int>(chunk)));
        // A product of integer constants alone would be evaluated in integers,
        // past their range: its first factor is a real.
        if (powers.empty() && operands.size() > 1)
            operands[0] = factory.CreateRealConstant(operands[0]->GetExprValue().GetAsInteger());
        operands.insert(operands.end(), powers.begin(), powers.end());
    }
    // The sign goes into a leading constant, or before the powers as -1.
    if (value.Sign() < 0) {
        const KOBWBValue& leading = operands[0]->GetExprValue();
        if (operands[0]->GetType() != KOBWBConstantType)
            operands.insert(operands.begin(), factory.CreateIntegerConstant(-1));
        else if (leading.GetType() == KOBWBIntegerValue)
            operands[0] = factory.CreateIntegerConstant(-leading.GetAsInteger());
        else
            operands[0] = factory.CreateRealConstant(-leading.GetAsRealInterval().lower);
    }
    return operands.size() == 1 ? operands[0] : factory.CreateProduct(static_cast<int>(operands.size()), operands.data());
}
