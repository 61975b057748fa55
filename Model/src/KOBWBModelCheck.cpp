#include "KOBWBModelCheck.h"

#include "KOBWBConstNode.h"
#include "KOBWBEqNode.h"
#include "KOBWBModel.h"
#include "KOBWBNodeWalk.h"
#include "KOBWBFunctionNames.h"
#include "KOBWBOpNode.h"
#include "KOBWBParserMessenger.h"
#include "KOBWBPrefetch.h"
#include "KOBWBUnitClass.h"
#include "KOBWBUnitSets.h"
#include "KOBWBUnitTable.h"
#include "KOBWBVarNode.h"

#include <algorithm>
#include <vector>

namespace {

const char* const unknownUnit = "semantic error, unknown unit";
const char* const inconsistentUnit = "semantic error, inconsistent unit";
const char* const invalidOperation = "semantic error, invalid operation with unit";
const char* const ambiguousPi = "semantic error, ambiguous Pi";

// What an argument may not carry.
enum class Restriction { NoUnit, NoLength };

// An argument to look at once every unit class is known.
struct ArgumentCheck {
    const KOBWBNode* argument;
    int set;
    Restriction restriction;
    // Whether the argument carries a known unit of its own, noted while the
    // node is at hand.
    bool ownUnit;
};

struct Report {
    KOBWBLocation location;
    KOBLVRString message;
};

// Whether an argument of the function must be a pure number, or only not a
// length; false when the function takes any unit.
bool GetRestriction(KOBWBExpressionType type, Restriction& restriction) {
    switch (type) {
    case KOBWBSinType:
    case KOBWBCosType:
    case KOBWBTanType:
        restriction = Restriction::NoLength;
        return true;
    case KOBWBLogType:
    case KOBWBLnType:
    case KOBWBExpType:
    case KOBWBAsinType:
    case KOBWBAcosType:
    case KOBWBAtanType:
    case KOBWBSinhType:
    case KOBWBCoshType:
    case KOBWBTanhType:
    case KOBWBAsinhType:
    case KOBWBAcoshType:
    case KOBWBAtanhType:
        restriction = Restriction::NoUnit;
        return true;
    default:
        return false;
    }
}

bool HasKnownUnit(const KOBWBNode& node) {
    return node.HasUnit() && KOBWBClassifyUnit(node.GetUnit()) != KOBWBUnitKind::Unknown;
}

// One run of the check: walks every equation once, merging the unit sets of the
// quantities that must share a class, then judges what depends on the classes.
class Checker {
public:
    explicit Checker(KOBWBModel& model) : m_model(model), m_sets(model.GetNbOfVariableNames()) {}

    std::vector<Report> Run();

private:
    void CheckEquation(const KOBWBEqNode& equation);
    // The unit set of a node whose children's sets are children[0..n-1].
    int NodeSet(const KOBWBNode& node, const int* children);
    int OperatorSet(const KOBWBOpNode& node, const int* children);
    int UnitSet(const KOBWBNode& node, int set);
    int Merge(int a, int b, const KOBWBLocation& location);
    // A constant without a unit class, such as 2 or 2 Pi.
    static bool IsPureNumber(const KOBWBNode* node, int set) {
        return node->IsConstant() && set == KOBWBUnitSets::None;
    }
    void Tell(const KOBWBLocation& location, const KOBLVRString& message) {
        m_reports.push_back(Report{location, message});
    }
    void SetVariableClasses();

    KOBWBModel& m_model;
    KOBWBUnitSets m_sets;
    std::vector<ArgumentCheck> m_argumentChecks;
    std::vector<Report> m_reports;
    std::vector<KOBWBFoldFrame> m_frames;
    std::vector<int> m_results;
};

std::vector<Report> Checker::Run() {
    for (const KOBWBEqNode* equation = m_model.GetFirstEquation(); equation;
         equation = equation->GetNext()) {
        KOBWBPrefetchNextEquation(equation);
        CheckEquation(*equation);
    }
    for (const ArgumentCheck& check : m_argumentChecks) {
        const unsigned char kinds = m_sets.GetKinds(check.set);
        const bool invalid = check.restriction == Restriction::NoUnit
                                 ? kinds != 0 || check.ownUnit
                                 : (kinds & KOBWBUnitSets::Length) != 0;
        if (invalid) Tell(check.argument->GetLocation(), invalidOperation);
    }
    SetVariableClasses();
    std::stable_sort(m_reports.begin(), m_reports.end(), [](const Report& a, const Report& b) {
        const KOBWBLocation& x = a.location;
        const KOBWBLocation& y = b.location;
        return x.GetFirstLine() != y.GetFirstLine() ? x.GetFirstLine() < y.GetFirstLine()
                                                    : x.GetFirstColumn() < y.GetFirstColumn();
    });
    return m_reports;
}

void Checker::CheckEquation(const KOBWBEqNode& equation) {
    KOBWBFoldSubtree(&equation, m_frames, m_results,
                     [this](const KOBWBNode* node, const int* children) { return NodeSet(*node, children); });
}

int Checker::NodeSet(const KOBWBNode& node, const int* children) {
    int set = KOBWBUnitSets::None;
    switch (node.GetNodeType()) {
    case KOBWBVarNodeType:
        set = static_cast<const KOBWBVarNode&>(node).GetNameIndex();
        if (set < 0) set = KOBWBUnitSets::None;
        break;
    case KOBWBOpNodeType:
        set = OperatorSet(static_cast<const KOBWBOpNode&>(node), children);
        break;
    case KOBWBEqNodeType:
        // The two sides of an equation or inequality share their class.
        if (static_cast<const KOBWBEqNode&>(node).GetRightTerm())
            Merge(children[0], children[1], node.GetLocation());
        return KOBWBUnitSets::None;
    default:
        break;
    }
    return node.HasUnit() ? UnitSet(node, set) : set;
}

int Checker::OperatorSet(const KOBWBOpNode& node, const int* children) {
    const int count = node.GetNbOfChildren();
    const KOBWBExpressionType type = node.GetType();
    if (type == KOBWBBlackBoxType && !node.GetBlackBox())
        Tell(node.GetLocation(), "semantic error, unknown function " + node.GetCalledName());
    // Step's arguments are not counted (minimum 0).
    const KOBWBFunctionName* function = KOBWBFindWrittenFunction(type);
    if (function && function->minimum > 0 &&
        (count < function->minimum || (function->maximum >= 0 && count > function->maximum))) {
        Tell(node.GetLocation(), KOBLVRString("semantic error, wrong number of arguments for ") + function->name);
        return KOBWBUnitSets::None;
    }
    Restriction restriction;
    if (GetRestriction(type, restriction))
        for (int i = 0; i < count; ++i)
            m_argumentChecks.push_back(ArgumentCheck{node.GetChild(i + 1), children[i], restriction,
                                                     HasKnownUnit(*node.GetChild(i + 1))});
    switch (KOBWBUnitFlowOf(type)) {
    case KOBWBUnitFlow::First:
        return count > 0 ? children[0] : KOBWBUnitSets::None;
    case KOBWBUnitFlow::Shared: {
        int set = KOBWBUnitSets::None;
        for (int i = 0; i < count; ++i)
            set = Merge(set, children[i], node.GetLocation());
        return set;
    }
    case KOBWBUnitFlow::Other:
        break;
    }
    switch (type) {
    case KOBWBIfThenElseType:
        return count == 3 ? Merge(children[1], children[2], node.GetLocation())
                          : KOBWBUnitSets::None;
    case KOBWBEqualType:
    case KOBWBNotEqualType:
    case KOBWBLessEqualType:
        if (count == 2) Merge(children[0], children[1], node.GetLocation());
        return KOBWBUnitSets::None;
    case KOBWBProductType: {
        // A product of pure numbers and one quantity is of that quantity's class.
        int quantity = -1;
        for (int i = 0; i < count; ++i) {
            if (IsPureNumber(node.GetChild(i + 1), children[i])) continue;
            if (quantity >= 0) return KOBWBUnitSets::None;
            quantity = i;
        }
        return quantity >= 0 ? children[quantity] : KOBWBUnitSets::None;
    }
    case KOBWBQuotientType:
        return count == 2 && IsPureNumber(node.GetChild(2), children[1]) ? children[0]
                                                                         : KOBWBUnitSets::None;
    case KOBWBPowerType:
        if (count == 2)
            m_argumentChecks.push_back(ArgumentCheck{node.GetChild(2), children[1],
                                                     Restriction::NoUnit,
                                                     HasKnownUnit(*node.GetChild(2))});
        return KOBWBUnitSets::None;
    case KOBWBAtan2Type:
        if (count == 2) Merge(children[0], children[1], node.GetLocation());
        return m_sets.Add(KOBWBUnitSets::Angle);
    case KOBWBAsinType:
    case KOBWBAcosType:
    case KOBWBAtanType:
        return m_sets.Add(KOBWBUnitSets::Angle);
    default:
        return KOBWBUnitSets::None;
    }
}

int Checker::UnitSet(const KOBWBNode& node, int set) {
    switch (KOBWBClassifyUnit(node.GetUnit())) {
    case KOBWBUnitKind::Unknown:
        Tell(node.GetUnitLocation(), unknownUnit);
        return set;
    case KOBWBUnitKind::Ambiguous:
        return set;
    case KOBWBUnitKind::Distance:
        if (node.GetNodeType() == KOBWBConstNodeType &&
            static_cast<const KOBWBConstNode&>(node).IsPi())
            Tell(node.GetLocation(), ambiguousPi);
        return Merge(set, m_sets.Add(KOBWBUnitSets::Length), node.GetUnitLocation());
    case KOBWBUnitKind::Angle:
        return Merge(set, m_sets.Add(KOBWBUnitSets::Angle), node.GetUnitLocation());
    }
    return set;
}

int Checker::Merge(int a, int b, const KOBWBLocation& location) {
    bool conflict = false;
    const int set = m_sets.Merge(a, b, conflict);
    if (conflict) Tell(location, inconsistentUnit);
    return set;
}

void Checker::SetVariableClasses() {
    const KOBLVRString& distance = *KOBWBSharedUnitText(KOBWBUnitClassDistance);
    const KOBLVRString& angle = *KOBWBSharedUnitText(KOBWBUnitClassAngle);
    const KOBLVRString& inhomogeneous = *KOBWBSharedUnitText(KOBWBUnitClassInhomogeneous);
    // The class of each name, which the model sets on its occurrences.
    std::vector<const KOBLVRString*> classes(static_cast<size_t>(m_model.GetNbOfVariableNames()));
    for (size_t i = 0; i < classes.size(); ++i) {
        const unsigned char kinds = m_sets.GetKinds(static_cast<int>(i));
        if (kinds == 0) continue;
        classes[i] = kinds == KOBWBUnitSets::Length  ? &distance
                     : kinds == KOBWBUnitSets::Angle ? &angle
                                                     : &inhomogeneous;
    }
    m_model.SetUnitTypes(classes);
}

} // namespace

KOBWBModelCheck::KOBWBModelCheck(KOBWBModel& model, KOBWBParserMessenger& messenger)
    : m_model(model), m_messenger(messenger) {}

int KOBWBModelCheck::Run() {
    const std::vector<Report> reports = Checker(m_model).Run();
    for (const Report& report : reports)
        m_messenger.ReportError(&report.location, report.message);
    return static_cast<int>(reports.size());
}
