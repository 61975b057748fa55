#ifndef KOBWBEnumImages_h
#define KOBWBEnumImages_h

#include "KOBWBIntegerEnum.h"
#include "KOBWBRealEnum.h"
#include "KOBWBValue.h"

class KOBWBEnvironment;

// The enumerations that result from mapping a function over enumerated domains.
namespace kobwb {

// Collects the images of the elements: an image that is a point becomes an element;
// one wider than a point (a whole range, a pole) turns the result into the interval of
// the hull of every image. Empty images are left out.
class EnumImages {
public:
    explicit EnumImages(bool integer);

    void Add(const KOBWBRealInterval& image);
    void Add(const KOBWBIntegerInterval& image);
    // The enumeration value normalised with Correct; when every image was empty, bit 1
    // and the nil enumeration.
    KOBWBValue Finish(const KOBWBEnvironment& environment);

private:
    bool m_integer;
    bool m_wide = false;
    int m_count = 0;
    KOBWBIntegerEnum m_integers{KOBWBEnumNil};
    KOBWBRealEnum m_reals{KOBWBEnumNil};
    KOBWBIntegerInterval m_integerHull;
    KOBWBRealInterval m_realHull;
};

// The enumeration of the interval's elements (nil when it is empty), normalised with
// Correct: the result of an operation on an enumeration that is not held as a list.
KOBWBValue EnumerationOf(const KOBWBEnvironment& environment, const KOBWBRealInterval& interval);
KOBWBValue EnumerationOf(const KOBWBEnvironment& environment, const KOBWBIntegerInterval& interval);

// Whether a real image is a point, relative to KOBWBAbsPrecision beyond 1; point is then
// its middle.
bool IsPointImage(const KOBWBRealInterval& image, double& point);

} // namespace kobwb

#endif
