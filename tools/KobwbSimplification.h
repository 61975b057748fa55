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

// Runs the symbolic transformations in the mode, then writes the equations and the
// expressions of the variables eliminated as one writes them: every exact constant
// sub-expression as one constant (Pi/4, not -1*Pi/4 after a plus), fractional
// coefficients as quotients (-x^2/2, not -1/2*x^2), and an expression's constant
// term first (y := 5 - x/2). False when the transformations cannot be made.
bool RunSimplify(KOBWBFactory& factory, unsigned mode, SimplifyReport& report);

// Replaces each sub-expression of the root made of constants only whose value is
// an exact fraction (of a power of Pi) by one constant of that value. Other values
// are left as written: integer arithmetic past 32 bits is not exact, and a large
// integer is written as a product or power of integer constants on purpose.
// Returns the root, or the constant that stands for a root of constants only.
KOBWBExpression* FoldExactConstants(KOBWBFactory& factory, KOBWBExpression* root);

// Writes each product led by a fraction p/q (no Pi) as a quotient by q, so that it
// prints as x/2, -3*x/2, or "- x^2/2" after another term of a sum. Returns the
// root, or what stands for a root that is such a product.
KOBWBExpression* WriteFractionsAsQuotients(KOBWBFactory& factory, KOBWBExpression* root);

// The report as lines: "NAME := EXPRESSION" per definition, then the verdict on
// the inequalities when there is one.
void WriteSimplifyReport(const SimplifyReport& report, std::string& out);

} // namespace kobwb_tool

#endif
