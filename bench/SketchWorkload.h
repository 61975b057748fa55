#ifndef SketchWorkload_h
#define SketchWorkload_h

#include "KOBWBx.h"

#include <vector>

// The sketch workload: P points (2P variables) with a distance constraint and an
// angle constraint (atan2) between consecutive points, every variable given an
// interval domain.
namespace bench {

struct Sketch {
    std::vector<KOBWBVariable*> variables;
    std::vector<KOBWBEquation*> equations;
};

inline Sketch BuildSketch(KOBWBFactory& factory, int points) {
    Sketch sketch;
    for (int i = 0; i < points; ++i) {
        KOBWBVariable* x = factory.CreateVariable();
        KOBWBVariable* y = factory.CreateVariable();
        x->SetExprValue(KOBWBValue(KOBWBCreateRealInterval(i * 10.0 - 1, i * 10.0 + 1)));
        y->SetExprValue(KOBWBValue(KOBWBCreateRealInterval(i * 5.0 - 1, i * 5.0 + 1)));
        sketch.variables.push_back(x);
        sketch.variables.push_back(y);
    }
    for (int i = 0; i + 1 < points; ++i) {
        KOBWBVariable* x1 = sketch.variables[2 * i];
        KOBWBVariable* y1 = sketch.variables[2 * i + 1];
        KOBWBVariable* x2 = sketch.variables[2 * i + 2];
        KOBWBVariable* y2 = sketch.variables[2 * i + 3];
        KOBWBExpression* dx = factory.CreateSub(x2, x1);
        KOBWBExpression* dy = factory.CreateSub(y2, y1);
        KOBWBExpression* length =
            factory.CreateSqrt(factory.CreateSum(factory.CreatePower(dx, 2), factory.CreatePower(dy, 2)));
        sketch.equations.push_back(factory.AddEquation(length, KOBWBEqEqual, factory.CreateRealConstant(11.18)));
        sketch.equations.push_back(
            factory.AddEquation(factory.CreateAtan2(dy, dx), KOBWBEqEqual, factory.CreateRealConstant(0.4636)));
    }
    return sketch;
}

} // namespace bench

#endif
