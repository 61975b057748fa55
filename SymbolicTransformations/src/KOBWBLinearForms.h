#ifndef KOBWBLinearForms_h
#define KOBWBLinearForms_h

#include "KOBWBPolynomial.h"
#include "KOBWBTransformationPasses.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

class KOBLVRStream;
class KOBWBEquation;
class KOBWBExpression;
class KOBWBFactory;
class KOBWBPolynomialContext;
class KOBWBVariable;

namespace kobwb {

// The elimination of variables through the linear equations of a factory.
//
// A linear form is an equality whose root reads, exactly, as a sum of variables
// times rational coefficients (with powers of Pi) and a constant: no real
// coefficient, no other atom, no product of variables. The equations are taken
// first to last; each one that is a linear form when its turn comes (after the
// substitutions made so far) eliminates one of its variables, its pivot:
//   - never a fixed variable, and only one whose coefficient is a single term;
//   - the one that occurs in the fewest equations left, then the one with the
//     largest absolute coefficient, then the one of lowest index.
// The pivot's expression x = -(rest)/a is substituted into the expressions found
// earlier for other variables at once, so that those stay in terms of the variables
// that remain, and into every other equation that holds x, inside functions too,
// when that equation is next needed (its turn, or the end): all the variables it has
// lost by then are put in together, each by its expression as it then stands. The
// linear form's own equation is removed. A variable-to-equations index keeps each
// elimination to the equations that hold the variable.
class LinearForms {
public:
    // Sized for the factory's variables and equations as they are. trace, when not
    // null, receives the detail of each elimination.
    LinearForms(KOBWBFactory& factory, KOBWBPolynomialContext& context, KOBLVRStream* trace);
    ~LinearForms();

    // Takes the factory's equations from the last to the first, as the simplification
    // pass leaves them, each while what the pass made of it is still in the cache.
    // simplified, when not null, is the polynomial of an equation whose root is still
    // to be written (see UnwrittenRoots), taken (moved out) in place of reading the
    // root: that root is written, and marked, with the others.
    void Add(KOBWBEquation& equation, KOBWBPolynomial* simplified);
    // Eliminates what it can, through the equations added. Equations rewritten get
    // their new root (an equality that becomes exactly 0 is removed), handed to mark
    // as soon as it is written, while its nodes are still in the cache.
    void Run(const std::function<void(KOBWBExpression*)>& mark);
    // The expression found for the variable of that index; null where none.
    const KOBWBPolynomial* Form(int variableIndex) const;

private:
    struct Equation;
    // The place of an added equation in the factory's order, first to last.
    size_t Position(size_t added) const;
    bool Eliminate(size_t equation);
    // Puts in the expressions of the eliminated variables the equation holds.
    void Substitute(Equation& entry);
    void WriteTrace(const char* label, const KOBWBPolynomial& polynomial);

    KOBWBFactory& m_factory;
    KOBWBPolynomialContext& m_context;
    KOBLVRStream* m_trace;
    // In the order they were added, last to first.
    std::vector<Equation> m_equations;
    // Which items hold each variable, listed from both sides: an item's own list of
    // variables tells whether a variable lists it already, so each pair is listed once
    // at the cost of the item's size, which substituting into it has just paid. An item
    // that goes stays in its variables' lists, uncounted: walks skip it.
    class Occurrences {
    public:
        // Empty lists for so many variables and items.
        void Reset(size_t variables, size_t items);
        void Add(int variable, size_t item);
        // Each of the variables.
        void Add(const std::vector<KOBWBVariable*>& variables, size_t item);
        // Calls visit(item) for each item listed for the variable, gone ones included,
        // in the order they were listed. visit may list more: the walk reads the
        // storage afresh at each step.
        template <class Visit>
        void ForEachItem(int variable, Visit visit) const {
            for (int cell = m_itemsOf[static_cast<size_t>(variable)].first; cell >= 0;) {
                const Cell current = m_cells[static_cast<size_t>(cell)];
                visit(static_cast<size_t>(current.value));
                cell = current.next;
            }
        }
        // How many of them have not gone.
        size_t Count(int variable) const { return m_counts[static_cast<size_t>(variable)]; }
        // The item no longer holds the variable.
        void Uncount(int variable) { --m_counts[static_cast<size_t>(variable)]; }
        // The variable is gone: it lists nothing, and is never listed again.
        void Clear(int variable);

    private:
        // Every list is a chain of cells in one pool, in the order of its entries: a
        // list grows without moving, and all of them go at once.
        struct Cell {
            std::uint32_t value;
            std::int32_t next;
        };
        struct Chain {
            std::int32_t first = -1;
            std::int32_t last = -1;
        };
        void Append(Chain& chain, std::uint32_t value);
        std::vector<Cell> m_cells;
        // By variable, the items; by item, the variables.
        std::vector<Chain> m_itemsOf;
        std::vector<Chain> m_variablesOf;
        std::vector<size_t> m_counts;
    };
    // The equations (by their place in m_equations) and the earlier forms (by variable)
    // that hold each variable.
    Occurrences m_equationsOf;
    Occurrences m_formsOf;
    std::vector<std::unique_ptr<KOBWBPolynomial>> m_forms;
    // The equations to remove at the end of the run.
    std::vector<KOBWBEquation*> m_removed;
    // The variables of the polynomial last asked about, kept for its room.
    std::vector<KOBWBVariable*> m_variables;
};

} // namespace kobwb

#endif
