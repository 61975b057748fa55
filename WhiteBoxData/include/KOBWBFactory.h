#ifndef KOBWBFactory_h
#define KOBWBFactory_h

#include "KOBLVRArrayKOBLVRString.h"
#include "KOBLVRIntArray.h"
#include "KOBLVRString.h"
#include "KOBWBDataLists.h"
#include "KOBWBEnvironment.h"
#include "KOBWBEquationType.h"
#include "KOBWBExpressionType.h"

#include <limits>
#include <memory>
#include <vector>

class KOBWBBlackBox;
class KOBWBConstant;
class KOBWBDerivBlackBox;
class KOBWBEquation;
class KOBWBExpression;
class KOBWBValue;
class KOBWBVariable;

namespace kobwb {
class DerivativeRules;
class EvaluationPlans;
class NodeArena;
struct NodeSideTables;
class ValueBuffers;
}

// Makes and owns every node, equation and handed-over black box of one equation
// system, and holds the environment its evaluations use. Callers keep plain
// pointers and never delete nodes; everything goes with the factory.
class KOBWBX_API KOBWBFactory {
public:
    enum PredefinedConst { Pi = 0, DTOR = 1, RTOD = 2 };

    explicit KOBWBFactory(unsigned int level);
    // The level is the global configuration level.
    KOBWBFactory();
    virtual ~KOBWBFactory();
    KOBWBFactory(const KOBWBFactory&) = delete;
    KOBWBFactory& operator=(const KOBWBFactory&) = delete;

    // Frame.
    unsigned int GetWBLevel() const { return m_level; }
    KOBWBEnvironment& GetEnvironment() { return m_environment; }
    const KOBWBEnvironment& GetEnvironment() const { return m_environment; }
    void InitEnvForEval() { m_environment.InitForEval(); }
    void SetBufferUsed() { m_bufferUsed = 1; }
    // Buffers filled in an earlier generation count as reset.
    unsigned GetBufferGeneration() const { return m_bufferGeneration; }
    // Counts the changes to the equation system other than variables' values: children
    // lists, equations added or removed, roots replaced, constants given new values.
    // What was read of the system at another count may be out of date.
    unsigned long long GetSystemVersion() const { return m_systemVersion; }
    void NoteSystemChange() { ++m_systemVersion; }
    // Invalidates the buffers of expr's subgraph, or of every node when expr is
    // null; nothing happens while no buffer was filled since the last reset.
    void ResetBuffer(KOBWBExpression* expr = nullptr);
    // Evaluates n expressions of this factory together (null ones are skipped), as
    // GetValue() on each in turn would: the same values and the same error bits added
    // to the environment, which is not initialised. The expressions need not be
    // equation roots (the entries of a Jacobian, a gradient): their graphs are listed
    // once, in one evaluation plan where the nodes they share appear once, and the plan
    // is kept for the same list given again until a children list changes. Afterwards
    // GetValue() and GetExprValue() of each expression answer without computing.
    void EvaluateExpressions(int n, KOBWBExpression* const* expressions);
    void UpdateIsVariablesSorted(unsigned char sorted) { m_variablesSorted = sorted; }
    void SetTolerance(double tolerance) { m_environment.SetTolerance(tolerance); }
    // Every node made outside temporary mode, in creation order.
    int GetNbOfExpressions() const { return m_expressions.Size(); }
    KOBWBExpression* GetExpression(int i) const;

    // Leaves.
    KOBWBVariable* CreateVariable();
    KOBWBConstant* CreateConstant(const KOBWBValue& value);
    KOBWBConstant* CreateRealConstant(double value);
    KOBWBConstant* CreateIntegerConstant(int value);
    // One node per factory and constant: Pi, Pi/180 and 180/Pi as exact fractions.
    KOBWBConstant* CreatePredefinedConstant(PredefinedConst constant);
    KOBWBConstant* CreateConstantPi() { return CreatePredefinedConstant(Pi); }
    KOBWBConstant* CreateConstantDTOR() { return CreatePredefinedConstant(DTOR); }
    KOBWBConstant* CreateConstantRTOD() { return CreatePredefinedConstant(RTOD); }

    // Operators, generic forms.
    KOBWBExpression* CreateAlgebraicOperator(KOBWBExpressionType type, int n, KOBWBExpression** children);
    KOBWBExpression* CreateBinaryOperator(KOBWBExpressionType type, KOBWBExpression* a, KOBWBExpression* b);
    KOBWBExpression* CreateUnaryOperator(KOBWBExpressionType type, KOBWBExpression* x);
    KOBWBExpression* CreateTrigonometricOperator(KOBWBExpressionType type, KOBWBExpression* x);
    KOBWBExpression* CreateBooleanOperator(KOBWBExpressionType type, KOBWBExpression* a, KOBWBExpression* b);
    KOBWBExpression* CreateBooleanOperator(KOBWBExpressionType type, KOBWBExpression* x);
    KOBWBExpression* CreateOperator(KOBWBExpressionType type, KOBWBExpression* x);
    KOBWBExpression* CreateOperator(KOBWBExpressionType type, int n, KOBWBExpression** children);
    KOBWBExpression* CreateOperator(KOBWBExpressionType type, KOBLVRListPKOBWBExpression& children);
    // A new node of the same kind as expr over the same children (a new constant
    // of the same value for a constant).
    KOBWBExpression* CreateOperator(KOBWBExpression* expr);

    // Operators, named forms.
    KOBWBExpression* CreateSum(KOBWBExpression* a, KOBWBExpression* b);
    KOBWBExpression* CreateSum(int n, KOBWBExpression** children);
    KOBWBExpression* CreateProduct(KOBWBExpression* a, KOBWBExpression* b);
    KOBWBExpression* CreateProduct(int n, KOBWBExpression** children);
    KOBWBExpression* CreateMin(KOBWBExpression* a, KOBWBExpression* b);
    KOBWBExpression* CreateMax(KOBWBExpression* a, KOBWBExpression* b);
    // a - b as a sum with a negated second term; b null gives a.
    KOBWBExpression* CreateSub(KOBWBExpression* a, KOBWBExpression* b);
    // The negated term of CreateSub: a new constant for a constant, the sign
    // folded into a leading constant factor or numerator, else the product of -1
    // and b.
    KOBWBExpression* CreateOpposite(KOBWBExpression* b);
    KOBWBExpression* CreateQuotient(KOBWBExpression* a, KOBWBExpression* b);
    KOBWBExpression* CreatePower(KOBWBExpression* a, KOBWBExpression* b);
    KOBWBExpression* CreatePower(KOBWBExpression* a, int n);
    KOBWBExpression* CreateRoot(KOBWBExpression* a, KOBWBExpression* b);
    KOBWBExpression* CreateRoot(KOBWBExpression* a, int n);
    // atan2(y, x): the ordinate first.
    KOBWBExpression* CreateAtan2(KOBWBExpression* y, KOBWBExpression* x);
    KOBWBExpression* CreateDim(KOBWBExpression* a, KOBWBExpression* b);
    KOBWBExpression* CreateSign(KOBWBExpression* a, KOBWBExpression* b);
    KOBWBExpression* CreateMod(KOBWBExpression* a, KOBWBExpression* b);
    KOBWBExpression* CreateSqrt(KOBWBExpression* x);
    KOBWBExpression* CreateLog(KOBWBExpression* x);
    KOBWBExpression* CreateLn(KOBWBExpression* x);
    KOBWBExpression* CreateExp(KOBWBExpression* x);
    KOBWBExpression* CreateAbs(KOBWBExpression* x);
    KOBWBExpression* CreateCeil(KOBWBExpression* x);
    KOBWBExpression* CreateFloor(KOBWBExpression* x);
    KOBWBExpression* CreateRound(KOBWBExpression* x);
    KOBWBExpression* CreateTrunc(KOBWBExpression* x);
    KOBWBExpression* CreateSin(KOBWBExpression* x);
    KOBWBExpression* CreateCos(KOBWBExpression* x);
    KOBWBExpression* CreateTan(KOBWBExpression* x);
    KOBWBExpression* CreateAsin(KOBWBExpression* x);
    KOBWBExpression* CreateAcos(KOBWBExpression* x);
    KOBWBExpression* CreateAtan(KOBWBExpression* x);
    KOBWBExpression* CreateSinh(KOBWBExpression* x);
    KOBWBExpression* CreateCosh(KOBWBExpression* x);
    KOBWBExpression* CreateTanh(KOBWBExpression* x);
    KOBWBExpression* CreateASinh(KOBWBExpression* x);
    KOBWBExpression* CreateACosh(KOBWBExpression* x);
    KOBWBExpression* CreateATanh(KOBWBExpression* x);
    KOBWBExpression* CreateNot(KOBWBExpression* x);
    KOBWBExpression* CreateOr(KOBWBExpression* a, KOBWBExpression* b);
    KOBWBExpression* CreateAnd(KOBWBExpression* a, KOBWBExpression* b);
    KOBWBExpression* CreateEqual(KOBWBExpression* a, KOBWBExpression* b);
    KOBWBExpression* CreateNotEqual(KOBWBExpression* a, KOBWBExpression* b);
    KOBWBExpression* CreateLessEqual(KOBWBExpression* a, KOBWBExpression* b);
    KOBWBExpression* CreateImplication(KOBWBExpression* a, KOBWBExpression* b);
    KOBWBExpression* CreateGreaterEqual(KOBWBExpression* a, KOBWBExpression* b);
    KOBWBExpression* CreateLess(KOBWBExpression* a, KOBWBExpression* b);
    KOBWBExpression* CreateGreater(KOBWBExpression* a, KOBWBExpression* b);
    KOBWBExpression* CreateIfThenElse(KOBWBExpression* condition, KOBWBExpression* thenBranch,
                                      KOBWBExpression* elseBranch);

    // The antiderivative node of code 47 (see KOBWBIntegrateOperator.h); null for a
    // null or foreign argument.
    KOBWBExpression* CreateIntegrateOperator(KOBWBExpression* integrand, KOBWBVariable* variable);
    // Composite constructors; each answers null for a null or foreign node or a bad count.
    // The step of code 28 over x, from h0 for x <= x0 to h1 for x >= x1 (see KOBWBStep.h).
    KOBWBExpression* CreateStep(KOBWBExpression* x, double x0, double h0, double x1, double h1);
    // coefficients[0] + coefficients[1] x + ... + coefficients[n-1] x^(n-1), a sum of
    // terms c x^i (x^i a power node for i > 1); the double form leaves out zero
    // coefficients and gives the integer 0 when all are zero.
    KOBWBExpression* CreatePolynomial(KOBWBExpression* x, int n, KOBWBExpression** coefficients);
    KOBWBExpression* CreatePolynomial(KOBWBExpression* x, int n, const double* coefficients);
    // The interpolation through (xs[i], ys[i]), n >= 2 points with strictly increasing
    // xs: piecewise linear, or the natural cubic spline (second derivative 0 at both
    // ends). Written without branches, as the first piece plus one term
    // max(x - xs[i], 0) (cubed for the spline) per inner point, so that it is
    // continuous and evaluates on intervals; beyond the ends the end pieces continue.
    KOBWBExpression* CreatePiecewiseLinear(KOBWBExpression* x, int n, const double* xs, const double* ys);
    KOBWBExpression* CreateCubicSpline(KOBWBExpression* x, int n, const double* xs, const double* ys);
    // The determinant of the n x n matrix whose entries are given row by row, in the
    // canonical form of KOBWBPolynomialContext, by fraction-free elimination on the
    // entries read as polynomials (exact divisions): an integer matrix gives its exact
    // integer (as an integer constant when it fits 32 bits).
    KOBWBExpression* CreateDeterminant(int n, KOBWBExpression** entries);

    // Equations.
    KOBWBEquation* AddEquation(KOBWBExpression* root, KOBWBEquationType type);
    // left - right as the root; a null right side leaves left as the root.
    KOBWBEquation* AddEquation(KOBWBExpression* left, KOBWBEquationType type, KOBWBExpression* right);
    // Destroys the equation (its root stays) and nulls the pointer.
    void RemoveEquation(KOBWBEquation*& equation);
    // Destroys the equations of the array that belong to the factory, in one pass
    // over its equations however many there are, and nulls the array's pointers.
    void RemoveEquations(int count, KOBWBEquation** equations);
    KOBWBEquation* GetEquationById(int id) const;
    KOBWBEquation* GetEquationByName(const KOBLVRString& name) const;
    KOBWBEquation* GetFirstEquation() const;
    KOBWBEquation* GetLastEquation() const;
    // The next equation, or the first one for null.
    KOBWBEquation* GetNextEquation(KOBWBEquation* equation) const;
    // The previous equation, or the last one for null.
    KOBWBEquation* GetPrevEquation(KOBWBEquation* equation) const;
    int GetNbOfEquations() const { return m_equations.Size(); }

    // Variables.
    int GetNbOfVariables() const { return m_variables.Size(); }
    // Null outside [0, count).
    KOBWBVariable* GetVariable(int index) const;
    // The variable after var, or the first one for null.
    KOBWBVariable* GetNextVariable(KOBWBVariable* var) const;
    KOBWBVariable* GetVariable(const KOBLVRString& name);

    // Black boxes.
    // A node that calls the black box on the arguments; with giveOwnership the
    // factory destroys the black box at its end. Null for a null black box.
    KOBWBExpression* DeclareBlackBox(KOBWBBlackBox* blackBox, int n, KOBWBExpression** arguments,
                                     unsigned char giveOwnership);
    KOBWBBlackBox* GetBlackBoxByName(const KOBLVRString& name);
    // The order of the black box's first declaration among the factory's
    // declarations (0 for the first); -1 for a black box never declared here.
    int GetBlackBoxIndex(const KOBWBBlackBox* blackBox) const;
    // The derivative black box of blackBox by variable, if one was made; null else.
    KOBWBDerivBlackBox* GetDerivBlackBox(KOBWBBlackBox* blackBox, KOBWBVariable* variable);

    // Differentiation: the n-th mixed derivative, by variables[0] first.
    KOBWBExpression* CreateDerivative(KOBWBExpression* expr, int n, KOBWBVariable** variables);

    // Properties: named per-node integers with a default.
    int RegisterProperty(const KOBLVRString& name, int defaultValue);
    int GetDefaultPropertyValue(int property) const;

    // Temporary storage: while on, new nodes are kept apart. Switching it off gives
    // every temporary node that something lasting reaches (an equation's root, a
    // permanent node whose children were changed meanwhile, a declared black box)
    // one permanent copy, however many paths lead to it, with its properties but
    // "temporary"; equations, parents and black boxes are pointed at the copies, and
    // every temporary node is then destroyed.
    void UseTemporaryStorage(unsigned char on);
    // Switches temporary storage off as UseTemporaryStorage(0) does, except that the
    // temporary nodes something lasting reaches become permanent themselves, in the
    // order they were made, instead of being copied: roots, parents and black boxes
    // keep the nodes they have, and those nodes keep their addresses and numbers.
    // The other temporary nodes are destroyed. Nothing is copied, which makes it the
    // cheaper of the two for large systems.
    void CommitTemporaryStorage();
    unsigned char IsUsingTemporaryStorage() const { return m_temporaryMode; }
    // Copies the equations of the source ids with the variables of the old names
    // replaced by those of the new names (made when missing); the new ids are -1
    // where a source equation is missing. Returns 0.
    int CloneEquations(KOBLVRIntArray& sourceIds, KOBLVRIntArray& newIds,
                       KOBLVRArrayKOBLVRString& oldNames, KOBLVRArrayKOBLVRString& newNames);

protected:
    KOBWBExpression* AddExpression(KOBWBExpression* expr);
    // The permanent counterpart of expr, as switching temporary storage off makes
    // it: expr itself when it is not temporary, its temporary children exchanged in
    // place, else its copy; each temporary node below copied once.
    KOBWBExpression* ReplaceTemporaryExpressions(KOBWBExpression* expr);
    // A deep copy of expr in which the variable of each index with a non-null
    // entry in the substitution is replaced by that entry.
    KOBWBExpression* CloneExpression(KOBWBExpression* expr, KOBLVRListPKOBWBExpression& substitution);
    KOBWBExpression* CloneExpression(KOBWBExpression* expr);

private:
    friend class KOBWBEquation;
    friend class KOBWBExpression;
    friend class kobwb::DerivativeRules;
    friend class kobwb::EvaluationPlans;

    void* AllocateNode(std::size_t size);
    // The number of the next node made; -1 once numbers run out.
    int NumberNode() { return m_nodesNumbered < std::numeric_limits<int>::max() ? m_nodesNumbered++ : -1; }
    kobwb::NodeSideTables& SideTables();
    kobwb::EvaluationPlans& EvaluationPlans();
    kobwb::ValueBuffers& ValueBuffers() { return *m_valueBuffers; }

    struct PropertyRecord {
        KOBLVRString name;
        int defaultValue;
    };

    KOBWBExpression* NegatedConstant(KOBWBExpression* constant);
    // The position of the equation of that id in the list, -1 when none.
    int EquationPosition(int id) const;
    struct DerivativePass;
    struct TemporaryCopier;
    struct TemporaryKeeper;
    // Ends temporary mode: the walker gives what stands for each temporary node that
    // something lasting reaches, then tells which temporary nodes stay themselves.
    template <class Walker>
    void LeaveTemporaryMode(Walker& walker);
    // d expr / d v, made bottom-up (see DerivativePass). Given constantGraph, a
    // constant expr gives the integer 0 and constantGraph tells whether it was;
    // without it, expr's own rule answers for expr.
    KOBWBExpression* Derivative(KOBWBExpression* expr, KOBWBVariable* v, bool* constantGraph);
    KOBWBConstant* NewConstant(const KOBWBValue& value);

    KOBLVRListPKOBWBExpression m_expressions;
    KOBLVRListPKOBWBExpression m_variables;
    KOBLVRListPKOBWBEquation m_equations;
    int m_nextEquationId = 0;
    KOBLVRListPKOBWBBlackBox m_blackBoxes;
    KOBLVRListPKOBWBBlackBox m_ownedBlackBoxes;
    int m_nextBlackBoxId = 0;
    KOBLVRListPKOBWBExpression m_temporaryExpressions;
    // How many of them are black-box calls: leaving temporary storage looks for those
    // only when there are some.
    int m_temporaryBlackBoxes = 0;
    unsigned char m_temporaryMode = 0;
    // Permanent nodes whose children changed in temporary mode.
    std::vector<KOBWBExpression*> m_changedInTemporaryMode;
    int m_temporaryProperty = -1;
    int m_predefinedConstants[3] = {-1, -1, -1};
    KOBLVRListPKOBWBExpression m_sortedVariables;
    unsigned char m_variablesSorted = 0;
    unsigned char m_bufferUsed = 0;
    unsigned m_bufferGeneration = 1;
    // How many evaluations are nested in the current one.
    int m_evaluationDepth = 0;
    // Counts the changes to children lists; evaluation plans made at another count
    // are out of date.
    unsigned long long m_structureVersion = 0;
    unsigned long long m_systemVersion = 0;
    int m_nodesNumbered = 0;
    // The derivatives being made, innermost first.
    DerivativePass* m_derivativePass = nullptr;
    // Made when an equation root is first evaluated.
    std::unique_ptr<kobwb::EvaluationPlans> m_evaluationPlans;
    KOBWBEnvironment m_environment;
    std::unique_ptr<std::vector<PropertyRecord>> m_properties;
    unsigned int m_level;
    std::unique_ptr<kobwb::NodeArena> m_arena;
    // The value buffers of the nodes that have one.
    std::unique_ptr<kobwb::ValueBuffers> m_valueBuffers;
    // Values given to SetExprValue and property values, for the nodes that have them.
    std::unique_ptr<kobwb::NodeSideTables> m_sideTables;
};

#endif
