#ifndef KOBWBSymbolicTransformationsImp_h
#define KOBWBSymbolicTransformationsImp_h

#include "KOBLVRIntArray.h"
#include "KOBLVRListPV.h"
#include "KOBWBRational.h"
#include "KOBWBSymbolicTransformations.h"
#include "KOBWBTransformationPasses.h"

#include <vector>


class KOBWBEquation;
class KOBWBPolynomialContext;
namespace kobwb {
class LinearForms;
}

// The symbolic transformations on the algebra engine. A run works in the factory's
// temporary storage on duplicates of the equations' roots, so that nothing it made
// and dropped stays in the factory; the expressions found for variables through
// linear forms are written in permanent storage after the run, so they stay valid
// until the next run.
class KOBWBSymbolicTransformationsImp : public KOBWBSymbolicTransformations {
public:
    KOBWBSymbolicTransformationsImp(unsigned level, KOBWBFactory& factory);
    ~KOBWBSymbolicTransformationsImp() override;

    int DoRun() override;
    void WriteInput(KOBLVRStream& stream) const override;
    void WriteOutput(KOBLVRStream& stream) const override;
    bool SetEquationToSimplify(int id) override;
    bool AreInequalitiesInconsistent() override;

private:
    KOBWBExpression* VariableExpression(int index) const override;
    bool Covers(const KOBWBEquation& equation, bool all) const;
    // The simplified root; null when the equation is an equality that is exactly 0.
    KOBWBExpression* SimplifyExpression(KOBWBPolynomialContext& context, KOBWBEquation& equation);
    // Eliminates variables through the linear forms (see KOBWBLinearForms.h), which
    // hold the equations the simplification pass handed over, and keeps, per
    // variable, its expression as terms of variables.
    void SubstituteLinearForms(KOBWBPolynomialContext& context, kobwb::LinearForms& forms);
    // Writes the expressions kept for the variables in the factory's current storage.
    void WriteVariableExpressions();
    void CheckInequalities();

    KOBLVRListPV m_variableExpressions;
    // The expressions of the last linear-form phase, by variable, as coefficient
    // terms over variables, so that they can be written after the run's storage goes;
    // no terms for a variable without a form.
    struct FormTerm {
        int variable;
        KOBWBRational coefficient;
        long long piPower;
    };
    std::vector<std::vector<FormTerm>> m_forms;
    bool m_inconsistent = false;
    KOBLVRIntArray m_equationsToSimplify;
};

#endif
