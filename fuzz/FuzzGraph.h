#ifndef FuzzGraph_h
#define FuzzGraph_h

#include "FuzzInput.h"
#include "KOBWBx.h"

#include <algorithm>
#include <cmath>
#include <vector>

// Expression graphs built from the fuzzer's bytes. The pool holds the nodes made so
// far in creation order; a new node takes its children from the pool, so every edge
// goes from a later node to an earlier one and no sequence of calls makes a cycle.
class FuzzGraph {
public:
    FuzzGraph(KOBWBFactory& factory, FuzzInput& input) : m_factory(factory), m_input(input) {}

    std::vector<KOBWBExpression*>& Pool() { return m_pool; }

    // A node of the pool, or null when the pool is empty or the byte asks for one.
    KOBWBExpression* Pick(bool allowNull) {
        const int byte = m_input.Byte();
        if (m_pool.empty() || (allowNull && byte == 255)) return nullptr;
        return m_pool[m_pool.size() - 1 - byte % m_pool.size()];
    }

    // A variable, a constant, or an operator over nodes of the pool; added to the pool
    // when it is not there yet (a factory call may answer an existing node). polynomial
    // keeps to sums, products, differences and integer powers.
    KOBWBExpression* Create(bool polynomial, bool allowNull) {
        KOBWBExpression* made =
            polynomial ? CreatePolynomialNode(allowNull) : CreateAnyNode(allowNull);
        if (made && std::find(m_pool.begin(), m_pool.end(), made) == m_pool.end())
            m_pool.push_back(made);
        return made;
    }

private:
    // Polynomial graphs keep to integral constants, so that their values at integral
    // points are exact in double.
    KOBWBExpression* CreateLeaf(bool integral) {
        switch (m_input.Below(4)) {
        case 0:
            if (m_factory.GetNbOfVariables() > 0)
                return m_factory.GetVariable(m_input.Below(m_factory.GetNbOfVariables()));
            return m_factory.CreateVariable();
        case 1:
            return m_factory.CreateVariable();
        case 2:
            return m_factory.CreateIntegerConstant(static_cast<int>(m_input.Number()));
        default: {
            const double value = m_input.Number();
            return m_factory.CreateRealConstant(integral ? std::trunc(value) : value);
        }
        }
    }

    KOBWBExpression* CreatePolynomialNode(bool allowNull) {
        if (m_pool.empty()) return CreateLeaf(true);
        switch (m_input.Below(7)) {
        case 0:
            return CreateLeaf(true);
        case 1:
            return m_factory.CreateSum(Pick(allowNull), Pick(allowNull));
        case 2:
            return m_factory.CreateProduct(Pick(allowNull), Pick(allowNull));
        case 3:
            return m_factory.CreateSub(Pick(allowNull), Pick(allowNull));
        case 4:
            return m_factory.CreatePower(Pick(allowNull), m_input.Below(5));
        case 5:
            return m_factory.CreateOpposite(Pick(allowNull));
        default:
            return CreateNary(m_input.Below(2) == 0, allowNull);
        }
    }

    KOBWBExpression* CreateNary(bool sum, bool allowNull) {
        KOBWBExpression* children[4];
        const int n = 1 + m_input.Below(4);
        for (int i = 0; i < n; ++i)
            children[i] = Pick(allowNull);
        return sum ? m_factory.CreateSum(n, children) : m_factory.CreateProduct(n, children);
    }

    KOBWBExpression* CreateAnyNode(bool allowNull) {
        if (m_pool.empty() || m_input.Below(5) == 0) return CreateLeaf(false);
        static const KOBWBExpressionType unary[] = {
            KOBWBSqrtType,  KOBWBLogType,  KOBWBLnType,      KOBWBExpType,   KOBWBSinType,
            KOBWBCosType,   KOBWBTanType,  KOBWBAsinType,    KOBWBAcosType,  KOBWBAtanType,
            KOBWBSinhType,  KOBWBCoshType, KOBWBTanhType,    KOBWBAsinhType, KOBWBAcoshType,
            KOBWBAtanhType, KOBWBAbsType,  KOBWBCeilType,    KOBWBFloorType, KOBWBRoundType,
            KOBWBTruncType, KOBWBNotType,  KOBWBOppositeType};
        static const KOBWBExpressionType binary[] = {
            KOBWBSumType,        KOBWBProductType, KOBWBQuotientType, KOBWBPowerType,
            KOBWBRootType,       KOBWBAtan2Type,   KOBWBDimType,      KOBWBSignType,
            KOBWBModType,        KOBWBMinType,     KOBWBMaxType,      KOBWBOrType,
            KOBWBAndType,        KOBWBEqualType,   KOBWBNotEqualType, KOBWBLessEqualType,
            KOBWBImplicationType};
        switch (m_input.Below(8)) {
        case 0:
            return m_factory.CreateOperator(unary[m_input.Below(sizeof unary / sizeof *unary)],
                                            Pick(allowNull));
        case 1: {
            KOBWBExpression* children[2] = {Pick(allowNull), Pick(allowNull)};
            return m_factory.CreateOperator(binary[m_input.Below(sizeof binary / sizeof *binary)],
                                            2, children);
        }
        case 2:
            return m_factory.CreatePower(Pick(allowNull), m_input.Below(9) - 4);
        case 3:
            return m_factory.CreateRoot(Pick(allowNull), m_input.Below(9) - 4);
        case 4:
            return m_factory.CreateIfThenElse(Pick(allowNull), Pick(allowNull), Pick(allowNull));
        case 5:
            return m_factory.CreateSub(Pick(allowNull), Pick(allowNull));
        case 6:
            return m_factory.CreateOpposite(Pick(allowNull));
        default:
            return CreateNary(m_input.Below(2) == 0, allowNull);
        }
    }

    KOBWBFactory& m_factory;
    FuzzInput& m_input;
    std::vector<KOBWBExpression*> m_pool;
};

// A single real or an interval from the bytes, for a variable's domain.
inline KOBWBValue FuzzDomain(FuzzInput& input) {
    const double lower = input.Number();
    if (input.Below(2) == 0) return KOBWBValue(lower);
    return KOBWBValue(KOBWBCreateRealInterval(lower, lower + input.Below(8)));
}

#endif
