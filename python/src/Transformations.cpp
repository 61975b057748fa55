#include "Transformations.h"

#include "Attached.h"

#include <vector>

namespace kobwbx_python {

namespace {

struct RemoveTransformations {
    void operator()(KOBWBSymbolicTransformations* t) const { KOBRemove(t); }
};
struct DeleteContractor {
    void operator()(KOBWBContractor* c) const { delete c; }
};

using Transformations = Attached<KOBWBSymbolicTransformations, RemoveTransformations>;
using Contractor = Attached<KOBWBContractor, DeleteContractor>;

std::unique_ptr<Transformations> MakeTransformations(const FactoryRef& factory, unsigned mode) {
    KOBWBSymbolicTransformations* made = KOBCreateWBSymbolicTransformations(0, factory.owner->Factory());
    if (!made) throw std::runtime_error("the symbolic transformations could not be made");
    made->SetMode(mode);
    return std::make_unique<Transformations>(factory.owner, made);
}

std::vector<KOBWBVariable*> VariablesOf(const Owner& owner, const py::iterable& variables) {
    std::vector<KOBWBVariable*> found;
    for (const py::handle& v : variables) found.push_back(ToVariable(owner, v, "a variable"));
    return found;
}

} // namespace

void BindTransformations(py::module_& module) {
    py::class_<Transformations>(
        module, "SymbolicTransformations",
        "Rewrites a factory's equations in place, as the mode asks (bits, combined with |): 1 mark linear nodes, "
        "2 eliminate variables through linear equations, 4 simplify each equation (removing those exactly 0), "
        "8 re-binarise n-ary nodes, 16 with 2 judge the constant inequalities. Equations it removes raise "
        "KeyError afterwards.")
        .def(py::init(&MakeTransformations), py::arg("factory"), py::arg("mode") = 2 | 4)
        .def_property("mode", [](const Transformations& t) { return t.Get().GetMode(); },
                      [](const Transformations& t, unsigned mode) { t.Get().SetMode(mode); })
        .def("restrict",
             [](const Transformations& t, const py::iterable& equations) {
                 for (const py::handle& e : equations) {
                     t.Get().SetEquationToSimplify(ToEquation(t.GetOwner(), e, "an equation")->GetId());
                 }
             },
             py::arg("equations"), "Limits the runs to these equations.")
        .def("run", [](const Transformations& t) { t.Get().Run(); })
        .def_property_readonly("inconsistent", [](const Transformations& t) { return t.Get().AreInequalitiesInconsistent(); },
                               "Whether the last run that judged inequalities (mode 2 | 16) found one that cannot hold.")
        .def("variable_expression",
             [](const Transformations& t, const py::object& x) {
                 KOBWBVariable* variable = ToVariable(t.GetOwner(), x, "x");
                 return WrapOrNone(t.GetOwner(), t.Get().GetVariableExpression(variable->GetIdx()));
             },
             py::arg("x"), "The expression the last run found for an eliminated variable; None for the others.");

    py::enum_<KOBWBContractionStatus>(module, "ContractionStatus")
        .value("NO_SOLUTION", KOBWBContractionNoSolution)
        .value("FIXED_POINT", KOBWBContractionFixedPoint)
        .value("BUDGET_SPENT", KOBWBContractionBudgetSpent);

    py::class_<Contractor>(module, "Contractor",
                           "Narrows the domains of a factory's variables with its equations (each equation "
                           "revised on its own, to a fixed point); NO_SOLUTION when a domain becomes empty.")
        .def(py::init([](const FactoryRef& factory, double ratio, long budget) {
                 if (!(ratio >= 0)) throw py::value_error("the ratio must be a non-negative number");
                 if (budget < 0) throw py::value_error("the budget must not be negative");
                 auto contractor = std::make_unique<Contractor>(factory.owner, new KOBWBContractor(factory.owner->Factory()));
                 contractor->Get().SetRatio(ratio);
                 contractor->Get().SetBudget(budget);
                 return contractor;
             }),
             py::arg("factory"), py::arg("ratio") = 0.01, py::arg("budget") = 0)
        .def("run", [](const Contractor& c) { return c.Get().Run(); }, "Propagates over every equation.")
        .def("revise",
             [](const Contractor& c, const EquationRef& e) {
                 if (e.owner != c.GetOwner()) throw py::value_error("the equation belongs to another factory");
                 return c.Get().Revise(e.Get());
             },
             py::arg("equation"))
        .def("propagate",
             [](const Contractor& c, const py::iterable& variables) {
                 const std::vector<KOBWBVariable*> changed = VariablesOf(c.GetOwner(), variables);
                 return c.Get().Propagate(static_cast<int>(changed.size()), changed.data());
             },
             py::arg("variables"), "Propagates from the equations of variables whose domains were narrowed.")
        .def_property_readonly("revisions", [](const Contractor& c) { return c.Get().GetNbOfRevisions(); });
}

} // namespace kobwbx_python
