#include "KobwbActions.h"
#include "KobwbCommands.h"
#include "KobwbInput.h"
#include "KobwbJson.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>

// The solver's commands: solve (one solution from the start, or every solution in the
// domains with --all) and dof (degrees of freedom and dependencies at the solution).
// Values are read and written in the model's units: lengths in mm, angles in deg.

namespace kobwb_tool {

namespace {

// Sets a start value "NAME=VALUE" (or "NAME = VALUE") in the model's units; empty
// when done, otherwise what was wrong.
std::string SetStart(KOBWBFactory& factory, const ModelSource& source, const std::string& assignment) {
    const std::size_t equals = assignment.find('=');
    if (equals == std::string::npos) return "bad start " + assignment + " (NAME = VALUE)";
    const auto trim = [](std::string text) {
        const std::size_t first = text.find_first_not_of(" \t\r");
        const std::size_t last = text.find_last_not_of(" \t\r");
        return first == std::string::npos ? std::string() : text.substr(first, last - first + 1);
    };
    const std::string name = trim(assignment.substr(0, equals));
    double value = 0.0;
    const std::string problem = ParseNumber(trim(assignment.substr(equals + 1)), value);
    if (name.empty() || !problem.empty()) return "bad start " + assignment + (problem.empty() ? "" : ": " + problem);
    KOBWBVariable* variable = factory.GetVariable(KOBLVRString(name.c_str()));
    if (!variable) return "no variable " + name + " in the model";
    variable->SetExprValue(KOBWBValue(value / source.UnitScale(name)));
    return "";
}

// Start values from the --start options: files of NAME = VALUE lines (# starts a
// comment), or NAME=VALUE themselves.
std::string ReadStarts(const Invocation& invocation, KOBWBFactory& factory, const ModelSource& source) {
    for (const std::string& start : invocation.Values("--start")) {
        if (start.find('=') != std::string::npos) {
            const std::string problem = SetStart(factory, source, start);
            if (!problem.empty()) return problem;
            continue;
        }
        std::ifstream file(start);
        if (!file) return "cannot read start file " + start;
        std::string line;
        int number = 0;
        while (std::getline(file, line)) {
            ++number;
            line = line.substr(0, line.find('#'));
            if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
            const std::string problem = SetStart(factory, source, line);
            if (!problem.empty()) return start + ":" + std::to_string(number) + ": " + problem;
        }
    }
    return "";
}

// Reads the model, gives the domains and the starts, and marks the fixed variables.
int Prepare(const Invocation& invocation, KOBWBFactory& factory, ModelSource& source, KOBWBSolver* solver) {
    // A model that does not read is bad input to a solve: exit status 2, its errors
    // written as for every command.
    if (LoadFactory(invocation.files.front(), factory, source) != exitClean) return exitUsage;
    OpenUnsetVariables(factory);
    for (const std::string& domain : invocation.Values("--domain")) {
        const std::string problem = SetDomain(factory, domain);
        if (!problem.empty()) return invocation.UsageError(problem);
    }
    const std::string problem = ReadStarts(invocation, factory, source);
    if (!problem.empty()) return invocation.UsageError(problem);
    for (const std::string& name : invocation.Values("--fix")) {
        KOBWBVariable* variable = factory.GetVariable(KOBLVRString(name.c_str()));
        if (!variable) return invocation.UsageError("no variable " + name + " in the model");
        if (solver) solver->Fix(variable);
    }
    return exitClean;
}

// An equation named by its model line and its text.
void AppendEquation(std::string& out, const ModelSource& source, const KOBWBEquation* equation, bool json) {
    const std::string named = source.NameEquation(equation);
    if (!json) {
        out += "  " + named + '\n';
        return;
    }
    const std::size_t colon = named.find(": ");
    out += "{\"line\": " + std::to_string(source.LineOf(equation)) + ", \"text\": ";
    AppendJsonString(out, source.LineOf(equation) > 0 && colon != std::string::npos ? named.substr(colon + 2) : named);
    out += '}';
}

void AppendEquations(std::string& out, const ModelSource& source, const char* title,
                     const std::vector<KOBWBEquation*>& equations, bool json) {
    if (json) {
        out += std::string(", \"") + title + "\": [";
        for (std::size_t i = 0; i < equations.size(); ++i) {
            if (i) out += ", ";
            AppendEquation(out, source, equations[i], true);
        }
        out += ']';
        return;
    }
    if (equations.empty()) return;
    out += std::string(title) + ":\n";
    for (const KOBWBEquation* equation : equations) AppendEquation(out, source, equation, false);
}

std::string Name(KOBWBVariable* variable) { return variable->GetName().str(); }

// The answer of a point solve, with the diagnosis at its end.
std::string PointAnswer(KOBWBFactory& factory, const ModelSource& source, KOBWBSolver& solver, bool json) {
    std::string out;
    const KOBWBSolverStatus status = solver.GetStatus();
    if (json) {
        out += "{\"status\": ";
        AppendJsonString(out, KOBWBGetSolverStatusText(status));
        out += ", \"iterations\": " + std::to_string(solver.GetNbOfIterations()) + ", \"residual\": ";
        AppendJsonNumber(out, solver.GetResidual());
        out += ", \"values\": {";
    } else {
        char residual[64];
        std::snprintf(residual, sizeof residual, "%.3g", solver.GetResidual());
        out += std::string("status: ") + KOBWBGetSolverStatusText(status) + "\niterations: " +
               std::to_string(solver.GetNbOfIterations()) + "\nresidual: " + residual + '\n';
    }
    // In the text answer a value within rounding of 0 next to the sketch's other values
    // (a least-squares point moves the pinned ones by 1e-17) reads as 0; --json gives
    // every value as solved.
    double largest = 0.0;
    for (int i = 0; i < factory.GetNbOfVariables(); ++i) {
        const KOBWBRealInterval value = factory.GetVariable(i)->GetExprValue().GetAsRealInterval();
        if (value.lower == value.upper && std::fabs(value.lower) < KOBWBMaxReal)
            largest = std::max(largest, std::fabs(value.lower));
    }
    bool first = true;
    for (int i = 0; i < factory.GetNbOfVariables(); ++i) {
        KOBWBVariable* variable = factory.GetVariable(i);
        const std::string name = Name(variable);
        if (!json) {
            const KOBWBRealInterval value = variable->GetExprValue().GetAsRealInterval();
            const bool nearZero = value.lower == value.upper && value.lower != 0.0 &&
                                  std::fabs(value.lower) < 1e-12 * largest;
            const std::string unit = source.UnitOf(name);
            out += name + " = " + (nearZero ? "0" + (unit.empty() ? "" : " " + unit) : source.ValueText(variable)) + '\n';
            continue;
        }
        if (!first) out += ", ";
        first = false;
        AppendJsonString(out, name);
        out += ": ";
        const KOBWBRealInterval value = variable->GetExprValue().GetAsRealInterval();
        const bool point = value.lower == value.upper && std::fabs(value.lower) < KOBWBMaxReal;
        if (point) {
            // Twelve significant digits undo the rounding of the unit conversion (60,
            // not 59.99999999999999 deg) and read back as the same number.
            char text[32];
            std::snprintf(text, sizeof text, "%.12g", value.lower * source.UnitScale(name));
            out += text;
        }
        else
            AppendJsonString(out, source.ValueText(variable));
    }
    if (json) out += "}, \"dof\": " + std::to_string(solver.GetNumericDof()) + ", \"free\": [";
    else out += "dof: " + std::to_string(solver.GetNumericDof()) + " (structural " + std::to_string(solver.GetStructuralDof()) + ")\n";
    std::string free;
    for (std::size_t i = 0; i < solver.GetFreeVariables().size(); ++i) {
        const std::string name = Name(solver.GetFreeVariables()[i]);
        if (json) {
            if (i) out += ", ";
            AppendJsonString(out, name);
        } else {
            free += (i ? " " : "") + name;
        }
    }
    if (json) out += ']';
    else if (!free.empty()) out += "free: " + free + '\n';
    AppendEquations(out, source, "redundant", solver.GetRedundantEquations(), json);
    AppendEquations(out, source, "conflicting", solver.GetConflictingEquations(), json);
    AppendEquations(out, source, "violated", solver.GetViolatedInequalities(), json);
    if (json) out += "}\n";
    return out;
}

std::string BoxText(const KOBWBSearchBox& box, const std::vector<KOBWBVariable*>& unknowns, const ModelSource& source,
                    bool json) {
    std::string out = json ? "{\"proved\": " + std::string(box.proved ? "true" : "false") + ", \"box\": {" : "";
    for (std::size_t j = 0; j < unknowns.size(); ++j) {
        const std::string name = Name(unknowns[j]);
        const double scale = source.UnitScale(name);
        const KOBWBRealInterval x = box.box[j];
        if (json) {
            if (j) out += ", ";
            AppendJsonString(out, name);
            out += ": [";
            AppendJsonNumber(out, x.lower * scale);
            out += ", ";
            AppendJsonNumber(out, x.upper * scale);
            out += ']';
            continue;
        }
        // Twelve digits for a person; a bound within rounding of 0 (the outward step
        // of an exact 0) reads as 0. --json gives the bounds exactly.
        const auto shown = [scale](double bound) { return std::fabs(bound) < 1e-300 ? 0.0 : bound * scale; };
        char text[96];
        std::snprintf(text, sizeof text, "%s%s in [%.12g, %.12g]", j ? ", " : "  ", name.c_str(), shown(x.lower),
                      shown(x.upper));
        out += text;
        const std::string unit = source.UnitOf(name);
        if (!unit.empty()) out += ' ' + unit;
    }
    return out + (json ? "}}" : "\n");
}

// Every solution in the domains, by branch and prune.
int SolveAll(const Invocation& invocation, KOBWBFactory& factory, const ModelSource& source) {
    KOBWBBranchAndPrune search(factory);
    for (const std::string& value : invocation.Values("--width")) {
        double width = 0.0;
        const std::string problem = ParseNumber(value, width);
        if (!problem.empty() || !(width > 0)) return invocation.UsageError("bad width " + value + " (a positive number)");
        search.SetMinWidth(width);
    }
    const KOBWBSearchStatus status = search.Run();
    const bool json = invocation.Flag("--json");
    if (status == KOBWBSearchNeedsBounds || status == KOBWBSearchBadArguments) {
        std::cerr << "kobwb solve: " << KOBWBGetSearchStatusText(status)
                  << (status == KOBWBSearchNeedsBounds ? ": give every unknown a --domain NAME=[LOW,HIGH]" : "") << '\n';
        return exitUsage;
    }
    std::string out;
    const auto list = [&](const char* title, const std::vector<KOBWBSearchBox>& boxes) {
        if (json) {
            out += std::string(", \"") + title + "\": [";
            for (std::size_t i = 0; i < boxes.size(); ++i) out += (i ? ", " : "") + BoxText(boxes[i], search.GetUnknowns(), source, true);
            out += ']';
            return;
        }
        out += std::string(title) + ": " + std::to_string(boxes.size()) + '\n';
        for (const KOBWBSearchBox& box : boxes) out += BoxText(box, search.GetUnknowns(), source, false);
    };
    if (json) {
        out += std::string("{\"complete\": ") + (search.IsComplete() ? "true" : "false") +
               ", \"boxes\": " + std::to_string(search.GetNbOfBoxes());
    } else {
        out += std::string("complete: ") + (search.IsComplete() ? "yes" : "no") + "\nboxes: " +
               std::to_string(search.GetNbOfBoxes()) + '\n';
    }
    list("solutions", search.GetSolutions());
    list("undecided", search.GetUndecided());
    if (json) out += "}\n";
    std::cout << out;
    return search.IsComplete() ? exitClean : exitProblems;
}

} // namespace

int Solve(const Invocation& invocation) {
    KOBWBFactory factory;
    ModelSource source;
    KOBWBSolver solver(factory);
    if (const int prepared = Prepare(invocation, factory, source, &solver)) return prepared;
    if (invocation.Flag("--all")) return SolveAll(invocation, factory, source);
    const KOBWBSolverStatus status = solver.Solve();
    solver.Diagnose();
    std::cout << PointAnswer(factory, source, solver, invocation.Flag("--json"));
    if (status == KOBWBSolverBadStart || status == KOBWBSolverNoDerivative) return exitUsage;
    return status == KOBWBSolverSolved ? exitClean : exitProblems;
}

int Dof(const Invocation& invocation) {
    KOBWBFactory factory;
    ModelSource source;
    KOBWBSolver solver(factory);
    if (const int prepared = Prepare(invocation, factory, source, &solver)) return prepared;
    solver.Solve();
    solver.Diagnose();
    const bool json = invocation.Flag("--json");
    std::string out;
    if (json) {
        out += "{\"unknowns\": " + std::to_string(solver.GetNbOfUnknowns()) + ", \"dof\": " +
               std::to_string(solver.GetNumericDof()) + ", \"structural\": " + std::to_string(solver.GetStructuralDof()) +
               ", \"rank\": " + std::to_string(solver.GetRank()) + ", \"free\": [";
        for (std::size_t i = 0; i < solver.GetFreeVariables().size(); ++i) {
            if (i) out += ", ";
            AppendJsonString(out, Name(solver.GetFreeVariables()[i]));
        }
        out += ']';
    } else {
        out += "unknowns: " + std::to_string(solver.GetNbOfUnknowns()) + "\ndof: " + std::to_string(solver.GetNumericDof()) +
               " (structural " + std::to_string(solver.GetStructuralDof()) + ")\n";
        if (!solver.GetFreeVariables().empty()) {
            out += "free:";
            for (KOBWBVariable* variable : solver.GetFreeVariables()) out += ' ' + Name(variable);
            out += '\n';
        }
    }
    AppendEquations(out, source, "over-determined", solver.GetOverDeterminedEquations(), json);
    AppendEquations(out, source, "redundant", solver.GetRedundantEquations(), json);
    AppendEquations(out, source, "conflicting", solver.GetConflictingEquations(), json);
    if (json) out += "}\n";
    std::cout << out;
    return exitClean;
}

} // namespace kobwb_tool
