#include "KobwbSimplification.h"

#include <memory>
#include <unordered_set>

namespace kobwb_tool {

namespace {

// Only fractions: their arithmetic is checked for overflow, while integer
// arithmetic past 32 bits saturates (a product of integer constants that the
// algebra wrote for a large integer must stay as written).
bool IsExact(const KOBWBValue& value) { return value.IsAFraction(); }

struct TransformationsDeleter {
    void operator()(KOBWBSymbolicTransformations* transformations) const { KOBRemove(transformations); }
};

} // namespace

KOBWBExpression* FoldExactConstants(KOBWBFactory& factory, KOBWBExpression* root) {
    if (!root || root->GetType() == KOBWBConstantType || root->GetType() == KOBWBVariableType) return root;
    if (root->IsConstant()) {
        KOBWBValue value;
        root->Eval(value);
        KOBWBExpression* constant = IsExact(value) ? factory.CreateConstant(value) : nullptr;
        if (constant) return constant;
    }
    std::vector<KOBWBExpression*> pending{root};
    std::unordered_set<const KOBWBExpression*> seen{root};
    while (!pending.empty()) {
        KOBWBExpression* node = pending.back();
        pending.pop_back();
        for (int i = 0; i < node->GetNbOfChildren(); ++i) {
            KOBWBExpression* child = node->GetChild(i);
            if (!child || child->GetType() == KOBWBConstantType || child->GetType() == KOBWBVariableType) continue;
            if (child->IsConstant()) {
                KOBWBValue value;
                child->Eval(value);
                if (IsExact(value)) {
                    if (KOBWBExpression* constant = factory.CreateConstant(value)) node->ReplaceChild(i, constant);
                    continue;
                }
            }
            if (seen.insert(child).second) pending.push_back(child);
        }
    }
    return root;
}

bool RunSimplify(KOBWBFactory& factory, unsigned mode, SimplifyReport& report) {
    std::unique_ptr<KOBWBSymbolicTransformations, TransformationsDeleter> transformations(
        KOBCreateWBSymbolicTransformations(0, factory));
    if (!transformations) return false;
    transformations->SetMode(mode);
    transformations->Run();
    for (KOBWBEquation* equation = factory.GetFirstEquation(); equation; equation = factory.GetNextEquation(equation))
        FoldExactConstants(factory, equation->GetRoot());
    report = SimplifyReport();
    for (int i = 0; i < factory.GetNbOfVariables(); ++i) {
        KOBWBVariable* variable = factory.GetVariable(i);
        KOBWBExpression* expression = variable ? transformations->GetVariableExpression(i) : nullptr;
        if (!expression) continue;
        report.definitions.emplace_back(variable->GetName().str(),
                                        KOBWBEquationPrinter::ToText(FoldExactConstants(factory, expression)));
    }
    report.judged = (mode & 2) != 0 && (mode & 16) != 0;
    report.inconsistent = report.judged && transformations->AreInequalitiesInconsistent();
    return true;
}

void WriteSimplifyReport(const SimplifyReport& report, std::string& out) {
    for (const auto& definition : report.definitions) out += definition.first + " := " + definition.second + '\n';
    if (report.judged)
        out += report.inconsistent ? "inequalities: inconsistent (at least one cannot hold)\n"
                                   : "inequalities: consistent as far as the constant ones tell\n";
}

} // namespace kobwb_tool
