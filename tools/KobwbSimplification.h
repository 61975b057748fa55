#ifndef KobwbSimplification_h
#define KobwbSimplification_h

#include "KOBWBx.h"

#include <string>
#include <utility>
#include <vector>

namespace kobwb_tool {

// What a run of the symbolic transformations did besides rewriting the equations.
struct SimplifyReport {
    // The variables eliminated through linear forms and their expressions, as text
    // of the model language ("y", "5 - x/2"), in the order of the variables.
    std::vector<std::pair<std::string, std::string>> definitions;
    // Whether the run judged the constant inequalities (mode bits 2 and 16), and
    // its verdict.
    bool judged = false;
    bool inconsistent = false;
};

// Runs the symbolic transformations in the mode, then writes every exact constant
// sub-expression of the equations as one constant, so that they print as one
// writes them (Pi/4, not -1*Pi/4 after a plus). False when the transformations
// cannot be made.
bool RunSimplify(KOBWBFactory& factory, unsigned mode, SimplifyReport& report);

// Replaces each sub-expression of the root made of constants only whose value is
// an exact fraction (of a power of Pi) by one constant of that value. Other values
// are left as written: integer arithmetic past 32 bits is not exact, and a large
// integer is written as a product or power of integer constants on purpose.
// Returns the root, or the constant that stands for a root of constants only.
KOBWBExpression* FoldExactConstants(KOBWBFactory& factory, KOBWBExpression* root);

// The report as lines: "NAME := EXPRESSION" per definition, then the verdict on
// the inequalities when there is one.
void WriteSimplifyReport(const SimplifyReport& report, std::string& out);

} // namespace kobwb_tool

#endif
