#include "KOBWBUnitConflicts.h"

#include "KOBWBEqNode.h"
#include "KOBWBExpressionType.h"
#include "KOBWBLocation.h"
#include "KOBWBModel.h"
#include "KOBWBNodeWalk.h"
#include "KOBWBOpNode.h"
#include "KOBWBUnitSets.h"
#include "KOBWBUnitClass.h"
#include "KOBWBVarNode.h"

#include <cstring>
#include <map>

namespace kobwb {

namespace {

enum class Kind { None, Length, Angle };

// What a sub-expression is, and how to speak of it.
struct Quantity {
    Kind kind = Kind::None;
    std::string what;
    // The unit that decided the kind ("mm"), empty when none did.
    std::string unit;
};

const char* KindWords(Kind kind) { return kind == Kind::Length ? "a length" : "an angle"; }

// The kind and the unit of a quantity passed on to an expression over it.
void Take(const Quantity& from, Quantity& to) {
    to.kind = from.kind;
    to.unit = from.unit;
}

Kind KindOfClass(const KOBLVRString& unitClass) {
    if (std::strcmp(unitClass.str(), KOBWBUnitClassDistance) == 0) return Kind::Length;
    if (std::strcmp(unitClass.str(), KOBWBUnitClassAngle) == 0) return Kind::Angle;
    return Kind::None;
}

class ConflictFinder {
public:
    ConflictFinder(const TextPlaces& places, std::vector<UnitConflict>& conflicts)
        : m_places(places), m_conflicts(conflicts) {}

    void Equation(const KOBWBEqNode& equation);

private:
    Quantity Leaf(const KOBWBNode& node) const;
    Quantity Operator(const KOBWBOpNode& node, const Quantity* children);
    // Where the operator between two operands is written, from 1.
    void OperatorPlace(const KOBWBOpNode& node, int right, char sign, int& line, int& column) const;
    std::string Text(const KOBWBNode& node) const;
    void Add(int line, int column, std::string detail) {
        m_conflicts.push_back({m_equation, line, column, std::move(detail)});
    }

    const TextPlaces& m_places;
    std::vector<UnitConflict>& m_conflicts;
    const KOBWBEqNode* m_equation = nullptr;
    // The kind each variable took, and the words for it ("x (mm on line 1)").
    std::map<std::string, Quantity> m_variables;
};

// The node's text when it is on one line and short, otherwise nothing.
std::string ConflictFinder::Text(const KOBWBNode& node) const {
    const KOBWBLocation& location = node.GetLocation();
    if (location.GetFirstLine() != location.GetLastLine()) return "";
    const size_t start = m_places.Offset(location.GetFirstLine(), location.GetFirstColumn());
    const size_t end = m_places.Offset(location.GetLastLine(), location.GetLastColumn());
    return end > start && end - start <= 40 ? m_places.Text().substr(start, end - start) : "";
}

Quantity ConflictFinder::Leaf(const KOBWBNode& node) const {
    if (node.GetNodeType() == KOBWBVarNodeType) {
        const std::string name = static_cast<const KOBWBVarNode&>(node).GetName().str();
        const auto found = m_variables.find(name);
        return found == m_variables.end() ? Quantity{Kind::None, name, ""} : found->second;
    }
    if (!node.HasUnit()) return {Kind::None, Text(node), ""};
    return {KindOfClass(node.GetUnitType()), Text(node), node.GetUnit().str()};
}

void ConflictFinder::OperatorPlace(const KOBWBOpNode& node, int right, char sign, int& line, int& column) const {
    const KOBWBLocation& left = node.GetChild(right - 1)->GetLocation();
    const KOBWBLocation& next = node.GetChild(right)->GetLocation();
    const size_t from = m_places.Offset(left.GetLastLine(), left.GetLastColumn());
    const size_t to = m_places.Offset(next.GetFirstLine(), next.GetFirstColumn());
    size_t at = from;
    while (at < to && (m_places.Text()[at] != sign || m_places.InComment(at))) ++at;
    if (at >= to) at = m_places.Offset(node.GetLocation().GetFirstLine(), node.GetLocation().GetFirstColumn());
    m_places.Place(at, line, column);
    ++column;
}

Quantity ConflictFinder::Operator(const KOBWBOpNode& node, const Quantity* children) {
    const int count = node.GetNbOfChildren();
    Quantity result;
    result.what = Text(node);
    const KOBWBExpressionType type = node.GetType();
    const KOBWBUnitFlow flow = KOBWBUnitFlowOf(type);
    if (flow == KOBWBUnitFlow::First) {
        if (count > 0) Take(children[0], result);
    } else if (flow == KOBWBUnitFlow::Shared || type == KOBWBIfThenElseType) {
        // An if-then-else joins its branches as a sum joins its terms.
        const char sign = type == KOBWBSumType ? '+' : type == KOBWBMinusType ? '-' : ',';
        const int first = type == KOBWBIfThenElseType ? 1 : 0;
        int decided = -1;
        for (int i = first; i < count; ++i) {
            if (children[i].kind == Kind::None) continue;
            if (decided < 0) {
                decided = i;
                continue;
            }
            if (children[i].kind == children[decided].kind) continue;
            int line = 0;
            int column = 0;
            OperatorPlace(node, i + 1, sign, line, column);
            const std::string joined = sign == ',' ? "the arguments" : std::string("'") + sign + "'";
            Add(line, column, joined + " joins " + children[decided].what + ", " + KindWords(children[decided].kind) +
                                  ", and " + children[i].what + ", " + KindWords(children[i].kind));
            break;
        }
        if (decided >= 0) Take(children[decided], result);
    } else if (type == KOBWBProductType) {
        int quantities = 0;
        for (int i = 0; i < count; ++i)
            if (children[i].kind != Kind::None) {
                Take(children[i], result);
                ++quantities;
            }
        if (quantities != 1) Take(Quantity{}, result);
    } else if (type == KOBWBQuotientType) {
        if (count == 2 && children[1].kind == Kind::None) Take(children[0], result);
    } else if (type == KOBWBAtan2Type || type == KOBWBAsinType || type == KOBWBAcosType || type == KOBWBAtanType) {
        result.kind = Kind::Angle;
    }
    // A unit written after a bracket decides.
    if (node.HasUnit() && KindOfClass(node.GetUnitType()) != Kind::None) {
        result.kind = KindOfClass(node.GetUnitType());
        result.unit = node.GetUnit().str();
    }
    return result;
}

void ConflictFinder::Equation(const KOBWBEqNode& equation) {
    m_equation = &equation;
    const KOBWBNode* sides[] = {equation.GetLeftTerm(), equation.GetRightTerm()};
    Quantity quantities[2];
    std::vector<KOBWBFoldFrame> frames;
    std::vector<Quantity> results;
    for (int side = 0; side < 2; ++side) {
        if (!sides[side]) return;
        quantities[side] =
            KOBWBFoldSubtree(sides[side], frames, results, [this](const KOBWBNode* node, const Quantity* children) {
                if (!node) return Quantity{};
                if (node->GetNodeType() == KOBWBOpNodeType)
                    return Operator(static_cast<const KOBWBOpNode&>(*node), children);
                return Leaf(*node);
            });
    }
    const int line = equation.GetLocation().GetFirstLine();
    for (int side = 0; side < 2; ++side) {
        const Quantity& mine = quantities[side];
        const Quantity& other = quantities[1 - side];
        if (sides[side]->GetNodeType() != KOBWBVarNodeType || other.kind == Kind::None) continue;
        const std::string name = static_cast<const KOBWBVarNode*>(sides[side])->GetName().str();
        const KOBWBLocation& at = sides[side]->GetLocation();
        if (mine.kind == Kind::None) {
            const std::string unit = other.unit.empty() ? KindWords(other.kind) : other.unit;
            m_variables[name] =
                Quantity{other.kind, name + " (" + unit + " on line " + std::to_string(line) + ")", other.unit};
        } else if (mine.kind != other.kind) {
            Add(at.GetFirstLine(), at.GetFirstColumn() + 1, mine.what + " is " + KindWords(mine.kind) + " but " +
                                                               other.what + " is " + KindWords(other.kind));
        }
        return;
    }
    if (quantities[0].kind != Kind::None && quantities[1].kind != Kind::None && quantities[0].kind != quantities[1].kind)
        Add(line, equation.GetLocation().GetFirstColumn() + 1,
            "the left side " + quantities[0].what + " is " + KindWords(quantities[0].kind) + " but the right side " +
                quantities[1].what + " is " + KindWords(quantities[1].kind));
}

} // namespace

std::vector<UnitConflict> FindUnitConflicts(const KOBWBModel& model, const TextPlaces& places) {
    std::vector<UnitConflict> conflicts;
    ConflictFinder finder(places, conflicts);
    for (const KOBWBEqNode* equation = model.GetFirstEquation(); equation; equation = model.GetNextEquation(equation))
        finder.Equation(*equation);
    return conflicts;
}

} // namespace kobwb
