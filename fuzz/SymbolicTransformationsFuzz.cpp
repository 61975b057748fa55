// Symbolic transformations: a small system built from the bytes (up to six equations
// of any type over a handful of variables with domains) is run through the operator
// with a mode and an implementation read from the bytes; the equations left are then
// evaluated.

#include "FuzzGraph.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace {

struct Remover {
    void operator()(KOBWBSymbolicTransformations* transformations) const {
        KOBRemove(transformations);
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    KOBWBFactory factory;
    const unsigned mode = input.Below(32);
    factory.GetEnvironment().SetUseOldSymbolicTransformations(input.Below(4) == 0);
    FuzzGraph graph(factory, input);
    const int equations = 1 + input.Below(6);
    for (int e = 0; e < equations && !input.Empty(); ++e) {
        KOBWBExpression* root = nullptr;
        for (int i = input.Below(6); i >= 0; --i)
            if (KOBWBExpression* made = graph.Create(input.Below(2) == 0, false)) root = made;
        factory.AddEquation(root, static_cast<KOBWBEquationType>(input.Below(9)));
    }
    for (int i = 0; i < factory.GetNbOfVariables(); ++i)
        factory.GetVariable(i)->SetExprValue(FuzzDomain(input));
    std::unique_ptr<KOBWBSymbolicTransformations, Remover> transformations(
        KOBCreateWBSymbolicTransformations(0, factory));
    transformations->SetMode(mode);
    transformations->Run();
    transformations->AreInequalitiesInconsistent();
    for (int i = 0; i < factory.GetNbOfVariables(); ++i)
        transformations->GetVariableExpression(i);
    for (KOBWBEquation* equation = factory.GetFirstEquation(); equation;
         equation = equation->GetNext())
        if (equation->GetRoot()) equation->GetRoot()->GetValue();
    return 0;
}
