#include "KOBWBFraction.h"

KOBWBFraction KOBWBCreateFraction(int numerator, int denominator, int powerOfPi, int reserved) {
    return {numerator, denominator, powerOfPi, reserved == 0 ? 1 : reserved};
}
