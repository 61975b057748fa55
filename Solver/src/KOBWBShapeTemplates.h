#ifndef KOBWBShapeTemplates_h
#define KOBWBShapeTemplates_h

#include "KOBWBEquationShape.h"
#include "KOBWBPointEvaluator.h"

#include <cstdint>
#include <deque>
#include <unordered_map>
#include <vector>

class KOBWBExpression;

namespace kobwb {

// One compiled tape per equation shape: the first equation met of each shape is
// differentiated by the factory (CreateDerivative, by each of its unknowns) and its
// root, the terms of its root and those derivatives are compiled into a pattern over
// its variables. Every equation of the shape is then written into the system's tape
// by copying the pattern over its own variables (TapeBuilder::Copy).
class ShapeTemplates {
public:
    struct Template {
        std::vector<std::uint64_t> key;
        // Outputs: the root, its terms (termCount), then one derivative for each
        // unknown in the order of the shape's variables.
        KOBWBPointEvaluator pattern;
        int termCount = 0;
        // The steps the root and its terms need, listed first.
        std::size_t rootSteps = 0;
        // The slots the pattern's leaves have in the system's tape.
        std::vector<int> leafSlots;
        // Whether the pattern could be made (every derivative exists, every node is
        // evaluated in doubles).
        bool usable = false;
    };

    // The template of root's shape, made at the first equation of that shape; null
    // when that shape has no usable template.
    Template* Find(const EquationShape& shape, KOBWBExpression* root);

private:
    // A deque, so that templates found earlier stay where they are.
    std::deque<Template> m_templates;
    std::unordered_map<std::uint64_t, std::vector<std::size_t>> m_byHash;
};

} // namespace kobwb

#endif
