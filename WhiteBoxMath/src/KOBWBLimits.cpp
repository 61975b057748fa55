#include "KOBWBLimits.h"

// All values are constant expressions, so they are set before any code of the
// library or of its host runs. The derived values are those of KOBWBMaxReal and
// KOBWBMaxInteger: 1 / max, ln(max), ln(2 max), 10 max, max + 1 and so on.
namespace {
constexpr double maxReal = 3.4028234663852886e+38;
constexpr int maxInteger = 2147483646;
} // namespace

double KOBWBMaxReal = maxReal;
double KOBWBMinReal = 1.0 / maxReal;
int KOBWBMaxInteger = maxInteger;
double KOBWBMaxExpReal = 88.72283905206835;
double KOBWBMaxHypReal = 89.4159862326283;
int KOBWBMaxPowExpReal = 8;
double KOBWBAbsPrecision = 1e-14;
double KOBWBOnePlusEps = 1.0000000000000002;
KOBWBRealInterval KOBWBReal_Trig = {-1e9, 1e9};
KOBWBRealInterval KOBWBReal_TrigInv = {-1.0, 1.0};
KOBWBRealInterval KOBWBReal_Any = {-maxReal, maxReal};
KOBWBRealInterval KOBWBReal_Nil = {maxReal, -maxReal};
KOBWBRealInterval KOBWBReal_Pos = {0.0, maxReal};
KOBWBIntegerInterval KOBWBInteger_Any = {-maxInteger, maxInteger};
KOBWBIntegerInterval KOBWBInteger_Nil = {maxInteger, -maxInteger};
double KOBWBSingleReal_Any = 10.0 * maxReal;
double KOBWBSingleReal_Nil = -10.0 * maxReal;
int KOBWBSingleInteger_Any = maxInteger + 1;
int KOBWBSingleInteger_Nil = -1 - maxInteger;
