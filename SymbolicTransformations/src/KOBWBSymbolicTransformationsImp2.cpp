#include "KOBWBSymbolicTransformationsImp2.h"

#include "KOBLVRGlobalParameters.h"
#include "KOBLVRStream.h"
#include "KOBWBConstant.h"
#include "KOBWBEquation.h"
#include "KOBWBEquations.h"
#include "KOBWBFactory.h"
#include "KOBWBLinearForms.h"
#include "KOBWBPolynomialContext.h"
#include "KOBWBTransformationPasses.h"

#include <memory>
#include <vector>

KOBWBSymbolicTransformationsImp2::KOBWBSymbolicTransformationsImp2(unsigned level, KOBWBFactory& factory)
    : KOBWBSymbolicTransformations(level, factory) {}

KOBWBSymbolicTransformationsImp2::~KOBWBSymbolicTransformationsImp2() = default;

int KOBWBSymbolicTransformationsImp2::DoRun() {
    KOBWBFactory& factory = GetFactory();
    const KOBLVRGlobalParameters& parameters = GetGlobalParameters();
    if (KOBLVRStream* trace = parameters.GetTraceStream(1)) kobwb::TraceSystem(*trace, factory, {});
    if (GetMode() & KOBWBEliminateLinear) SetMode(GetMode() | KOBWBMarkLinear);
    const unsigned mode = GetMode();
    SetPropertyIdentifier(Constant, factory.RegisterProperty(KOBWBConstantProperty, 0));
    if (mode & KOBWBMarkLinear) SetPropertyIdentifier(Linear, factory.RegisterProperty(KOBWBLinearProperty, 0));
    {
        KOBWBPolynomialContext context(factory);
        kobwb::EquationPass pass;
        pass.mode = mode;
        pass.markBeforeSimplifying = true;
        // The linear forms take each equation as the pass leaves it. The variables'
        // expressions live only as long as the phase.
        std::unique_ptr<kobwb::LinearForms> forms;
        if (mode & KOBWBEliminateLinear)
            forms = std::make_unique<kobwb::LinearForms>(factory, context, parameters.GetTraceStream(2));
        kobwb::RunEquationPass(
            factory, context, pass, parameters, [](const KOBWBEquation&) { return true; },
            [this](KOBWBExpression* root) { SetProperties(root); },
            [&forms](KOBWBEquation& equation) {
                if (forms) forms->Add(equation, nullptr);
            });
        if (forms) {
            forms->Run([this](KOBWBExpression* root) { SetProperties(root); });
            if (KOBLVRStream* trace = parameters.GetTraceStream(1)) kobwb::TraceSystem(*trace, factory, {});
        }
    }
    if (mode & KOBWBBinarizeOperators)
        for (KOBWBEquation* equation = factory.GetLastEquation(); equation; equation = factory.GetPrevEquation(equation))
            kobwb::BinarizeOperators(factory, equation->GetRoot());
    return 0;
}

void KOBWBSymbolicTransformationsImp2::WriteInput(KOBLVRStream& stream) const {
    KOBWBSymbolicTransformations::WriteInput(stream);
    kobwb::WriteReplayInput(stream, GetFactory(), GetMode(), nullptr);
}

void KOBWBSymbolicTransformationsImp2::WriteOutput(KOBLVRStream& stream) const {
    KOBWBSymbolicTransformations::WriteOutput(stream);
    kobwb::WriteReplayOutput(stream, GetFactory(), nullptr);
}
