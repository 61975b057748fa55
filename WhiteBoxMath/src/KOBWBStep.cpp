#include "KOBWBStep.h"

#include "KOBWBArithmeticKernels.h"
#include "KOBWBDomain.h"
#include "KOBWBValueDispatch.h"

namespace {

// The step at one point; parameters x0, h0, x1, h1.
double StepAt(double x, const double* p) {
    if (x <= p[0]) return p[1];
    if (x >= p[2]) return p[3];
    const double t = (x - p[0]) / (p[2] - p[0]);
    return p[1] + (p[3] - p[1]) * t * t * (3 - 2 * t);
}

} // namespace

KOBWBRealInterval KOBWBStep(const KOBWBEnvironment& environment, const KOBWBRealInterval& x,
                            const double* parameters) {
    if (!parameters) {
        environment.SetError(kobwb::errorBadKind);
        return KOBWBReal_Nil;
    }
    KOBWBRealInterval r;
    if (!kobwb::CheckArgument(environment, x, r)) return r;
    const double a = StepAt(r.lower, parameters);
    const double b = StepAt(r.upper, parameters);
    return kobwb::ClampReal(std::min(a, b), std::max(a, b));
}

KOBWBValue KOBWBStep(const KOBWBEnvironment& environment, const KOBWBValue& x,
                     const double* parameters) {
    kobwb::UnaryArguments arguments;
    arguments.parameters = parameters;
    return kobwb::ApplyUnary(environment, kobwb::Unary::Step, x, arguments);
}
