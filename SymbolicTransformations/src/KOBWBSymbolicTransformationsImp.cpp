#include "KOBWBSymbolicTransformationsImp.h"

#include "KOBLVRGlobalParameters.h"
#include "KOBLVRStream.h"
#include "KOBWBConstant.h"
#include "KOBWBEquation.h"
#include "KOBWBEquations.h"
#include "KOBWBFactory.h"
#include "KOBWBLinearForms.h"
#include "KOBWBPolynomialContext.h"
#include "KOBWBTransformationPasses.h"
#include "KOBWBVariable.h"

#include <memory>

KOBWBSymbolicTransformationsImp::KOBWBSymbolicTransformationsImp(unsigned level, KOBWBFactory& factory)
    : KOBWBSymbolicTransformations(level, factory) {
    SetPropertyIdentifier(Constant, factory.RegisterProperty(KOBWBConstantProperty, 0));
    SetPropertyIdentifier(Linear, factory.RegisterProperty(KOBWBLinearProperty, 0));
}

KOBWBSymbolicTransformationsImp::~KOBWBSymbolicTransformationsImp() = default;

bool KOBWBSymbolicTransformationsImp::SetEquationToSimplify(int id) {
    m_equationsToSimplify.Append(id);
    return true;
}

bool KOBWBSymbolicTransformationsImp::AreInequalitiesInconsistent() { return m_inconsistent; }

KOBWBExpression* KOBWBSymbolicTransformationsImp::VariableExpression(int index) const {
    if (index < 0 || index >= m_variableExpressions.Size()) return nullptr;
    return static_cast<KOBWBExpression*>(m_variableExpressions[index]);
}

bool KOBWBSymbolicTransformationsImp::Covers(const KOBWBEquation& equation, bool all) const {
    return all || m_equationsToSimplify.BinarySearch(equation.GetId()) >= 0;
}

KOBWBExpression* KOBWBSymbolicTransformationsImp::SimplifyExpression(KOBWBPolynomialContext& context,
                                                                     KOBWBEquation& equation) {
    return kobwb::SimplifyRoot(context, equation);
}

int KOBWBSymbolicTransformationsImp::DoRun() {
    KOBWBFactory& factory = GetFactory();
    factory.UseTemporaryStorage(1);
    const KOBLVRGlobalParameters& parameters = GetGlobalParameters();
    auto traceSystem = [&] {
        KOBLVRStream* trace = parameters.GetTraceStream(1);
        if (!trace) return;
        std::vector<KOBWBExpression*> expressions;
        for (int i = 0; i < m_variableExpressions.Size(); ++i)
            expressions.push_back(static_cast<KOBWBExpression*>(m_variableExpressions[i]));
        kobwb::TraceSystem(*trace, factory, expressions);
    };
    traceSystem();
    if (GetMode() & KOBWBEliminateLinear) SetMode(GetMode() | KOBWBMarkLinear);
    const unsigned mode = GetMode();
    m_equationsToSimplify.QuickSort();
    const bool all = (mode & KOBWBEliminateLinear) || m_equationsToSimplify.Size() == 0;
    {
        KOBWBPolynomialContext context(factory);
        // The linear forms take each equation as the pass leaves it; the roots they
        // rewrite anyway are written once, by them.
        std::unique_ptr<kobwb::LinearForms> forms;
        if (mode & KOBWBEliminateLinear)
            forms = std::make_unique<kobwb::LinearForms>(factory, context, parameters.GetTraceStream(2));
        kobwb::UnwrittenRoots unwritten;
        kobwb::EquationPass pass;
        pass.mode = mode;
        pass.duplicateRoots = true;
        pass.flattenTraceLevel = 2;
        if (forms) pass.unwritten = &unwritten;
        kobwb::RunEquationPass(
            factory, context, pass, parameters, [&](const KOBWBEquation& equation) { return Covers(equation, all); },
            [this](KOBWBExpression* root) { SetProperties(root); },
            [&](KOBWBEquation& equation) {
                if (!forms) return;
                const bool left = !unwritten.empty() && unwritten.back().first == equation.GetId();
                forms->Add(equation, left ? &unwritten.back().second : nullptr);
                unwritten.clear();
            });
        if (forms) {
            SubstituteLinearForms(context, *forms);
            traceSystem();
        }
        for (KOBWBEquation* equation = factory.GetLastEquation(); equation; equation = factory.GetPrevEquation(equation)) {
            if (!Covers(*equation, all)) continue;
            equation->SetRoot(kobwb::CanonicalizeConstants(factory, equation->GetRoot()));
            if (mode & KOBWBBinarizeOperators) kobwb::BinarizeOperators(factory, equation->GetRoot());
        }
    }
    m_equationsToSimplify.SetDimension(0);
    // The nodes the equations reach are the run's results: they become permanent where
    // they are, rather than as copies, and the rest goes.
    factory.CommitTemporaryStorage();
    if (mode & KOBWBEliminateLinear) WriteVariableExpressions();
    return 0;
}

void KOBWBSymbolicTransformationsImp::SubstituteLinearForms(KOBWBPolynomialContext& context,
                                                            kobwb::LinearForms& forms) {
    KOBWBFactory& factory = GetFactory();
    const int variables = factory.GetNbOfVariables();
    m_variableExpressions.Size(variables, nullptr);
    for (int i = 0; i < variables; ++i) m_variableExpressions[i] = nullptr;
    m_forms.assign(static_cast<size_t>(variables), {});

    const bool tracingSystem = GetGlobalParameters().GetTraceStream(1) != nullptr;
    forms.Run([this](KOBWBExpression* root) { SetProperties(root); });
    for (int i = 0; i < variables; ++i) {
        const KOBWBPolynomial* form = forms.Form(i);
        if (!form) continue;
        // Written now only for the trace of the system; written for good once the run's storage is gone.
        if (tracingSystem) m_variableExpressions[i] = context.ToExpression(*form);
        std::vector<FormTerm>& terms = m_forms[static_cast<size_t>(i)];
        // The form 0 is kept as one zero term, so that every form has terms.
        if (form->IsZero()) terms.push_back({-1, KOBWBRational(), 0});
        for (const KOBWBPolynomialTerm& term : form->GetTerms()) {
            FormTerm entry{-1, term.coefficient.GetExact(), 0};
            for (const KOBWBMonomialFactor& factor : term.monomial) {
                if (factor.atom == KOBWBPolynomialContext::piAtom)
                    entry.piPower = factor.exponent;
                else if (KOBWBVariable* variable = context.GetAtomVariable(factor.atom))
                    entry.variable = variable->GetIdx();
            }
            terms.push_back(std::move(entry));
        }
    }
    if (GetMode() & KOBWBJudgeInequalities) CheckInequalities();
}

void KOBWBSymbolicTransformationsImp::WriteVariableExpressions() {
    KOBWBFactory& factory = GetFactory();
    KOBWBPolynomialContext context(factory);
    for (size_t i = 0; i < m_forms.size() && static_cast<int>(i) < m_variableExpressions.Size(); ++i) {
        if (m_forms[i].empty()) continue;
        KOBWBPolynomial form;
        for (const FormTerm& term : m_forms[i]) {
            KOBWBPolynomial piece{KOBWBCoefficient(term.coefficient)};
            if (term.piPower != 0)
                piece = KOBWBPolynomial::Multiply(piece, KOBWBPolynomial::Atom(KOBWBPolynomialContext::piAtom, term.piPower));
            if (term.variable >= 0)
                piece = KOBWBPolynomial::Multiply(
                    piece, KOBWBPolynomial::Atom(context.GetVariableAtom(factory.GetVariable(term.variable))));
            form += piece;
        }
        m_variableExpressions[static_cast<int>(i)] = context.ToExpression(form);
    }
}

void KOBWBSymbolicTransformationsImp::CheckInequalities() {
    KOBWBFactory& factory = GetFactory();
    m_inconsistent = false;
    for (KOBWBEquation* equation = factory.GetLastEquation(); equation; equation = factory.GetPrevEquation(equation))
        if (!kobwb::CanHold(factory.GetEnvironment(), *equation, GetProperty(equation->GetRoot(), Constant)))
            m_inconsistent = true;
}

void KOBWBSymbolicTransformationsImp::WriteInput(KOBLVRStream& stream) const {
    KOBWBSymbolicTransformations::WriteInput(stream);
    kobwb::WriteReplayInput(stream, GetFactory(), GetMode(), &m_equationsToSimplify);
}

void KOBWBSymbolicTransformationsImp::WriteOutput(KOBLVRStream& stream) const {
    KOBWBSymbolicTransformations::WriteOutput(stream);
    const char* verdict = m_inconsistent ? "FOUND" : "NOTFOUND";
    kobwb::WriteReplayOutput(stream, GetFactory(), GetMode() & KOBWBJudgeInequalities ? verdict : nullptr);
}
