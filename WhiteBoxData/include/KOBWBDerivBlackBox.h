#ifndef KOBWBDerivBlackBox_h
#define KOBWBDerivBlackBox_h

#include "KOBWBBlackBox.h"

class KOBWBVariable;

// The partial derivative of a black box by one variable, computed by central
// differences with the environment's black-box precision as the step.
class KOBWBX_API KOBWBDerivBlackBox : public KOBWBBlackBox {
public:
    // Named "d" + the variable's name + the primitive's name when both are given.
    KOBWBDerivBlackBox(KOBWBBlackBox* primitive, KOBWBVariable* variable);

    void Eval(KOBWBValue& result) override;
    // (f(x0 + h) - f(x0 - h)) / 2h; the variable keeps its value and every buffer
    // of the factory is invalid afterwards.
    double Eval() override;

    KOBWBBlackBox* GetAPrimitive() const { return m_primitive; }
    bool IsAPrimitive(const KOBWBBlackBox* blackBox) const { return blackBox == m_primitive; }
    bool IsTheDiffVariable(const KOBWBVariable* variable) const { return variable == m_variable; }

private:
    KOBWBBlackBox* m_primitive;
    KOBWBVariable* m_variable;
    double m_step;
};

#endif
