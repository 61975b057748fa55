#include "KOBWBEvaluationPlans.h"

#include "KOBWBAlgebraicOperator.h"
#include "KOBWBBinaryOperator.h"
#include "KOBWBConstant.h"
#include "KOBWBFactory.h"
#include "KOBWBOperatorTable.h"
#include "KOBWBTrigonometricOperator.h"
#include "KOBWBUnaryOperator.h"
#include "KOBWBVariable.h"

#include <algorithm>
#include <typeinfo>

namespace kobwb {

namespace {

// How many steps ahead the memory of a leaf's value is asked for: leaves lie away from
// the slots. As roots are mostly evaluated in the order their plans were made, the
// steps ahead may well be those of the next plans.
constexpr std::size_t prefetchDistance = 24;

// How many plans ahead the node of a root is asked for.
constexpr std::size_t rootsAhead = 2;

// Nodes with more children evaluate themselves.
constexpr int maxListedChildren = 0xffff;

// Nodes that evaluate their children themselves, and only those they need.
bool EvaluatesItsOwnChildren(OperatorFamily family) {
    return family == OperatorFamily::IfThenElse || family == OperatorFamily::BlackBox ||
           family == OperatorFamily::Integrate;
}

bool HasNullChild(const KOBWBExpression& node) {
    for (int i = 0; i < node.GetNbOfChildren(); ++i)
        if (!node.GetChild(i)) return true;
    return false;
}

const KOBWBValue& LeafValue(const KOBWBExpression& leaf) {
    return static_cast<const KOBWBConstant&>(leaf).KOBWBConstant::GetExprValue();
}

// Marks an operand whose interval was just computed as the RealInterval it now is.
void MakeInterval(RealOperand& operand) {
    operand.kind = RealOperand::Kind::Interval;
    operand.integral = false;
    operand.exponent = 0;
}

} // namespace

void EvaluationPlans::Reserve(std::size_t nodes) {
    // Roots share some nodes, and plans list leaves as steps: a little more than one
    // step per node is usual.
    const std::size_t steps = nodes + nodes / 2;
    m_slots.reserve(nodes);
    m_nodeOfSlot.reserve(nodes);
    m_planOfSlot.reserve(nodes);
    m_listedBy.reserve(nodes);
    m_steps.reserve(steps);
    m_childSlots.reserve(steps);
}

int EvaluationPlans::SlotOf(KOBWBExpression& node) {
    if (!(node.m_flags & KOBWBExpression::slotted)) {
        const std::size_t slot = static_cast<std::size_t>(node.m_slot);
        if (slot >= m_slots.size()) {
            m_slots.resize(slot + 1);
            m_nodeOfSlot.resize(slot + 1, nullptr);
            m_planOfSlot.resize(slot + 1, -1);
            m_listedBy.resize(slot + 1, 0);
        }
        m_nodeOfSlot[slot] = &node;
        node.m_flags |= KOBWBExpression::slotted;
    }
    return node.m_slot;
}

EvaluationPlans::Step EvaluationPlans::StepOf(KOBWBExpression& node) {
    const OperatorInfo& info = GetOperatorInfo(node.GetType());
    const int count = node.GetNbOfChildren();
    // Only the library's own node classes are computed from slots; the addresses of
    // their type descriptions are unique within the library.
    const std::type_info* const type = &typeid(node);
    const bool complete = count > 0 && count <= maxListedChildren && !HasNullChild(node);
    Step step{SlotOf(node), 0, Kind::Node, 0};
    if (info.family == OperatorFamily::Leaf && (type == &typeid(KOBWBConstant) || type == &typeid(KOBWBVariable))) {
        step.kind = Kind::Leaf;
    } else if (type == &typeid(KOBWBAlgebraicOperator) && info.family == OperatorFamily::Algebraic &&
               info.interval.kind == IntervalForm::Kind::Binary && count >= 2 && complete) {
        step.kind = Kind::Fold;
        step.function = static_cast<unsigned char>(info.interval.code);
    } else if (type == &typeid(KOBWBBinaryOperator) && info.family == OperatorFamily::Binary && HasBinaryForm(info) &&
               count == 2 && complete) {
        const bool power = info.interval.kind == IntervalForm::Kind::Power;
        step.kind = power ? Kind::Power : Kind::Binary;
        step.function = static_cast<unsigned char>(info.interval.code);
    } else if (((type == &typeid(KOBWBUnaryOperator) && info.family == OperatorFamily::Unary) ||
                (type == &typeid(KOBWBTrigonometricOperator) && info.family == OperatorFamily::Trigonometric)) &&
               info.unary && HasUnaryForm(info) && count == 1 && complete) {
        step.kind = Kind::Unary;
        step.function = static_cast<unsigned char>(info.interval.code);
    }
    if (step.kind != Kind::Leaf && step.kind != Kind::Node) step.childCount = static_cast<unsigned short>(count);
    return step;
}

bool EvaluationPlans::List(KOBWBExpression& node) {
    if (node.m_slot < 0) {
        m_unnumbered = true;
        return false;
    }
    const std::size_t slot = static_cast<std::size_t>(SlotOf(node));
    if (m_listedBy[slot] == m_listing) return false;
    m_listedBy[slot] = m_listing;
    return true;
}

EvaluationPlans::Frame EvaluationPlans::FrameOf(KOBWBExpression& node) {
    return {&node, 0, EvaluatesItsOwnChildren(FamilyOf(node.GetType())) ? 0 : node.GetNbOfChildren()};
}

EvaluationPlans::Plan EvaluationPlans::Make(const KOBWBFactory& factory, KOBWBExpression* const* roots, std::size_t count) {
    const Plan plan{roots[0], m_steps.size(), 0, m_childSlots.size()};
    if (++m_listing == 0) {
        std::fill(m_listedBy.begin(), m_listedBy.end(), 0u);
        m_listing = 1;
    }
    m_unnumbered = false;
    for (std::size_t r = 0; r < count; ++r) {
        if (!roots[r] || !List(*roots[r])) continue;
        m_frames.assign(1, FrameOf(*roots[r]));
        while (!m_frames.empty()) {
            Frame& top = m_frames.back();
            KOBWBExpression* node = top.node;
            if (top.nextChild < top.listedChildren) {
                KOBWBExpression* child = node->GetChild(top.nextChild++);
                if (child && List(*child)) m_frames.push_back(FrameOf(*child));
                continue;
            }
            m_frames.pop_back();
            const Step step = StepOf(*node);
            for (int i = 0; i < step.childCount; ++i) m_childSlots.push_back(SlotOf(*node->GetChild(i)));
            m_steps.push_back(step);
        }
    }
    const std::size_t budget = stepsPerNode * static_cast<std::size_t>(factory.GetNbOfExpressions()) + stepsAllowance;
    m_overBudget = m_steps.size() > budget;
    if (m_overBudget || m_unnumbered) {
        m_steps.resize(plan.firstStep);
        m_childSlots.resize(plan.firstChild);
        return plan;
    }
    return {plan.root, plan.firstStep, m_steps.size() - plan.firstStep, plan.firstChild};
}

void EvaluationPlans::Run(const Plan& plan, KOBWBFactory& factory) {
    const KOBWBEnvironment& environment = factory.GetEnvironment();
    const unsigned& generation = factory.m_bufferGeneration;
    const Step* const steps = m_steps.data() + plan.firstStep;
    const int* children = m_childSlots.data() + plan.firstChild;
    EvaluationSlot* slots = m_slots.data();
    const std::size_t ahead = m_steps.size() - plan.firstStep;
    // Until a node evaluates itself, nothing but the steps touches the slots, so
    // every child's slot is current; an evaluation with side effects may reset
    // some, and from then on each child is checked.
    bool checkChildren = false;
    for (std::size_t s = 0; s < plan.stepCount; ++s) {
        // The slots of the steps ahead are asked for first; a leaf whose slot has
        // arrived when its step is nearer, and does not hold its value, has its value
        // asked for.
        if (s + prefetchDistance < ahead) __builtin_prefetch(&slots[steps[s + prefetchDistance].slot]);
        if (s + prefetchDistance / 2 < ahead) {
            const Step& later = steps[s + prefetchDistance / 2];
            if (later.kind == Kind::Leaf && !slots[later.slot].lasting) {
                const KOBWBExpression* leaf = m_nodeOfSlot[static_cast<std::size_t>(later.slot)];
                const char* value = reinterpret_cast<const char*>(&LeafValue(*leaf));
                __builtin_prefetch(value);
                __builtin_prefetch(value + sizeof(KOBWBValue) / 2);
            }
        }
        const Step& step = steps[s];
        const int* own = children;
        children += step.childCount;
        EvaluationSlot& slot = slots[step.slot];
        if (slot.generation == generation) continue;
        bool current = true;
        if (checkChildren)
            for (int i = 0; i < step.childCount; ++i) current = current && slots[own[i]].generation == generation;
        // The interval is computed into the slot itself: results pass from step to
        // step through memory, and a value copied whole right after being written in
        // halves would wait for the writes.
        RealOperand& result = slot.operand;
        bool computed = false;
        if (current) switch (step.kind) {
            case Kind::Leaf:
                // The slot is out of date, so is the buffer: the leaf would copy its
                // value, which is read only when it was set since the last reading.
                if (!slot.lasting) ReadRealOperand(LeafValue(*m_nodeOfSlot[static_cast<std::size_t>(step.slot)]), result);
                slot.lasting = true;
                slot.generation = generation;
                continue;
            case Kind::Fold:
                computed = BinaryOnRealOperands(environment, OperationOf(static_cast<Binary>(step.function)), slots[own[0]].operand,
                                                slots[own[1]].operand, nullptr, result.interval);
                MakeInterval(result);
                for (int i = 2; i < step.childCount && computed; ++i)
                    computed = BinaryOnRealOperands(environment, OperationOf(static_cast<Binary>(step.function)), result, slots[own[i]].operand, nullptr,
                                                    result.interval);
                break;
            case Kind::Binary:
                computed = BinaryOnRealOperands(environment, OperationOf(static_cast<Binary>(step.function)), slots[own[0]].operand,
                                                slots[own[1]].operand, nullptr, result.interval);
                break;
            case Kind::Power:
                computed = PowOnRealOperands(environment, slots[own[0]].operand, slots[own[1]].operand, result.interval);
                break;
            case Kind::Unary:
                computed = UnaryOnRealOperand(environment, OperationOf(static_cast<Unary>(step.function)), slots[own[0]].operand, {}, result.interval);
                break;
            case Kind::Node: break;
            }
        if (computed) {
            MakeInterval(result);
            slot.generation = generation;
        } else {
            m_nodeOfSlot[static_cast<std::size_t>(step.slot)]->GetValue();
            slots = m_slots.data();
            checkChildren = true;
        }
    }
}

void EvaluationPlans::Clear() {
    m_plans.clear();
    m_listPlans.clear();
    m_nextListPlan = 0;
    m_steps.clear();
    m_childSlots.clear();
}

void EvaluationPlans::Refresh(const KOBWBFactory& factory) {
    if (m_structureVersion == factory.m_structureVersion) return;
    Clear();
    m_structureVersion = factory.m_structureVersion;
}

bool EvaluationPlans::Start(const Plan& plan, KOBWBFactory& factory, bool initialiseEnvironment) {
    if (plan.stepCount == 0) return false;
    factory.SetBufferUsed();
    if (initialiseEnvironment) factory.InitEnvForEval();
    ++factory.m_evaluationDepth;
    Run(plan, factory);
    --factory.m_evaluationDepth;
    return true;
}

bool EvaluationPlans::Evaluate(KOBWBExpression& root, bool initialiseEnvironment) {
    KOBWBFactory& factory = root.m_factory;
    Refresh(factory);
    if (root.m_slot < 0) return false;
    if (m_plans.empty()) Reserve(static_cast<std::size_t>(factory.m_nodesNumbered));
    const std::size_t slot = static_cast<std::size_t>(SlotOf(root));
    const int known = m_planOfSlot[slot];
    if (known < 0 || static_cast<std::size_t>(known) >= m_plans.size() ||
        m_plans[static_cast<std::size_t>(known)].root != &root) {
        KOBWBExpression* roots[] = {&root};
        const Plan plan = Make(factory, roots, 1);
        m_planOfSlot[slot] = static_cast<int>(m_plans.size());
        m_plans.push_back(plan);
    }
    const std::size_t index = static_cast<std::size_t>(m_planOfSlot[slot]);
    // Roots are mostly evaluated in the order their plans were made: the root after
    // next is asked for now, as its node is the one thing of it not read in turn.
    if (index + rootsAhead < m_plans.size()) __builtin_prefetch(m_plans[index + rootsAhead].root);
    if (!Start(m_plans[index], factory, initialiseEnvironment)) return false;
    if (root.HasPendingValue()) root.WritePendingValue();
    return root.IsBufferFilled();
}

bool EvaluationPlans::EvaluateList(KOBWBFactory& factory, int count, KOBWBExpression* const* expressions) {
    Refresh(factory);
    const std::size_t size = static_cast<std::size_t>(count);
    const auto same = [expressions, size](const ListPlan& known) {
        return known.expressions.size() == size && std::equal(known.expressions.begin(), known.expressions.end(), expressions);
    };
    auto known = std::find_if(m_listPlans.begin(), m_listPlans.end(), same);
    if (known == m_listPlans.end()) {
        // Plans hold the slots of this factory's nodes only.
        for (std::size_t i = 0; i < size; ++i)
            if (expressions[i] && &expressions[i]->m_factory != &factory) return false;
        if (m_steps.empty()) Reserve(static_cast<std::size_t>(factory.m_nodesNumbered));
        const bool others = !m_steps.empty();
        ListPlan made{std::vector<const KOBWBExpression*>(expressions, expressions + size), Make(factory, expressions, size)};
        // The plans of lists no longer given keep their steps until the graph changes:
        // when the plans have used their budget, all of them are dropped, to be made
        // again when they are next needed, and this one is made alone.
        if (m_overBudget && others) {
            Clear();
            made.plan = Make(factory, expressions, size);
        }
        if (m_listPlans.size() < listPlans) {
            m_listPlans.push_back(std::move(made));
            known = m_listPlans.end() - 1;
        } else {
            known = m_listPlans.begin() + static_cast<std::ptrdiff_t>(m_nextListPlan);
            *known = std::move(made);
            m_nextListPlan = (m_nextListPlan + 1) % listPlans;
        }
    }
    if (!Start(known->plan, factory, false)) return false;
    WriteValues(known->expressions);
    return true;
}

void EvaluationPlans::WriteValues(const std::vector<const KOBWBExpression*>& expressions) {
    constexpr std::size_t nodesAhead = 16;
    constexpr std::size_t buffersAhead = nodesAhead / 2;
    const std::size_t count = expressions.size();
    const unsigned generation = count > 0 && expressions[0] ? expressions[0]->m_factory.GetBufferGeneration() : 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (i + nodesAhead < count && expressions[i + nodesAhead]) __builtin_prefetch(expressions[i + nodesAhead]);
        if (i + buffersAhead < count && expressions[i + buffersAhead]) {
            const KOBWBExpression& later = *expressions[i + buffersAhead];
            if (later.m_flags & KOBWBExpression::slotted) __builtin_prefetch(&Slot(later.m_slot));
            if (later.m_buffer) __builtin_prefetch(&later.Buffer());
        }
        KOBWBExpression* expression = const_cast<KOBWBExpression*>(expressions[i]);
        if (expression && (expression->m_flags & KOBWBExpression::slotted) &&
            Slot(expression->m_slot).generation == generation && !expression->IsBufferFilled())
            expression->WritePendingValue();
    }
}

} // namespace kobwb
