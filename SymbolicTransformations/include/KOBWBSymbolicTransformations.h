#ifndef KOBWBSymbolicTransformations_h
#define KOBWBSymbolicTransformations_h

#include "KOBLVROperator.h"

class KOBWBExpression;
class KOBWBFactory;

// The expression properties the operator marks, by their index among its property
// identifiers, and their registered names.
enum KOBWBProperty { Constant = 0, Linear = 1 };
extern KOBWBX_API const char* const KOBWBConstantProperty;
extern KOBWBX_API const char* const KOBWBLinearProperty;

// The bits of the mode of a run (SetMode), to be ORed together.
enum KOBWBTransformationMode : unsigned {
    // Compute "linear" as well as "constant".
    KOBWBMarkLinear = 1,
    // Every equation, and the elimination of variables through linear forms (sets
    // KOBWBMarkLinear).
    KOBWBEliminateLinear = 2,
    // Simplify each equation (an equality that is exactly 0 is removed).
    KOBWBSimplifyEquations = 4,
    // Re-binarise every sum, product, min and max of three or more children.
    KOBWBBinarizeOperators = 8,
    // With KOBWBEliminateLinear: judge the constant inequalities, and record the
    // verdict in the replay.
    KOBWBJudgeInequalities = 16,
};

// Rewrites in place the equations of one factory: marks sub-expressions "constant"
// and "linear", flattens sums and products, simplifies expressions, eliminates
// variables through the linear equations, writes exact constants in canonical form
// and re-binarises n-ary nodes, as the mode (the bits of KOBWBTransformationMode)
// asks.
// Made by KOBCreateWBSymbolicTransformations, which picks the implementation the
// factory's environment asks for; destroyed by Remove or KOBRemove.
class KOBWBX_API KOBWBSymbolicTransformations : public KOBLVROperator {
public:
    KOBWBSymbolicTransformations(unsigned level, KOBWBFactory& factory);
    ~KOBWBSymbolicTransformations() override;

    void InitWithEnv() override;
    int GetVersionOfStream() const override;
    KOBLVRString GetOperatorName() override;
    KOBLVRString GetOperatorShortName() override;
    void Remove() override;

protected:
    OperatorInfo& GetOperatorInfo() override;

public:
    bool CheckInput(std::ostream& stream) const override;
    bool CheckOutput(std::ostream& stream) const override;
    // Adds an equation, by its id, to those a run covers; false when the
    // implementation keeps no such list.
    virtual bool SetEquationToSimplify(int id);
    // Whether the last run that judged the inequalities found one that cannot hold.
    virtual bool AreInequalitiesInconsistent();

    void SetMode(unsigned mode) { m_mode = mode; }
    unsigned GetMode() const { return m_mode; }
    KOBWBFactory& GetFactory() const { return m_factory; }
    // The expression found for a variable (by its index) through a linear form in
    // the last run, in terms of the variables that remain; null where none was.
    KOBWBExpression* GetVariableExpression(int index) const { return VariableExpression(index); }

protected:
    bool GetProperty(KOBWBExpression* expression, KOBWBProperty property) const;
    void SetProperty(KOBWBExpression* expression, KOBWBProperty property, bool value);
    // Marks every node of the expression "constant" (true or false) and, with mode
    // bit 1, "linear" where it is linear.
    void SetProperties(KOBWBExpression* expression);
    void SetPropertyIdentifier(KOBWBProperty property, int identifier) { m_properties[property] = identifier; }
    int GetPropertyIdentifier(KOBWBProperty property) const { return m_properties[property]; }

private:
    virtual KOBWBExpression* VariableExpression(int index) const;

    KOBWBFactory& m_factory;
    unsigned m_mode = 0;
    int m_properties[2] = {-1, -1};
    static OperatorInfo* _pInfo;
};

// The operator over factory: the older implementation when the factory's environment
// asks for it. Null only when memory runs out; the caller owns the result.
KOBWBX_API KOBWBSymbolicTransformations* KOBCreateWBSymbolicTransformations(unsigned level, KOBWBFactory& factory);
// Destroys the operator; nothing for null.
KOBWBX_API void KOBRemove(KOBWBSymbolicTransformations* transformations);

#endif
