#include "KobwbConflict.h"

namespace kobwb_tool {

namespace {

// Past this many equations, the equation whose revision emptied the domains is
// named alone: trying each equation left out costs a contraction per equation.
constexpr size_t largestFiltered = 60;
// Rounds of revisions of one trial; a trial that does not settle by then counts
// as not emptying the domains.
constexpr int roundsPerTrial = 200;

bool SameDomains(KOBWBFactory& factory, const std::vector<KOBWBValue>& domains) {
    for (int i = 0; i < factory.GetNbOfVariables(); ++i) {
        const KOBWBVariable* variable = factory.GetVariable(i);
        if (!variable) continue;
        const KOBWBRealInterval now = variable->GetExprValue().GetAsRealInterval();
        const KOBWBRealInterval then = domains[static_cast<size_t>(i)].GetAsRealInterval();
        if (now.lower != then.lower || now.upper != then.upper) return false;
    }
    return true;
}

// Revises the equations in turn, from the domains, until one answers that no
// solution is left (its position in equations), nothing narrows any more or the
// rounds are spent (-1).
int RevisionThatEmpties(KOBWBFactory& factory, const std::vector<KOBWBValue>& domains,
                        const std::vector<KOBWBEquation*>& equations) {
    RestoreDomains(factory, domains);
    KOBWBContractor contractor(factory);
    for (int round = 0; round < roundsPerTrial; ++round) {
        const std::vector<KOBWBValue> before = SaveDomains(factory);
        for (size_t i = 0; i < equations.size(); ++i)
            if (contractor.Revise(equations[i]) == KOBWBContractionNoSolution) return static_cast<int>(i);
        if (SameDomains(factory, before)) return -1;
    }
    return -1;
}

} // namespace

std::vector<KOBWBValue> SaveDomains(KOBWBFactory& factory) {
    std::vector<KOBWBValue> domains;
    for (int i = 0; i < factory.GetNbOfVariables(); ++i) {
        const KOBWBVariable* variable = factory.GetVariable(i);
        domains.push_back(variable ? variable->GetExprValue() : KOBWBValue());
    }
    return domains;
}

void RestoreDomains(KOBWBFactory& factory, const std::vector<KOBWBValue>& domains) {
    for (int i = 0; i < factory.GetNbOfVariables() && static_cast<size_t>(i) < domains.size(); ++i)
        if (KOBWBVariable* variable = factory.GetVariable(i)) variable->SetExprValue(domains[static_cast<size_t>(i)]);
}

std::vector<KOBWBEquation*> EquationsThatEmpty(KOBWBFactory& factory, const std::vector<KOBWBValue>& domains) {
    std::vector<KOBWBEquation*> equations;
    for (KOBWBEquation* equation = factory.GetFirstEquation(); equation; equation = factory.GetNextEquation(equation))
        equations.push_back(equation);
    const int emptied = RevisionThatEmpties(factory, domains, equations);
    if (emptied < 0) return {};
    if (equations.size() > largestFiltered) return {equations[static_cast<size_t>(emptied)]};
    // Leaves out, one at a time, each equation the others can do without.
    for (size_t i = equations.size(); i-- > 0;) {
        std::vector<KOBWBEquation*> others = equations;
        others.erase(others.begin() + static_cast<long>(i));
        if (!others.empty() && RevisionThatEmpties(factory, domains, others) >= 0) equations = std::move(others);
    }
    return equations;
}

} // namespace kobwb_tool
