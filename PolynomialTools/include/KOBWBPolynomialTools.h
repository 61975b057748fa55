#ifndef KOBWBPolynomialTools_h
#define KOBWBPolynomialTools_h

#include "KOBWBxExport.h"

class KOBWBExpression;

// The algebra's entry points for a single expression; a KOBWBPolynomialContext
// serves callers that rewrite many expressions of one factory.
class KOBWBX_API KOBWBPolynomialTools {
public:
    // The canonical form of expression, made in its factory (the rules are listed
    // in KOBWBPolynomialContext.h): an expression that is exactly 0 gives the
    // integer constant 0. Null for null.
    static KOBWBExpression* Simplify(KOBWBExpression* expression);
    // The same; expanded is false when a product or power past the expansion budget
    // stayed an atom (see KOBWBPolynomialContext::ExceededBudget), true otherwise.
    static KOBWBExpression* Simplify(KOBWBExpression* expression, bool& expanded);
};

#endif
