#ifndef KOBWBEvaluationPlans_h
#define KOBWBEvaluationPlans_h

#include "KOBLVRLargeBlocks.h"
#include "KOBWBValueDispatch.h"

#include <cstddef>
#include <vector>

class KOBWBEnvironment;
class KOBWBExpression;
class KOBWBFactory;

namespace kobwb {

// What evaluation plans know of a node's value: the value read as an operand of the
// interval forms, valid in one buffer generation.
//
// A node's slot and its buffer agree: a buffer filled in the current generation has
// its slot filled too, and a slot filled by a plan, whose node's buffer was not
// written, holds a value that the buffer receives unchanged when it is asked for.
// Resets clear both.
struct EvaluationSlot {
    RealOperand operand;
    // The buffer generation the operand belongs to; 0 is never current.
    unsigned generation = 0;
    // For a leaf: the operand is its value, read when the value was last set, and
    // holds in any generation until it is set again.
    bool lasting = false;
};

// The evaluation plans of a factory's equation roots, and the slots of the nodes
// they list.
//
// A plan lists the nodes below a root in an order where every node comes after its
// children, each node once. A root evaluated again and again (a solver's passes over
// its system) walks its list instead of searching its graph each time. While values
// are intervals, or single numbers that the interval forms take, a step computes its
// node from its children's slots with the interval form of the node's code, exactly
// as the node's own evaluation would, and keeps the result in the node's slot: the
// node itself is not touched until its value is asked for. Whatever the interval
// forms do not cover is evaluated by the node, as without a plan. Conditions and
// black-box calls evaluate their children themselves (a condition only the branch it
// takes), so a plan lists them without their subgraphs.
//
// The plans and their steps each lie in one array, in the order the plans were made,
// and the slots in the order the nodes were made, so that evaluating the roots in turn
// reads memory in turn. The plans
// describe the graph as it was when they were made: the factory counts the changes to
// children lists, and at another count every plan is dropped and made again.
class EvaluationPlans {
public:
    // Evaluates root through its plan, making the plan first when there is none or it
    // is out of date; true when root's buffer holds its value. False, with nothing
    // evaluated, when the plan would take the plans past their budget: the caller
    // then evaluates recursively, and the plan is not tried again until the graph
    // changes.
    bool Evaluate(KOBWBExpression& root, bool initialiseEnvironment);
    // Evaluates the expressions together through one plan of their graphs, each node
    // shared by several of them listed once, and writes their values into their
    // buffers. The plan is kept for the same list, given again, until the graph
    // changes. False, with nothing evaluated, when the plan cannot be made (the budget,
    // a node without a number, an expression of another factory): the caller then
    // evaluates each expression itself.
    bool EvaluateList(KOBWBFactory& factory, int count, KOBWBExpression* const* expressions);

    EvaluationSlot& Slot(int slot) { return m_slots[static_cast<std::size_t>(slot)]; }
    // A leaf's value changed: its slot is read again at its next evaluation.
    void LeafValueChanged(int slot) { Slot(slot).lasting = false; }

    // The plans list at most this many steps per node of the factory, plus a fixed
    // allowance, so that roots sharing large subgraphs cannot make them outgrow the
    // graph.
    static constexpr std::size_t stepsPerNode = 4;
    static constexpr std::size_t stepsAllowance = 4096;

private:
    enum class Kind : unsigned char {
        // A constant or a variable: its value is read into its slot.
        Leaf,
        // Computed from the children's slots by the interval form of the node's code.
        Fold,
        Binary,
        Power,
        Unary,
        // Evaluated by the node itself.
        Node
    };

    // Eight bytes: the steps are most of what a plan reads. The node itself is found
    // by its slot when a step needs it.
    struct Step {
        int slot;
        // The slots of the children follow those of the previous steps.
        unsigned short childCount;
        Kind kind;
        // The function of the interval form in the arithmetic's operation table, for
        // the kinds computed from slots: a Binary or a Unary code.
        unsigned char function;
    };

    struct Plan {
        const KOBWBExpression* root;
        std::size_t firstStep;
        std::size_t stepCount;
        std::size_t firstChild;
    };

    // The arrays of the plans grow to megabytes: they live in large blocks.
    template <class T>
    using Array = std::vector<T, LargeBlockAllocator<T>>;

    struct Frame {
        KOBWBExpression* node;
        int nextChild;
        // The children the plan lists below the node.
        int listedChildren;
    };

    // Room for the plans of a factory of that many nodes, made in one go rather than
    // by repeated growth, which would fill many more fresh pages.
    void Reserve(std::size_t nodes);
    // The slot of node, made ready when no plan listed the node before.
    int SlotOf(KOBWBExpression& node);
    // The step that computes node.
    Step StepOf(KOBWBExpression& node);
    Frame FrameOf(KOBWBExpression& node);
    // Marks node as listed by the plan being made; false when it already was.
    bool List(KOBWBExpression& node);
    // Lists the graphs of the roots of factory, each node once, in one plan whose root
    // is the first one; an empty plan when the budget refuses it, or when a node has no
    // number.
    Plan Make(const KOBWBFactory& factory, KOBWBExpression* const* roots, std::size_t count);
    // Runs a plan after the checks that every plan needs; false for an empty plan.
    bool Start(const Plan& plan, KOBWBFactory& factory, bool initialiseEnvironment);
    // Writes the values the plan just computed for the expressions into their buffers,
    // asking for the memory of the expressions ahead in advance: a caller reading them
    // one by one would wait for each in turn.
    void WriteValues(const std::vector<const KOBWBExpression*>& expressions);
    void Clear();
    // Drops every plan made for another structure of the graph.
    void Refresh(const KOBWBFactory& factory);
    void Run(const Plan& plan, KOBWBFactory& factory);

    Array<EvaluationSlot> m_slots;
    Array<KOBWBExpression*> m_nodeOfSlot;
    // For each slot, the plan of its node when the node is an equation root; -1 when
    // it has none.
    Array<int> m_planOfSlot;
    // For each slot, the number of the last listing that reached its node.
    Array<unsigned> m_listedBy;
    unsigned m_listing = 0;
    // Whether the listing met a node without a number.
    bool m_unnumbered = false;
    // Whether the last plan made was refused for the budget.
    bool m_overBudget = false;
    std::vector<Frame> m_frames;
    Array<Plan> m_plans;
    // The plans of lists of expressions, with the lists they were made for; the
    // oldest is replaced when there are listPlans of them.
    struct ListPlan {
        std::vector<const KOBWBExpression*> expressions;
        Plan plan;
    };
    static constexpr std::size_t listPlans = 4;
    std::vector<ListPlan> m_listPlans;
    std::size_t m_nextListPlan = 0;
    Array<Step> m_steps;
    Array<int> m_childSlots;
    // The factory's count of structure changes when the plans were made.
    unsigned long long m_structureVersion = 0;
};

} // namespace kobwb

#endif
