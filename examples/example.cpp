#include "KOBWBx.h"

#include <cstdio>

int main() {
    KOBWBEnvironment environment;
    const KOBWBValue x(KOBWBCreateRealInterval(1.0, 2.0));
    std::printf("x = [%g, %g]\n", x.GetAsRealInterval().lower, x.GetAsRealInterval().upper);
    return x.IsConsistent(environment) ? 0 : 1;
}
