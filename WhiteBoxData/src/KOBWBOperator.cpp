#include "KOBWBOperator.h"

#include "KOBLVRAssert.h"
#include "KOBWBGraphComparison.h"
#include "KOBWBGraphWalk.h"

#include <algorithm>
#include <new>

namespace {

constexpr const char* operatorModule = "WhiteBoxData/src/KOBWBOperator";
constexpr unsigned nullArrayLine = 34;
constexpr unsigned nullChildLine = 38;

} // namespace

KOBWBOperator::Children::~Children() {
    if (!IsInline()) delete[] m_block;
}

bool KOBWBOperator::Children::Reserve(int capacity) {
    if (capacity <= m_capacity) return true;
    int grown = m_capacity * 2;
    if (grown < capacity) grown = capacity;
    KOBWBExpression** block = new (std::nothrow) KOBWBExpression*[static_cast<std::size_t>(grown)];
    if (!block) return false;
    KOBWBExpression** elements = Elements();
    std::copy(elements, elements + m_count, block);
    if (!IsInline()) delete[] m_block;
    m_block = block;
    m_capacity = grown;
    return true;
}

bool KOBWBOperator::Children::Resize(int count) {
    if (count < 0 || !Reserve(count)) return false;
    KOBWBExpression** elements = Elements();
    std::fill(elements + std::min(m_count, count), elements + count, nullptr);
    m_count = count;
    return true;
}

bool KOBWBOperator::Children::Append(KOBWBExpression* child) {
    if (!Reserve(m_count + 1)) return false;
    Elements()[m_count++] = child;
    return true;
}

void KOBWBOperator::Children::RemovePosition(int i) {
    if (i < 0 || i >= m_count) return;
    KOBWBExpression** elements = Elements();
    std::copy(elements + i + 1, elements + m_count, elements + i);
    --m_count;
}

int KOBWBOperator::Children::Locate(const KOBWBExpression* child) const {
    KOBWBExpression* const* elements = Elements();
    const auto found = std::find(elements, elements + m_count, child);
    return found == elements + m_count ? -1 : static_cast<int>(found - elements);
}

KOBWBOperator::KOBWBOperator(KOBWBFactory& factory, KOBWBExpressionType type, int n,
                             KOBWBExpression** children)
    : KOBWBExpression(factory, type) {
    if (n <= 0 || !m_children.Resize(n)) return;
    if (!children) {
        KOBLVRAssertError("iapChildren", operatorModule, nullArrayLine);
        return;
    }
    for (int i = 0; i < n; ++i) {
        if (!children[i]) KOBLVRAssertError("iapChildren[i]", operatorModule, nullChildLine);
        m_children[i] = children[i];
    }
}

KOBWBOperator::KOBWBOperator(KOBWBFactory& factory, KOBWBExpressionType type,
                             std::initializer_list<KOBWBExpression*> children)
    : KOBWBOperator(factory, type, static_cast<int>(children.size()),
                    const_cast<KOBWBExpression**>(children.begin())) {}

KOBWBOperator::~KOBWBOperator() = default;

KOBWBExpression* KOBWBOperator::GetChild(int i) {
    return i >= 0 && i < m_children.Size() ? m_children[i] : nullptr;
}

const KOBWBExpression* KOBWBOperator::GetChild(int i) const {
    return i >= 0 && i < m_children.Size() ? m_children[i] : nullptr;
}

unsigned char KOBWBOperator::ReplaceChild(int i, KOBWBExpression* child) {
    if (i < 0 || i >= m_children.Size() || !child) return 0;
    m_children[i] = child;
    NoteStructureChange();
    return 1;
}

unsigned char KOBWBOperator::IsEqualTo(const KOBWBExpression* other) const {
    return kobwb::OperatorsEqual(*this, other) ? 1 : 0;
}

namespace {

// Calls visit on every leaf below node (a node without children), stopping and
// answering false as soon as visit does.
template <class Visit> bool VisitLeaves(const KOBWBExpression* node, Visit visit) {
    using kobwb::WalkStep;
    return kobwb::WalkGraph(node, [&visit, node](const KOBWBExpression* current) {
        if (!current) return WalkStep::Skip;
        if (current->GetNbOfChildren() > 0 || current == node) return WalkStep::Descend;
        return visit(current) ? WalkStep::Skip : WalkStep::Stop;
    });
}

} // namespace

unsigned char KOBWBOperator::IsFree(KOBWBVariable* v) const {
    return VisitLeaves(this, [v](const KOBWBExpression* leaf) { return leaf->IsFree(v) != 0; }) ? 1 : 0;
}

void KOBWBOperator::FillPresentVariables(unsigned char* mask) const {
    VisitLeaves(this, [mask](const KOBWBExpression* leaf) {
        leaf->FillPresentVariables(mask);
        return true;
    });
}

void KOBWBOperator::ResetBuffer(unsigned char recursive) {
    KOBWBExpression::ResetBuffer(0);
    if (!recursive) return;
    kobwb::WalkGraph(static_cast<KOBWBExpression*>(this), [](KOBWBExpression* node) {
        if (node) node->KOBWBExpression::ResetBuffer(0);
        return kobwb::WalkStep::Descend;
    });
}
