#ifndef KOBWBTapeBuilder_h
#define KOBWBTapeBuilder_h

#include "KOBWBPointEvaluator.h"
#include "KOBWBSlotTable.h"

#include "KOBWBExpressionType.h"

#include <cstdint>
#include <utility>
#include <vector>

class KOBWBExpression;
class KOBWBValue;
class KOBWBVariable;

namespace kobwb {

// Step codes: the expression type of the node, or one of these forms of it.
enum StepCode : std::uint8_t {
    IntegerPower = 100, // a ^ b with b an integer held in the step
    Square = 101,       // a * a
    ByNode = 102        // the node's own evaluation
};

// Whether the tape evaluates nodes of that type in doubles (else by the node).
bool HasPointForm(KOBWBExpressionType type);
// The point reading of a leaf's value: a number as it is, an interval by its midpoint.
double PointOf(const KOBWBValue& value);

// Writes the tape of a point evaluator: graphs walked children first, one step per
// operation, steps numbered by value (an operation repeated on the same operands takes
// the slot of the first), constants of one value in one slot.
//
// Besides graphs, a tape compiled earlier can be copied in as a pattern: its inputs
// are given slots of this tape and its steps are written again over them. A system of
// many equations of one shape (the distances of a sketch) is then compiled once per
// shape rather than once per equation.
class TapeBuilder {
public:
    // Starts the tape of evaluator, whose inputs are the variables.
    TapeBuilder(KOBWBPointEvaluator& evaluator, int variableCount, KOBWBVariable* const* variables);

    // The slot of root's value, its graph compiled where it was not; -1 for a graph
    // with a null child.
    int Graph(KOBWBExpression* root);
    // The slot of a variable that is not an input, or of a constant: read when
    // compiled and by Refresh.
    int Leaf(KOBWBExpression* node);
    // Copies pattern's steps first .. last - 1 with its inputs read from inputSlots;
    // outputSlots[k] is then the slot of pattern's output k, or -1 when a step not
    // yet copied writes it. stepSlots holds the slot here of each step of the pattern
    // copied so far over these inputs: the steps before first are read from it, and
    // the steps copied are added to it. A pattern may thus be copied in parts: the
    // steps its first outputs need with those of other patterns, the rest later.
    // The pattern has no step evaluated by its node; leafSlots caches, for each of its
    // leaves, the slot it has here (empty before the first copy of that pattern).
    void Copy(const KOBWBPointEvaluator& pattern, std::size_t first, std::size_t last, const int* inputSlots,
              std::vector<int>& leafSlots, std::vector<int>& stepSlots, std::vector<int>& outputSlots);
    // Makes the slot an output of the evaluator, the next one.
    void Output(int slot);
    // Ends the tape: the steps each output needs, the slots' room, the leaves read.
    void Finish();

private:
    using Step = KOBWBPointEvaluator::Step;

    int SlotOf(const KOBWBExpression* node) const;
    void Bind(const KOBWBExpression* node, int slot);
    int NewSlot(const KOBWBExpression* node, int step);
    int LatestOperand(const Step& step) const;
    bool SameStep(const Step& x, const Step& y) const;
    // The slot of node's step, written once per value; node may be null for a copied
    // step.
    int StepSlot(const KOBWBExpression* node, Step step);
    int ConstantSlot(double value);
    bool IsConstantSlot(int slot) const;

    KOBWBPointEvaluator& m_tape;
    int m_nextSlot;
    int m_inputCount;
    // For slots past the inputs: the step that writes it, or -1 for a leaf.
    std::vector<int> m_stepOfSlot;
    // The slots of the nodes met, by node number (nodes without a number in a hash
    // table); several nodes may share a slot.
    std::vector<int> m_slotByNumber;
    SlotTable m_unnumberedTable;
    std::vector<std::pair<const KOBWBExpression*, int>> m_unnumbered;
    SlotTable m_constants{64};
    std::vector<double> m_constantValues; // by slot - input count, for leaves
    // Steps are found again through their latest operand (the one of the largest
    // slot, constants left out: one constant such as -1 is an operand of thousands of
    // steps): each slot heads a chain of the steps whose latest operand it is, most of
    // them one or two long. Operands are mostly recent slots, so the chains are read
    // near where the tape is growing, where a hash table would miss the cache.
    std::vector<int> m_chainOf;     // by slot: the last step whose latest operand it is
    std::vector<int> m_nextInChain; // by step
    struct Frame {
        KOBWBExpression* node;
        int nextChild;
    };
    std::vector<Frame> m_frames;
    std::vector<int> m_copySlots;
};

} // namespace kobwb

#endif
