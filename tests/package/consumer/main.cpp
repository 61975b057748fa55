#include "KOBWBx.h"

#include <cstdio>

int main() {
    KOBWBEnvironment environment;
    const KOBWBValue value(KOBWBCreateRealInterval(1.0, 2.0));
    if (!value.IsConsistent(environment) || value.GetWidth() != 1.0) return 1;
    std::printf("consumer ok\n");
    return 0;
}
