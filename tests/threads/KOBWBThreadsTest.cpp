#include "KOBWBx.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

// Factories on several threads at once are independent: each thread parses, checks,
// converts, evaluates, differentiates, simplifies, contracts, transforms and prints its
// own system, and gets what one thread alone gets. Built with ThreadSanitizer in CI, the
// test also keeps the library's shared state (tables, first-use records) race-free.

namespace {

const char* const sketch =
    "x1 = 0 mm; y1 = 0 mm; x2 - x1 = L1; y2 = y1; L1 = 40 mm; L2 = 2 * L1;\n"
    "sqrt((x3 - x1)^2 + (y3 - y1)^2) = L2; atan2(y3 - y1, x3 - x1) = alpha;\n"
    "alpha = 30 deg; beta = Pi / 2 - alpha; h = L1 / 2; h <= y3;\n"
    "3 * x4 + 2 * x4 - x1 = (y2 + 1)^2 * 2; exp(x4 / 100) + ln(L1) * x4^0.5 = w;\n";

struct Remover {
    void operator()(KOBWBSymbolicTransformations* transformations) const { KOBRemove(transformations); }
};

// Opens the operator's protected description for the test.
struct Described : KOBWBSymbolicTransformations {
    static const KOBLVROperator::OperatorInfo& Of(KOBWBSymbolicTransformations& op) {
        return (op.*(&Described::GetOperatorInfo))();
    }
};

void AppendValue(const KOBWBValue& value, std::string& out) {
    KOBWBEquationPrinter::PrintValue(value, out);
    out += '\n';
}

// Everything one thread does with its own factory, written down.
std::string Work(const KOBLVROperator::OperatorInfo*& info) {
    std::string out;
    KOBWBModel model;
    KOBLVRIntArray ids;
    KOBWBParserMessenger messenger;
    messenger.SetEchoToStandardError(false);
    out += "errors " + std::to_string(KOBWBParser::Parse(sketch, model, ids, messenger, nullptr)) + '\n';
    out += "homogeneity " + std::to_string(KOBWBModelHomogeneity::CheckHomogeneity(model)) + '\n';

    KOBWBFactory factory;
    KOBLVRListPKOBWBVarNode nodes;
    KOBLVRListPKOBWBVariable variables;
    out += "converted " + std::to_string(model.FillFactory(factory, ids, -1, nodes, variables)) + '\n';
    const int count = factory.GetNbOfVariables();
    for (int i = 0; i < variables.Size(); ++i)
        variables[i]->SetExprValue(KOBWBValue(1.5 + i));
    for (KOBWBEquation* e = factory.GetFirstEquation(); e; e = factory.GetNextEquation(e)) {
        AppendValue(e->GetRoot()->GetValue(), out);
        KOBWBVariable* by = variables.Size() > 0 ? variables[0] : nullptr;
        if (KOBWBExpression* derivative = by ? factory.CreateDerivative(e->GetRoot(), 1, &by) : nullptr) {
            KOBWBEquationPrinter::PrintExpression(derivative, out);
            out += " = ";
            AppendValue(derivative->GetValue(), out);
        }
        if (KOBWBExpression* simplified = KOBWBPolynomialTools::Simplify(e->GetRoot())) {
            KOBWBEquationPrinter::PrintExpression(simplified, out);
            out += '\n';
        }
    }

    for (int i = 0; i < variables.Size(); ++i)
        variables[i]->SetExprValue(KOBWBValue(KOBWBRealInterval{-100, 100}));
    KOBWBContractor contractor(factory);
    out += "contraction " + std::to_string(contractor.Run()) + '\n';
    for (int i = 0; i < variables.Size(); ++i)
        AppendValue(variables[i]->GetExprValue(), out);

    std::unique_ptr<KOBWBSymbolicTransformations, Remover> transformations(
        KOBCreateWBSymbolicTransformations(0, factory));
    info = &Described::Of(*transformations);
    out += std::string("transformations ") + info->GetName().str() + " " +
           std::to_string(transformations->Run()) + '\n';
    KOBWBEquationPrinter::PrintFactory(factory, out);
    std::string ml;
    KOBWBEquationMLPrinter::PrintFactory(factory, ml);
    out += ml;
    out += "variables " + std::to_string(count) + '\n';
    return out;
}

} // namespace

TEST(KOBWBThreads, FactoriesOnSeveralThreadsAreIndependent) {
    // The threads start first, so that they also race for what the library makes on
    // first use (the operator's description among it).
    constexpr int threads = 8;
    constexpr int rounds = 3;
    std::vector<std::vector<std::string>> outputs(threads, std::vector<std::string>(rounds));
    std::vector<const KOBLVROperator::OperatorInfo*> infos(threads, nullptr);
    std::vector<std::thread> workers;
    for (int t = 0; t < threads; ++t)
        workers.emplace_back([&outputs, &infos, t]() {
            for (int r = 0; r < rounds; ++r)
                outputs[t][r] = Work(infos[t]);
        });
    for (std::thread& worker : workers)
        worker.join();
    const KOBLVROperator::OperatorInfo* info = nullptr;
    const std::string alone = Work(info);
    ASSERT_NE(alone.find("contraction 1"), std::string::npos) << alone;
    ASSERT_NE(alone.find("transformations KOBWBSymbolicTransformations"), std::string::npos) << alone;
    for (int t = 0; t < threads; ++t) {
        EXPECT_EQ(infos[t], info) << "thread " << t;
        for (int r = 0; r < rounds; ++r)
            EXPECT_EQ(outputs[t][r], alone) << "thread " << t << " round " << r;
    }
}
