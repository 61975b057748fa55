#include "KOBWBFactory.h"

#include "KOBLVRGlobalParameters.h"
#include "KOBWBBlackBox.h"
#include "KOBWBConstant.h"
#include "KOBWBEquation.h"
#include "KOBWBEvaluationPlans.h"
#include "KOBWBNodeArena.h"
#include "KOBWBNodeSideTables.h"
#include "KOBWBValueBuffers.h"
#include "KOBWBVariable.h"

#include <cstring>
#include <new>

// The frame of the factory: construction and destruction, leaves, registration,
// buffers and properties. Equations, operators and the copying services live in
// their own files.

KOBWBFactory::KOBWBFactory(unsigned int level)
    : m_level(level), m_arena(new (std::nothrow) kobwb::NodeArena),
      m_valueBuffers(new (std::nothrow) kobwb::ValueBuffers) {
    m_temporaryProperty = RegisterProperty("temporary", 0);
}

KOBWBFactory::KOBWBFactory() : KOBWBFactory(GetGlobalParameters().GetLVRFullOpenConfigurationLevel()) {}

KOBWBFactory::~KOBWBFactory() {
    for (int i = 0; i < m_expressions.Size(); ++i) delete m_expressions[i];
    m_expressions.RemoveAll();
    m_equations.DeleteAll();
    m_ownedBlackBoxes.DeleteAll();
    m_temporaryExpressions.DeleteAll();
    m_properties.reset();
}

void* KOBWBFactory::AllocateNode(std::size_t size) {
    return m_arena && m_valueBuffers ? m_arena->Allocate(size) : nullptr;
}

kobwb::NodeSideTables& KOBWBFactory::SideTables() {
    if (!m_sideTables) m_sideTables.reset(new kobwb::NodeSideTables);
    return *m_sideTables;
}

kobwb::EvaluationPlans& KOBWBFactory::EvaluationPlans() {
    if (!m_evaluationPlans) m_evaluationPlans.reset(new kobwb::EvaluationPlans);
    return *m_evaluationPlans;
}

KOBWBExpression* KOBWBFactory::GetExpression(int i) const {
    return i >= 0 && i < m_expressions.Size() ? m_expressions[i] : nullptr;
}

void KOBWBFactory::ResetBuffer(KOBWBExpression* expr) {
    if (!m_bufferUsed) return;
    if (expr) {
        expr->ResetBuffer(1);
    } else if (++m_bufferGeneration == 0) {
        // The generation wrapped around: clear every flag word once, then go on.
        const int count = m_expressions.Size();
        for (int i = 0; i < count; ++i) m_expressions[i]->ResetBuffer(0);
        for (int i = 0; i < m_temporaryExpressions.Size(); ++i) m_temporaryExpressions[i]->ResetBuffer(0);
        m_bufferGeneration = 1;
    }
    m_bufferUsed = 0;
}

void KOBWBFactory::EvaluateExpressions(int n, KOBWBExpression* const* expressions) {
    if (n <= 0 || !expressions) return;
    // Plans are not made again while one of them runs.
    if (m_evaluationDepth == 0 && EvaluationPlans().EvaluateList(*this, n, expressions)) return;
    for (int i = 0; i < n; ++i)
        if (expressions[i]) expressions[i]->GetValue();
}

KOBWBExpression* KOBWBFactory::AddExpression(KOBWBExpression* expr) {
    if (!expr) return nullptr;
    if (m_temporaryMode) {
        m_temporaryExpressions.Append(expr);
        if (expr->GetType() == KOBWBBlackBoxType) ++m_temporaryBlackBoxes;
        expr->m_flags |= KOBWBExpression::temporaryNode;
        expr->SetProperty(m_temporaryProperty, 1);
    } else {
        m_expressions.Append(expr);
    }
    return expr;
}

KOBWBVariable* KOBWBFactory::CreateVariable() {
    KOBWBVariable* variable = new (*this) KOBWBVariable(*this, m_variables.Size());
    if (!variable) return nullptr;
    m_expressions.Append(variable);
    m_variables.Append(variable);
    m_variablesSorted = 0;
    return variable;
}

KOBWBConstant* KOBWBFactory::NewConstant(const KOBWBValue& value) {
    return new (*this) KOBWBConstant(*this, value);
}

KOBWBConstant* KOBWBFactory::CreateConstant(const KOBWBValue& value) {
    return static_cast<KOBWBConstant*>(AddExpression(NewConstant(value)));
}

KOBWBConstant* KOBWBFactory::CreateRealConstant(double value) { return CreateConstant(KOBWBValue(value)); }

KOBWBConstant* KOBWBFactory::CreateIntegerConstant(int value) { return CreateConstant(KOBWBValue(value)); }

KOBWBConstant* KOBWBFactory::CreatePredefinedConstant(PredefinedConst constant) {
    const int which = static_cast<int>(constant);
    if (which < 0 || which >= 3) return nullptr;
    if (m_predefinedConstants[which] >= 0)
        return static_cast<KOBWBConstant*>(m_expressions[m_predefinedConstants[which]]);
    static const KOBWBFraction fractions[] = {KOBWBCreateFraction(1, 1, 1, 0),
                                              KOBWBCreateFraction(1, 180, 1, 0),
                                              KOBWBCreateFraction(180, 1, -1, 0)};
    KOBWBConstant* node = NewConstant(KOBWBValue(fractions[which]));
    if (!node) return nullptr;
    m_predefinedConstants[which] = m_expressions.Size();
    m_expressions.Append(node);
    return node;
}

KOBWBVariable* KOBWBFactory::GetVariable(int index) const {
    if (index < 0 || index >= m_variables.Size()) return nullptr;
    return static_cast<KOBWBVariable*>(m_variables[index]);
}

KOBWBVariable* KOBWBFactory::GetNextVariable(KOBWBVariable* var) const {
    return GetVariable(var ? var->GetIdx() + 1 : 0);
}

namespace {

int CompareVariableNames(const void* a, const void* b) {
    KOBWBVariable* first = *static_cast<KOBWBVariable* const*>(a);
    KOBWBVariable* second = *static_cast<KOBWBVariable* const*>(b);
    return std::strcmp(first->GetName().str(), second->GetName().str());
}

} // namespace

KOBWBVariable* KOBWBFactory::GetVariable(const KOBLVRString& name) {
    if (!m_variablesSorted) {
        m_sortedVariables = m_variables;
        m_sortedVariables.QuickSort(CompareVariableNames);
        m_variablesSorted = 1;
    }
    KOBWBVariable probe(*this, name);
    KOBWBVariable* key = &probe;
    const int position = m_sortedVariables.BinarySearch(&key, CompareVariableNames);
    return position < 0 ? nullptr : static_cast<KOBWBVariable*>(m_sortedVariables[position]);
}

int KOBWBFactory::RegisterProperty(const KOBLVRString& name, int defaultValue) {
    if (!m_properties) m_properties.reset(new (std::nothrow) std::vector<PropertyRecord>);
    if (!m_properties) return -1;
    std::vector<PropertyRecord>& records = *m_properties;
    for (size_t i = 0; i < records.size(); ++i)
        if (records[i].name == name) return static_cast<int>(i);
    if (records.size() == records.capacity()) records.reserve(records.empty() ? 4 : records.size() * 2);
    records.push_back({name, defaultValue});
    return static_cast<int>(records.size() - 1);
}

int KOBWBFactory::GetDefaultPropertyValue(int property) const {
    if (!m_properties || property < 0 || property >= static_cast<int>(m_properties->size())) return -1;
    return (*m_properties)[static_cast<size_t>(property)].defaultValue;
}
