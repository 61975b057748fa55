#include "KOBWBExpression.h"

#include "KOBWBEvaluationPlans.h"
#include "KOBWBFactory.h"
#include "KOBWBGraphWalk.h"
#include "KOBWBNodeSideTables.h"
#include "KOBWBOperatorEvaluation.h"
#include "KOBWBPresentVariables.h"
#include "KOBWBValueBuffers.h"
#include "KOBWBVariable.h"

#include <algorithm>
#include <new>
#include <unordered_set>
#include <vector>

using kobwb::PropertyTable;

KOBWBExpression::KOBWBExpression(KOBWBFactory& factory, KOBWBExpressionType type)
    : m_type(type), m_slot(factory.NumberNode()), m_factory(factory) {}

KOBWBExpression::~KOBWBExpression() {
    if (!(m_flags & (hasOwnValue | hasProperties))) return;
    kobwb::NodeSideTables& tables = m_factory.SideTables();
    tables.ownValues.erase(this);
    tables.properties.Erase(m_slot, this);
}

void* KOBWBExpression::operator new(std::size_t size, KOBWBFactory& factory) noexcept {
    return factory.AllocateNode(size);
}

unsigned char KOBWBExpression::IsEqualTo(const KOBWBExpression* other) const {
    return other == this;
}

unsigned char KOBWBExpression::AddChild(KOBWBExpression*) { return 0; }

unsigned char KOBWBExpression::RemoveChild(int) { return 0; }

void KOBWBExpression::SetParameter(int, double) {}

double KOBWBExpression::GetParameter(int) { return 0.0; }

int KOBWBExpression::GetNbOfParameters() const { return 0; }

void KOBWBExpression::ResetBuffer(unsigned char) {
    m_flags &= ~bufferValid;
    if (m_flags & slotted) m_factory.m_evaluationPlans->Slot(m_slot).generation = 0;
}

kobwb::ValueBuffer& KOBWBExpression::Buffer() const { return m_factory.ValueBuffers()[m_buffer]; }

KOBWBValue& KOBWBExpression::BufferValue() {
    if (!m_buffer) m_buffer = m_factory.ValueBuffers().Make();
    // Without memory for a buffer, the value is computed into scratch space and not kept.
    static KOBWBValue scratch;
    return m_buffer ? Buffer().value : scratch;
}

bool KOBWBExpression::IsBufferFilled() const {
    return (m_flags & bufferValid) && Buffer().generation == m_factory.GetBufferGeneration();
}

void KOBWBExpression::MarkBufferFilled() {
    if (!m_buffer) return;
    m_flags |= bufferValid | exprValueIsBuffer;
    Buffer().generation = m_factory.GetBufferGeneration();
}

const KOBWBValue& KOBWBExpression::GetValue() {
    if (m_flags & bufferValid) {
        const kobwb::ValueBuffer& buffer = Buffer();
        if (buffer.generation == m_factory.GetBufferGeneration()) return buffer.value;
    }
    return Evaluate(false);
}

bool KOBWBExpression::IsBufferValid() const { return IsBufferFilled() || HasPendingValue(); }

bool KOBWBExpression::HasPendingValue() const {
    return (m_flags & slotted) && !IsBufferFilled() &&
           m_factory.m_evaluationPlans->Slot(m_slot).generation ==
               m_factory.GetBufferGeneration();
}

bool KOBWBExpression::WritePendingValue() {
    const kobwb::RealOperand& operand = m_factory.m_evaluationPlans->Slot(m_slot).operand;
    // A leaf's value is a copy of its own; a plan keeps an operator's value only
    // when it is an interval, which the node's evaluation would have stored.
    const bool leaf = m_type == KOBWBVariableType || m_type == KOBWBConstantType;
    if (!leaf && operand.kind != kobwb::RealOperand::Kind::Interval) return false;
    if (!m_buffer && !(m_buffer = m_factory.ValueBuffers().Make())) return false;
    kobwb::ValueBuffer& buffer = Buffer();
    if (leaf)
        DoEval(buffer.value);
    else
        kobwb::StoreInterval(buffer.value, operand.interval);
    m_flags |= bufferValid | exprValueIsBuffer;
    buffer.generation = m_factory.GetBufferGeneration();
    return true;
}

void KOBWBExpression::LeafValueChanged() {
    if (m_flags & slotted) m_factory.m_evaluationPlans->LeafValueChanged(m_slot);
}

void KOBWBExpression::UpdateSlot() {
    kobwb::EvaluationSlot& slot = m_factory.m_evaluationPlans->Slot(m_slot);
    const kobwb::ValueBuffer& buffer = Buffer();
    kobwb::ReadRealOperand(buffer.value, slot.operand);
    slot.generation = buffer.generation;
}

const KOBWBValue& KOBWBExpression::GetExprValue() const {
    static const KOBWBValue undefined;
    // The node's value computed by a plan is its expression value, as if its own
    // evaluation had run; a node is never made const, so it may write its buffer.
    if (HasPendingValue()) const_cast<KOBWBExpression*>(this)->WritePendingValue();
    if (m_flags & exprValueIsBuffer) return Buffer().value;
    if (!(m_flags & hasOwnValue)) return undefined;
    const auto& values = m_factory.SideTables().ownValues;
    const auto own = values.find(this);
    return own == values.end() ? undefined : own->second;
}

void KOBWBExpression::SetExprValue(const KOBWBValue& value) {
    if (HasPendingValue()) WritePendingValue();
    m_factory.SideTables().ownValues[this] = value;
    m_flags = (m_flags | hasOwnValue) & ~exprValueIsBuffer;
}

namespace {
// Evaluations nested deeper than this prepare their subgraph with an explicit stack
// before computing, so that a long chain of nodes cannot exhaust the call stack.
constexpr int deepEvaluation = 1000;
} // namespace

void KOBWBExpression::EvaluateBelowWithoutRecursion() {
    struct Frame {
        KOBWBExpression* node;
        int nextChild;
    };
    std::vector<Frame> frames{{this, 0}};
    while (!frames.empty()) {
        const size_t top = frames.size() - 1;
        KOBWBExpression* node = frames[top].node;
        // A condition evaluates only the branch it chooses: its children are left to it.
        const bool descends = node->m_type != KOBWBIfThenElseType;
        if (descends && frames[top].nextChild < node->GetNbOfChildren()) {
            KOBWBExpression* child = node->GetChild(frames[top].nextChild++);
            if (child && child->GetNbOfChildren() > 0 && !child->IsBufferValid()) frames.push_back({child, 0});
            continue;
        }
        frames.pop_back();
        if (node != this) node->GetValue();
    }
}

const KOBWBValue& KOBWBExpression::Evaluate(bool initialiseEnvironment) {
    // The buffer is not filled in this generation: a plan may have computed the value.
    if ((m_flags & slotted) &&
        m_factory.m_evaluationPlans->Slot(m_slot).generation == m_factory.GetBufferGeneration() &&
        WritePendingValue())
        return Buffer().value;
    int& depth = m_factory.m_evaluationDepth;
    if ((m_flags & equationRoot) && depth == 0 &&
        m_factory.EvaluationPlans().Evaluate(*this, initialiseEnvironment))
        return Buffer().value;
    if (depth >= deepEvaluation) EvaluateBelowWithoutRecursion();
    m_factory.SetBufferUsed();
    if (initialiseEnvironment) m_factory.InitEnvForEval();
    KOBWBValue& buffer = BufferValue();
    ++depth;
    DoEval(buffer);
    --depth;
    MarkBufferComputed();
    return buffer;
}

void KOBWBExpression::MarkAsEquationRoot() {
    const kobwb::OperatorFamily family = kobwb::FamilyOf(m_type);
    if (family != kobwb::OperatorFamily::Leaf && family != kobwb::OperatorFamily::None &&
        family != kobwb::OperatorFamily::IfThenElse && family != kobwb::OperatorFamily::BlackBox)
        m_flags |= equationRoot;
}

void KOBWBExpression::NoteStructureChange() {
    ++m_factory.m_structureVersion;
    m_factory.NoteSystemChange();
    // A permanent node may now reach temporary nodes, which must outlast the mode.
    if (m_factory.m_temporaryMode && !(m_flags & (temporaryNode | changedInTemporaryMode))) {
        m_flags |= changedInTemporaryMode;
        m_factory.m_changedInTemporaryMode.push_back(this);
    }
}

void KOBWBExpression::Eval(KOBWBValue& result) { result = IsBufferFilled() ? Buffer().value : Evaluate(true); }

double KOBWBExpression::DoEval() {
    const KOBWBValue& value = IsBufferFilled() ? Buffer().value : Evaluate(true);
    return value.GetAsDouble();
}

unsigned char KOBWBExpression::IsConstant() const {
    using kobwb::WalkStep;
    return kobwb::WalkGraph(this, [](const KOBWBExpression* node) {
               if (!node || node->m_type == KOBWBVariableType) return WalkStep::Stop;
               return node->m_type == KOBWBConstantType ? WalkStep::Skip : WalkStep::Descend;
           })
               ? 1
               : 0;
}

int KOBWBExpression::FindPresentVariables(KOBWBVariable**& out) {
    if (m_factory.GetNbOfVariables() == 0) return 0;
    const std::vector<KOBWBVariable*> variables = kobwb::PresentVariables(*this);
    if (variables.empty()) return 0;
    KOBWBVariable** array = new (std::nothrow) KOBWBVariable*[variables.size()];
    if (!array) return 0;
    std::copy(variables.begin(), variables.end(), array);
    out = array;
    return static_cast<int>(variables.size());
}

int KOBWBExpression::GetProperty(int property) const {
    const int fallback = m_factory.GetDefaultPropertyValue(property);
    const PropertyTable* table = Properties();
    if (!table || property < 0 || property >= table->count) return fallback;
    const int stored = table->Data()[property];
    return stored == -1 ? fallback : stored;
}

void KOBWBExpression::SetProperty(int property, int value) {
    if (!(m_flags & hasProperties) && value == m_factory.GetDefaultPropertyValue(property)) return;
    PropertyTable& table = m_factory.SideTables().properties.Make(m_slot, this);
    m_flags |= hasProperties;
    if (property < table.count) {
        table.Data()[property] = value;
        return;
    }
    const int size = property + 1;
    if (size > table.capacity) {
        int capacity = table.capacity < 4 ? 4 : table.capacity;
        while (capacity < size) capacity *= 2;
        if (capacity > PropertyTable::inlineCapacity) {
            std::unique_ptr<int[]> data(new (std::nothrow) int[static_cast<size_t>(capacity)]);
            if (!data) return;
            for (int i = 0; i < table.count; ++i) data[i] = table.Data()[i];
            table.heap = std::move(data);
        }
        table.capacity = capacity;
    }
    int* data = table.Data();
    for (int i = table.count; i < size; ++i) data[i] = -1;
    table.count = size;
    data[property] = value;
}

const PropertyTable* KOBWBExpression::Properties() const {
    if (!(m_flags & hasProperties)) return nullptr;
    return m_factory.SideTables().properties.Find(m_slot, this);
}

int KOBWBExpression::GetPropertyTableSize() const {
    const PropertyTable* table = Properties();
    return table ? table->count : 0;
}

int KOBWBExpression::GetPropertyTableCapacity() const {
    const PropertyTable* table = Properties();
    return table ? table->capacity : 0;
}

unsigned char KOBWBExpression::ReplaceVar(KOBWBVariable* var, KOBWBExpression* by) {
    if (this == var) return 0;
    std::unordered_set<KOBWBExpression*> visited;
    std::vector<KOBWBExpression*> pending{this};
    while (!pending.empty()) {
        KOBWBExpression* node = pending.back();
        pending.pop_back();
        if (!visited.insert(node).second) continue;
        const int count = node->GetNbOfChildren();
        for (int i = 0; i < count; ++i) {
            KOBWBExpression* child = node->GetChild(i);
            if (!child) continue;
            if (child == var)
                node->ReplaceChild(i, by);
            else
                pending.push_back(child);
        }
    }
    return 1;
}
