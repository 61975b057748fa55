#ifndef TriangleStrip_h
#define TriangleStrip_h

#include "KOBWBx.h"

#include <cmath>
#include <vector>

// The rigid triangle strip: points P0 .. P(n-1) of a strip of equilateral triangles of
// edge 10 (even points on y = 0, odd ones on y = h), P0 fixed at the origin, P1 on the
// horizontal line y = h, and every later point at distance 10 from the two before it.
// The start is each coordinate moved by up to 5% of an edge off the answer.
namespace bench {

struct TriangleStrip {
    std::vector<KOBWBVariable*> variables; // x0, y0, x1, y1, ...
    std::vector<double> answer;
    std::vector<KOBWBEquation*> equations;
};

inline KOBWBExpression* Distance(KOBWBFactory& f, KOBWBVariable* x1, KOBWBVariable* y1, KOBWBVariable* x2,
                                 KOBWBVariable* y2) {
    KOBWBExpression* dx = f.CreateSub(x2, x1);
    KOBWBExpression* dy = f.CreateSub(y2, y1);
    return f.CreateSqrt(f.CreateSum(f.CreatePower(dx, 2), f.CreatePower(dy, 2)));
}

inline KOBWBEquation* AddDistance(KOBWBFactory& f, TriangleStrip& strip, int a, int b, double distance) {
    KOBWBVariable** v = strip.variables.data();
    KOBWBEquation* equation =
        f.AddEquation(Distance(f, v[2 * a], v[2 * a + 1], v[2 * b], v[2 * b + 1]), KOBWBEqEqual, f.CreateRealConstant(distance));
    strip.equations.push_back(equation);
    return equation;
}

inline TriangleStrip BuildTriangleStrip(KOBWBFactory& f, int points) {
    const double h = 5.0 * std::sqrt(3.0);
    TriangleStrip strip;
    unsigned seed = 12345;
    const auto offset = [&seed] {
        seed = seed * 1103515245u + 12345u;
        return (static_cast<int>((seed >> 8) % 2001) - 1000) / 1000.0 * 0.5;
    };
    for (int k = 0; k < points; ++k) {
        const double x = 5.0 * k;
        const double y = k % 2 == 0 ? 0.0 : h;
        strip.answer.push_back(x);
        strip.answer.push_back(y);
        KOBWBVariable* vx = f.CreateVariable();
        KOBWBVariable* vy = f.CreateVariable();
        vx->SetExprValue(KOBWBValue(k == 0 ? x : x + offset()));
        vy->SetExprValue(KOBWBValue(k == 0 ? y : y + offset()));
        strip.variables.push_back(vx);
        strip.variables.push_back(vy);
    }
    strip.variables[0]->Fix(1);
    strip.variables[1]->Fix(1);
    if (points > 1) {
        strip.equations.push_back(f.AddEquation(strip.variables[3], KOBWBEqEqual, f.CreateRealConstant(h)));
        AddDistance(f, strip, 0, 1, 10.0);
    }
    for (int k = 2; k < points; ++k) {
        AddDistance(f, strip, k, k - 1, 10.0);
        AddDistance(f, strip, k, k - 2, 10.0);
    }
    return strip;
}

} // namespace bench

#endif
