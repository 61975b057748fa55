#ifndef KOBWBPointEvaluator_h
#define KOBWBPointEvaluator_h

#include "KOBWBxExport.h"

#include <algorithm>
#include <cstdint>
#include <vector>

class KOBWBExpression;
class KOBWBVariable;
namespace kobwb {
class TapeBuilder;
}

// Evaluates expressions of one factory at a point, in plain doubles, many times over:
// the residuals of a system and the entries of its Jacobian, as a Newton solver asks
// for them at every step.
//
// Compile lists the graphs of the expressions once as a tape of steps, children
// before parents. A node shared by several expressions is one step, and so is every
// repetition of the same operation on the same operands (the entries of one
// equation's Jacobian repeat its square roots, its differences and their doubles):
// steps are numbered by value. Evaluate then reads the inputs from an array and
// writes the expressions' values into another, without touching the graph, the
// nodes' buffers or the heap.
//
// The inputs are the variables given to Compile, in that order. Every other variable
// and every constant is read when compiled, and again by Refresh: a single number as
// it is, an exact fraction as its real value, a bounded interval as its midpoint.
// Operators that have no point form here (conditions, black boxes, booleans, dim,
// sign, mod, step, integrals) are evaluated by their node: the evaluator then writes
// the inputs into their variables first (SetExprValue), which is slower but gives the
// node's own value.
//
// A value that double arithmetic cannot give (a square root of a negative number, a
// division by 0) is NaN or infinite, as in C++.
class KOBWBX_API KOBWBPointEvaluator {
public:
    KOBWBPointEvaluator() = default;

    // Lists the expressions' graphs with the variables as inputs. False, with nothing
    // kept, for a null expression or variable, or a count below 0.
    bool Compile(int expressionCount, KOBWBExpression* const* expressions, int variableCount,
                 KOBWBVariable* const* variables);
    // Reads the constants and the variables that are not inputs again.
    void Refresh();
    // values[i] is the value of expression i at the inputs; the first count
    // expressions only when count is given (the tape stops after them when they were
    // listed first).
    void Evaluate(const double* inputs, double* values);
    void Evaluate(const double* inputs, double* values, int count);
    // After Evaluate with a count, values[i] of every expression at the same inputs:
    // only the steps that evaluation left out are run (a line search evaluates the
    // residuals at a trial point, then everything once the point is taken). Nothing
    // when nothing was evaluated yet.
    void EvaluateRest(double* values);

    int GetNbOfExpressions() const { return static_cast<int>(m_outputs.size()); }
    int GetNbOfInputs() const { return static_cast<int>(m_inputs.size()); }
    // Steps of the tape, constants and inputs left out.
    int GetNbOfSteps() const { return static_cast<int>(m_steps.size()); }
    // Steps that evaluating the first count expressions runs.
    int GetNbOfStepsFor(int count) const {
        return count <= 0 || m_stepsUpTo.empty()
                   ? 0
                   : static_cast<int>(m_stepsUpTo[static_cast<std::size_t>(std::min(count, GetNbOfExpressions()) - 1)]);
    }
    // Whether some step is evaluated by its node.
    bool UsesNodes() const { return m_usesNodes; }

private:
    friend class kobwb::TapeBuilder;

    // 16 bytes, so that a large system's tape is read from memory at half the cost.
    struct Step {
        std::uint8_t code;
        // Unary and binary steps: the slots of their operands, b -1 for a unary one
        // (b is the exponent of an integer power). N-ary steps: b arguments listed
        // from a in m_arguments. A step evaluated by its node: a is its place in
        // m_nodes.
        int a;
        int b;
        // The slot the step writes.
        int out;
    };
    struct Leaf {
        int slot;
        KOBWBExpression* node;
    };

    void Run(const double* inputs, std::size_t stepCount);
    void RunSteps(std::size_t first, std::size_t last);

    std::vector<KOBWBVariable*> m_inputs;
    std::vector<Leaf> m_leaves;
    std::vector<Step> m_steps;
    std::vector<int> m_arguments;
    std::vector<KOBWBExpression*> m_nodes;
    std::vector<int> m_outputs;
    // For each output, the number of steps needed up to it.
    std::vector<std::size_t> m_stepsUpTo;
    std::vector<double> m_values;
    // The steps run since the inputs were last read; -1 before the first evaluation.
    long long m_stepsRun = -1;
    bool m_usesNodes = false;
};

#endif
