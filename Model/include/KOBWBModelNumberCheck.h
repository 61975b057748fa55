#ifndef KOBWBModelNumberCheck_h
#define KOBWBModelNumberCheck_h

#include "KOBWBLocation.h"
#include "KOBWBxExport.h"

#include <string>
#include <vector>

class KOBWBModel;

// A place of the model where a number will not be what the text says.
struct KOBWBNumberWarning {
    KOBWBLocation location;
    std::string message;
};

// Warnings about the number model of the library, for a model without errors, in
// text order:
// - a constant beyond the range of reals (its magnitude, in the factory's units, above
//   KOBWBMaxReal): it would stand for every real; reported at the constant;
// - a power with an exponent that is not an integer constant, or a logarithm (ln, log),
//   whose argument can reach below KOBWBMinReal, where it has no value: reported at the
//   power or the function. The argument's domain is its image over the variables as
//   the model leaves them, every variable ranging over the reals.
class KOBWBX_API KOBWBModelNumberCheck {
public:
    static std::vector<KOBWBNumberWarning> Run(const KOBWBModel& model);
};

#endif
