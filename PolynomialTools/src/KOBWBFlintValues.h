#ifndef KOBWBFlintValues_h
#define KOBWBFlintValues_h

#include <flint/fmpq.h>
#include <flint/fmpq_poly.h>
#include <flint/fmpz.h>
#include <flint/fmpz_poly.h>

// Owners of FLINT values: each is initialised on construction and cleared on
// destruction, so that no path through the tools leaks one. get() hands the value
// to FLINT's functions.
namespace KOBWBFlint {

// FLINT keeps caches per thread (numbers past a word, ball constants) that it
// frees only when asked: each entry point into FLINT calls this, so that the
// calling thread frees them when it ends.
void ReleaseCachesAtThreadExit();

template <typename Struct, void (*Init)(Struct*), void (*Clear)(Struct*)>
class Value {
public:
    Value() { Init(m_value); }
    ~Value() { Clear(m_value); }
    Value(const Value&) = delete;
    Value& operator=(const Value&) = delete;
    Struct* get() { return m_value; }
    const Struct* get() const { return m_value; }

private:
    Struct m_value[1];
};

typedef Value<fmpz, fmpz_init, fmpz_clear> Integer;
typedef Value<fmpq, fmpq_init, fmpq_clear> Rational;
typedef Value<fmpz_poly_struct, fmpz_poly_init, fmpz_poly_clear> IntegerPolynomial;
typedef Value<fmpq_poly_struct, fmpq_poly_init, fmpq_poly_clear> RationalPolynomial;

} // namespace KOBWBFlint

#endif
