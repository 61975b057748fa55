#ifndef KOBWBEnvironment_h
#define KOBWBEnvironment_h

#include "KOBWBxExport.h"

// Tolerances, limits and switches of an evaluation, with error flags that even a
// const environment can raise: arithmetic receives it by const reference.
class KOBWBX_API KOBWBEnvironment {
public:
    KOBWBEnvironment();

    unsigned int GetError() const { return m_error; }
    void SetError(unsigned int bits) const { m_error |= bits; }
    void ClearError() { m_error = 0; }
    // Clears the flags only when they are exactly 1.
    void InitForEval() {
        if (m_error == 1) m_error = 0;
    }

    double GetTolerance() const { return m_tolerance; }
    void SetTolerance(double tolerance) { m_tolerance = tolerance; }
    double GetBBPrecision() const { return m_bbPrecision; }
    void SetBBPrecision(double precision) { m_bbPrecision = precision; }
    double GetBBWidth() const { return m_bbWidth; }
    void SetBBWidth(double width) { m_bbWidth = width; }
    void GetTrigonometricLimits(double& lower, double& upper) const {
        lower = m_trigLower;
        upper = m_trigUpper;
    }
    void SetTrigonometricLimits(double lower, double upper) {
        m_trigLower = lower;
        m_trigUpper = upper;
    }
    int GetMaxNumberOfBBCalls() const { return m_maxBBCalls; }
    void SetMaxNumberOfBBCalls(int count) { m_maxBBCalls = count; }
    int GetNumberOfBBAttempts() const { return m_bbAttempts; }
    void SetNumberOfBBAttempts(int count) { m_bbAttempts = count; }
    int GetBBCacheSize() const { return m_bbCacheSize; }
    void SetBBCacheSize(int size) { m_bbCacheSize = size; }
    int GetMaxEnumSize() const { return m_maxEnumSize; }
    void SetMaxEnumSize(int size) { m_maxEnumSize = size; }
    bool GetUseUnimodalInterval() const { return m_useUnimodalInterval; }
    void SetUseUnimodalInterval(bool use) { m_useUnimodalInterval = use; }
    bool GetMinimizeNumberOfBBCalls() const { return m_minimizeBBCalls; }
    void SetMinimizeNumberOfBBCalls(bool minimize) { m_minimizeBBCalls = minimize; }
    bool IsUseOldSymbolicTransformations() const { return m_useOldST; }
    void SetUseOldSymbolicTransformations(bool use) { m_useOldST = use; }

private:
    mutable unsigned int m_error = 0;
    double m_tolerance;
    double m_bbPrecision = 1e-5;
    double m_bbWidth = 1.0;
    double m_trigLower = -6.283185307179586;
    double m_trigUpper = 6.283185307179586;
    int m_maxBBCalls = 0;
    int m_bbAttempts = 1;
    int m_bbCacheSize = 10000;
    int m_maxEnumSize = 50;
    bool m_useUnimodalInterval = false;
    bool m_minimizeBBCalls = false;
    bool m_useOldST;
};

#endif
