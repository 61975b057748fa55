#include "AllocationCounter.h"
#include "KOBWBx.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

// Reads a generated sketch of 100,000 equations end to end: parsing with the
// model check that Parse runs, the homogeneity of every equation, the conversion
// into a factory, then the destruction of model and factory. Bytes per second
// are those of the model text.

namespace {

const int nbOfEquations = 100000;

// A sketch over points P<i> (coordinates P<i>_x, P<i>_y): dimensions, distances,
// angles, circles, alignments and clearances, as a dimensioning solver gets them.
// As in a drawn sketch, a constraint mostly ties a point to its neighbours
// along the outline, and now and then to a point far away.
std::string MakeSketch() {
    std::string text;
    text.reserve(static_cast<size_t>(nbOfEquations) * 48);
    text += "/* generated sketch */\n";
    char line[256];
    for (int i = 0; i < nbOfEquations; ++i) {
        const int a = i;
        const int b = i % 16 == 15 ? (i * 7919) % nbOfEquations : (i + 1 + i % 3) % nbOfEquations;
        switch (i % 8) {
        case 0:
            std::snprintf(line, sizeof line, "P%d_x - P%d_x = %d.5 mm;\n", b, a, i % 97);
            break;
        case 1:
            std::snprintf(line, sizeof line, "P%d_y = P%d_y;\n", b, a);
            break;
        case 2:
            std::snprintf(line, sizeof line, "D%d = sqrt((P%d_x - P%d_x)^2 + (P%d_y - P%d_y)^2);\n",
                          i, b, a, b, a);
            break;
        case 3:
            std::snprintf(line, sizeof line, "atan2(P%d_y - P%d_y, P%d_x - P%d_x) = A%d;\n", b, a,
                          b, a, i);
            break;
        case 4:
            std::snprintf(line, sizeof line, "A%d = %d deg;\n", i - 1, 15 + i % 60);
            break;
        case 5:
            std::snprintf(line, sizeof line, "(P%d_x - C%d_x)^2 + (P%d_y - C%d_y)^2 = R%d^2;\n", a,
                          i, a, i, i);
            break;
        case 6:
            std::snprintf(line, sizeof line, "R%d = 2.5 mm + 0.1 * D%d;\n", i - 1, i - 4);
            break;
        default:
            std::snprintf(line, sizeof line, "D%d >= 2 * R%d + 0.5 mm; /* clearance */\n", i - 5,
                          i - 2);
            break;
        }
        text += line;
    }
    return text;
}

const std::string& Sketch() {
    static const std::string sketch = MakeSketch();
    return sketch;
}

// Parses, checks homogeneity of every equation, converts the model into a
// factory; returns the error count.
int ReadModel(const char* text, FILE* file) {
    KOBWBModel model;
    KOBLVRIntArray ids;
    KOBWBParserMessenger messenger;
    const int errors = file ? KOBWBParser::Parse(file, model, ids, messenger, nullptr)
                            : KOBWBParser::Parse(text, model, ids, messenger, nullptr);
    int inhomogeneous = 0;
    for (KOBWBEqNode* equation = model.GetFirstEquation(); equation;
         equation = model.GetNextEquation(equation))
        inhomogeneous += KOBWBModelHomogeneity::CheckHomogeneity(*equation) == 1;
    benchmark::DoNotOptimize(inhomogeneous);
    KOBWBFactory factory;
    KOBLVRListPKOBWBVarNode variableNodes;
    KOBLVRListPKOBWBVariable variables;
    if (model.FillFactory(factory, ids, -1, variableNodes, variables) != nbOfEquations) return errors + 1;
    return errors;
}

void Report(benchmark::State& state, std::size_t allocationsBefore) {
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                            static_cast<int64_t>(Sketch().size()));
    state.counters["MB"] = static_cast<double>(Sketch().size()) / 1e6;
    state.counters["allocs/eq"] = benchmark::Counter(
        static_cast<double>(bench::AllocationCount() - allocationsBefore) / nbOfEquations,
        benchmark::Counter::kAvgIterations);
}

void SketchFromText(benchmark::State& state) {
    const char* text = Sketch().c_str();
    const std::size_t before = bench::AllocationCount();
    for (auto _ : state)
        if (ReadModel(text, nullptr) != 0) state.SkipWithError("the sketch has errors");
    Report(state, before);
}

void SketchFromFile(benchmark::State& state) {
    FILE* file = std::tmpfile();
    std::fwrite(Sketch().data(), 1, Sketch().size(), file);
    const std::size_t before = bench::AllocationCount();
    for (auto _ : state) {
        std::rewind(file);
        if (ReadModel(nullptr, file) != 0) state.SkipWithError("the sketch has errors");
    }
    Report(state, before);
    std::fclose(file);
}

} // namespace

BENCHMARK(SketchFromText)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(SketchFromFile)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK_MAIN();
