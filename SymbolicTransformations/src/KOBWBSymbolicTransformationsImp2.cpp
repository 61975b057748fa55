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

#include <vector>

KOBWBSymbolicTransformationsImp2::KOBWBSymbolicTransformationsImp2(unsigned level, KOBWBFactory& factory)
    : KOBWBSymbolicTransformations(level, factory) {}

KOBWBSymbolicTransformationsImp2::~KOBWBSymbolicTransformationsImp2() = default;

int KOBWBSymbolicTransformationsImp2::DoRun() {
    KOBWBFactory& factory = GetFactory();
    const KOBLVRGlobalParameters& parameters = GetGlobalParameters();
    if (KOBLVRStream* trace = parameters.GetTraceStream(1)) kobwb::TraceSystem(*trace, factory, {});
    if (GetMode() & 2) SetMode(GetMode() | 1);
    const unsigned mode = GetMode();
    SetPropertyIdentifier(Constant, factory.RegisterProperty(KOBWBConstantProperty, 0));
    if (mode & 1) SetPropertyIdentifier(Linear, factory.RegisterProperty(KOBWBLinearProperty, 0));
    {
        KOBWBPolynomialContext context(factory);
        for (KOBWBEquation* equation = factory.GetLastEquation(); equation;) {
            KOBWBEquation* previous = factory.GetPrevEquation(equation);
            KOBWBExpression* root = equation->GetRoot();
            SetProperties(root);
            if (mode & 6) {
                KOBLVRStream* trace = parameters.GetTraceStream(1);
                if (trace) *trace << "Before: " << kobwb::TraceExpression(root).c_str() << lvrendl;
                kobwb::FlattenAssociative(root);
                if (trace) *trace << "After: " << kobwb::TraceExpression(root).c_str() << lvrendl;
            }
            if (mode & 4) {
                if (KOBWBExpression* simplified = kobwb::SimplifyRoot(context, *equation)) {
                    SetProperties(simplified);
                    equation->SetRoot(simplified);
                } else {
                    factory.RemoveEquation(equation);
                }
            }
            equation = previous;
        }
        if (mode & 2) {
            // The variables' expressions live only as long as the phase.
            kobwb::LinearForms forms(factory, context, parameters.GetTraceStream(2));
            std::vector<KOBWBEquation*> changed;
            forms.Run(changed);
            for (KOBWBEquation* equation : changed) SetProperties(equation->GetRoot());
            if (KOBLVRStream* trace = parameters.GetTraceStream(1)) kobwb::TraceSystem(*trace, factory, {});
        }
    }
    if (mode & 8)
        for (KOBWBEquation* equation = factory.GetLastEquation(); equation; equation = factory.GetPrevEquation(equation))
            kobwb::BinarizeOperators(factory, equation->GetRoot());
    return 0;
}

void KOBWBSymbolicTransformationsImp2::WriteInput(KOBLVRStream& stream) const {
    KOBWBSymbolicTransformations::WriteInput(stream);
    KOBWBEquations(GetFactory(), KOBWBEquations::Input, nullptr).Write(stream);
    stream.GetStorage().AddSection("#!MODE", "", KOBLVRString(static_cast<int>(GetMode())), KOBLVRStorage::Input, 1);
    stream.WriteSections(KOBLVRStorage::Input);
}

void KOBWBSymbolicTransformationsImp2::WriteOutput(KOBLVRStream& stream) const {
    KOBWBSymbolicTransformations::WriteOutput(stream);
    KOBWBEquations(GetFactory(), KOBWBEquations::Output).Write(stream);
    stream.WriteSections(KOBLVRStorage::Output);
}
