#include "Solver.h"

#include "Attached.h"
#include "Values.h"

#include <cmath>
#include <vector>

namespace kobwbx_python {

namespace {

struct DeleteSolver {
    void operator()(KOBWBSolver* solver) const { delete solver; }
};

using Solver = Attached<KOBWBSolver, DeleteSolver>;

py::list Equations(const Owner& owner, const std::vector<KOBWBEquation*>& equations) {
    py::list list;
    for (KOBWBEquation* equation : equations) list.append(py::cast(EquationRef{owner, equation->GetId()}));
    return list;
}

py::list Variables(const Owner& owner, const std::vector<KOBWBVariable*>& variables) {
    py::list list;
    for (KOBWBVariable* variable : variables) list.append(Wrap(owner, variable, "a variable"));
    return list;
}

py::list Boxes(const std::vector<KOBWBSearchBox>& boxes) {
    py::list list;
    for (const KOBWBSearchBox& box : boxes) {
        py::list intervals;
        for (const KOBWBRealInterval& x : box.box) intervals.append(py::cast(Interval{x.lower, x.upper}));
        list.append(intervals);
    }
    return list;
}

} // namespace

void BindSolver(py::module_& module) {
    py::enum_<KOBWBSolverStatus>(module, "SolverStatus")
        .value("SOLVED", KOBWBSolverSolved)
        .value("NOT_CONVERGED", KOBWBSolverNotConverged)
        .value("INCONSISTENT", KOBWBSolverInconsistent)
        .value("NO_EQUATIONS", KOBWBSolverNoEquations)
        .value("BAD_START", KOBWBSolverBadStart)
        .value("NO_DERIVATIVE", KOBWBSolverNoDerivative);

    py::enum_<KOBWBSolverPresolve>(module, "Presolve", "How a solve prepares the system before its Newton steps.")
        .value("NONE", KOBWBPresolveNone)
        .value("TRANSFORMATIONS", KOBWBPresolveTransformations)
        .value("CONTRACTOR", KOBWBPresolveContractor);

    py::class_<Solver>(module, "Solver",
                       "Moves the factory's variables from their current values until its equalities hold, "
                       "with the least change (Gauss-Newton, sparse), or names the equations that conflict. "
                       "Values are written back to the variables.")
        .def(py::init([](const FactoryRef& factory, double tolerance, int maxIterations) {
                 if (!(tolerance > 0)) throw py::value_error("the tolerance must be a positive number");
                 if (maxIterations < 1) throw py::value_error("max_iterations must be at least 1");
                 auto solver = std::make_unique<Solver>(factory.owner, new KOBWBSolver(factory.owner->Factory()));
                 solver->Get().SetTolerance(tolerance);
                 solver->Get().SetMaxIterations(maxIterations);
                 return solver;
             }),
             py::arg("factory"), py::arg("tolerance") = 1e-10, py::arg("max_iterations") = 100)
        .def("fix",
             [](const Solver& s, const py::object& x, bool fixed) { s.Get().Fix(ToVariable(s.GetOwner(), x, "x"), fixed); },
             py::arg("x"), py::arg("fixed") = true, "Keeps a variable at its value in this solver's solves.")
        .def("solve", [](const Solver& s) { return s.Get().Solve(); })
        .def_property(
            "presolve", [](const Solver& s) { return s.Get().GetPresolve(); },
            [](const Solver& s, KOBWBSolverPresolve presolve) { s.Get().SetPresolve(presolve); },
            "Presolve.TRANSFORMATIONS eliminates linear equalities first (the factory's equations are rewritten); "
            "Presolve.CONTRACTOR bounds the solve by the domains the contractor narrows.")
        .def("diagnose", [](const Solver& s) { s.Get().Diagnose(); },
             "Degrees of freedom, free variables, redundant and conflicting equations at the current values.")
        .def_property_readonly("status", [](const Solver& s) { return s.Get().GetStatus(); })
        .def_property_readonly("iterations", [](const Solver& s) { return s.Get().GetNbOfIterations(); })
        .def_property_readonly("residual", [](const Solver& s) { return s.Get().GetResidual(); })
        .def_property_readonly("unknowns", [](const Solver& s) { return s.Get().GetNbOfUnknowns(); })
        .def_property_readonly("dof", [](const Solver& s) { return s.Get().GetNumericDof(); })
        .def_property_readonly("structural_dof", [](const Solver& s) { return s.Get().GetStructuralDof(); })
        .def_property_readonly("rank", [](const Solver& s) { return s.Get().GetRank(); })
        .def_property_readonly("free", [](const Solver& s) { return Variables(s.GetOwner(), s.Get().GetFreeVariables()); })
        .def_property_readonly("conflicting",
                               [](const Solver& s) { return Equations(s.GetOwner(), s.Get().GetConflictingEquations()); })
        .def_property_readonly("redundant",
                               [](const Solver& s) { return Equations(s.GetOwner(), s.Get().GetRedundantEquations()); })
        .def_property_readonly("violated",
                               [](const Solver& s) { return Equations(s.GetOwner(), s.Get().GetViolatedInequalities()); });

    module.def(
        "all_solutions",
        [](const FactoryRef& factory, double width, long maxBoxes, double maxSeconds) {
            KOBWBBranchAndPrune search(factory.owner->Factory());
            search.SetMinWidth(width);
            search.SetMaxBoxes(maxBoxes);
            search.SetMaxSeconds(maxSeconds);
            const KOBWBSearchStatus status = search.Run();
            if (status == KOBWBSearchNeedsBounds) throw py::value_error("the search needs a bounded domain for every unknown");
            if (status == KOBWBSearchBadArguments)
                throw py::value_error("nothing to search: no equality, or a width or limit that is not positive");
            py::dict result;
            result["complete"] = search.IsComplete();
            result["boxes"] = search.GetNbOfBoxes();
            result["unknowns"] = Variables(factory.owner, search.GetUnknowns());
            result["solutions"] = Boxes(search.GetSolutions());
            result["undecided"] = Boxes(search.GetUndecided());
            return result;
        },
        py::arg("factory"), py::arg("width") = 1e-8, py::arg("max_boxes") = 100000, py::arg("max_seconds") = 60.0,
        "Every solution of the equalities in the unknowns' bounded domains, by branch and prune: a dict with "
        "'complete', 'boxes' (processed), 'unknowns', 'solutions' (boxes proved to hold exactly one solution, "
        "a list of Intervals in the order of 'unknowns') and 'undecided' (boxes narrower than the width, or "
        "left when a limit stopped the search).");
}

} // namespace kobwbx_python
