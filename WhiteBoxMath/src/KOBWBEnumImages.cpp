#include "KOBWBEnumImages.h"

#include "KOBWBArithmeticKernels.h"

#include <cmath>

namespace kobwb {

bool IsPointImage(const KOBWBRealInterval& image, double& point) {
    const double width = image.upper - image.lower;
    if (!(width >= 0) || width > KOBWBAbsPrecision * std::max(1.0, std::fabs(image.lower)))
        return false;
    point = image.lower + width * 0.5;
    return true;
}

EnumImages::EnumImages(bool integer)
    : m_integer(integer), m_integerHull(KOBWBInteger_Nil), m_realHull(KOBWBReal_Nil) {}

void EnumImages::Add(const KOBWBRealInterval& image) {
    if (!(image.lower <= image.upper)) return;
    ++m_count;
    m_realHull = m_count == 1 ? image : KOBWBUnite(m_realHull, image, 0.0);
    double point = 0.0;
    if (IsPointImage(image, point))
        m_reals.Append(point);
    else
        m_wide = true;
}

void EnumImages::Add(const KOBWBIntegerInterval& image) {
    if (image.lower > image.upper) return;
    ++m_count;
    m_integerHull = m_count == 1 ? image : KOBWBUnite(m_integerHull, image);
    if (image.lower == image.upper)
        m_integers.Append(image.lower);
    else
        m_wide = true;
}

KOBWBValue EnumImages::Finish(const KOBWBEnvironment& environment) {
    if (m_count == 0) environment.SetError(errorEmptyArgument);
    if (m_integer) {
        if (m_count == 0) m_integers.SetNil();
        if (m_wide) m_integers.SetAsIntegerInterval(m_integerHull);
        m_integers.Correct(environment);
        return KOBWBValue(m_integers);
    }
    if (m_count == 0) m_reals.SetNil();
    if (m_wide) m_reals.SetAsRealInterval(m_realHull);
    m_reals.Correct(environment);
    return KOBWBValue(m_reals);
}

KOBWBValue EnumerationOf(const KOBWBEnvironment& environment, const KOBWBRealInterval& interval) {
    KOBWBRealEnum domain(KOBWBEnumNil);
    if (interval.lower <= interval.upper) domain.SetAsRealInterval(interval);
    domain.Correct(environment);
    return KOBWBValue(domain);
}

KOBWBValue EnumerationOf(const KOBWBEnvironment& environment,
                         const KOBWBIntegerInterval& interval) {
    KOBWBIntegerEnum domain(KOBWBEnumNil);
    if (interval.lower <= interval.upper) domain.SetAsIntegerInterval(interval);
    domain.Correct(environment);
    return KOBWBValue(domain);
}

} // namespace kobwb
