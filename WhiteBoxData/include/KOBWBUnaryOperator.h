#ifndef KOBWBUnaryOperator_h
#define KOBWBUnaryOperator_h

#include "KOBWBOperator.h"

#include <memory>

// Square root, logarithms, exponential, absolute value, rounding, and the step,
// which alone carries four real parameters (x0, h0, x1, h1).
class KOBWBX_API KOBWBUnaryOperator : public KOBWBOperator {
public:
    ~KOBWBUnaryOperator() override;

    void SetParameter(int i, double value) override;
    double GetParameter(int i) override;
    int GetNbOfParameters() const override;
    KOBWBExpression* Differentiate(KOBWBVariable* v) override;

protected:
    friend class KOBWBFactory;
    KOBWBUnaryOperator(KOBWBFactory& factory, KOBWBExpressionType type, KOBWBExpression* child);

    void DoEval(KOBWBValue& result) override;

private:
    std::unique_ptr<double[]> m_parameters;
};

#endif
