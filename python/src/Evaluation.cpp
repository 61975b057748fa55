#include "Evaluation.h"

#include "Errors.h"
#include "Values.h"

#include <memory>
#include <vector>

namespace kobwbx_python {

namespace {

// The entries of a Jacobian: rows are equations, columns variables, and an entry
// for every variable present in an equation's root.
struct Jacobian {
    Owner owner;
    std::vector<int> equationIds;
    std::vector<KOBWBVariable*> variables;
    std::vector<int> rows;
    std::vector<int> columns;
    std::vector<KOBWBExpression*> entries;
};

// Checking starts from clear error bits and empty buffers, so that every value
// computed raises its bits again.
void StartCheck(KOBWBFactory& factory, bool check) {
    if (!check) return;
    factory.GetEnvironment().ClearError();
    factory.ResetBuffer();
}

void CheckErrors(KOBWBFactory& factory, bool check) {
    const unsigned bits = factory.GetEnvironment().GetError();
    if (check && bits)
        throw EvaluationFailure("evaluation set error bits " + std::to_string(bits) +
                                " (1: an empty or out-of-domain argument, 2: an argument of the wrong kind)");
}

// Evaluates the nodes in one plan and gives their values in order.
py::object Read(const KOBWBValue& value, bool bounds) { return bounds ? FromValueAsBounds(value) : FromValue(value); }

py::list EvaluateNodes(KOBWBFactory& factory, const std::vector<KOBWBExpression*>& nodes, bool check, bool bounds) {
    StartCheck(factory, check);
    factory.EvaluateExpressions(static_cast<int>(nodes.size()), nodes.data());
    CheckErrors(factory, check);
    py::list values(nodes.size());
    for (size_t i = 0; i < nodes.size(); ++i) values[i] = Read(nodes[i]->GetValue(), bounds);
    return values;
}

py::list Evaluate(const FactoryRef& self, const py::iterable& expressions, bool check, bool bounds) {
    std::vector<KOBWBExpression*> nodes;
    for (const py::handle& e : expressions) {
        if (!py::isinstance<Node>(e))
            throw py::type_error("evaluate() takes Expressions, not " + py::str(py::type::of(e)).cast<std::string>());
        const Node& node = e.cast<const Node&>();
        CheckSameFactory(self.owner, node);
        nodes.push_back(node.expression);
    }
    return EvaluateNodes(self.owner->Factory(), nodes, check, bounds);
}

py::list Residuals(const FactoryRef& self, bool check, bool bounds) {
    KOBWBFactory& factory = self.owner->Factory();
    StartCheck(factory, check);
    py::list values;
    for (KOBWBEquation* e = factory.GetFirstEquation(); e; e = factory.GetNextEquation(e))
        values.append(e->GetRoot() ? Read(e->GetRoot()->GetValue(), bounds) : py::none());
    CheckErrors(factory, check);
    return values;
}

Jacobian MakeJacobian(const FactoryRef& self, const py::object& equations, const py::object& variables) {
    KOBWBFactory& factory = self.owner->Factory();
    Jacobian jacobian{self.owner, {}, {}, {}, {}, {}};
    if (equations.is_none()) {
        for (KOBWBEquation* e = factory.GetFirstEquation(); e; e = factory.GetNextEquation(e))
            jacobian.equationIds.push_back(e->GetId());
    } else {
        for (const py::handle& e : equations) {
            jacobian.equationIds.push_back(ToEquation(self.owner, e, "an equation")->GetId());
        }
    }
    if (variables.is_none()) {
        for (int i = 0; i < factory.GetNbOfVariables(); ++i) jacobian.variables.push_back(factory.GetVariable(i));
    } else {
        for (const py::handle& v : variables) jacobian.variables.push_back(ToVariable(self.owner, v, "a variable"));
    }
    // Column of each variable index.
    std::vector<int> column(static_cast<size_t>(factory.GetNbOfVariables()), -1);
    for (size_t c = 0; c < jacobian.variables.size(); ++c)
        column[static_cast<size_t>(jacobian.variables[c]->GetIdx())] = static_cast<int>(c);
    for (size_t r = 0; r < jacobian.equationIds.size(); ++r) {
        KOBWBExpression* root = factory.GetEquationById(jacobian.equationIds[r])->GetRoot();
        if (!root) continue;
        KOBWBVariable** present = nullptr;
        const int count = root->FindPresentVariables(present);
        const std::unique_ptr<KOBWBVariable*[]> freed(present);
        for (int i = 0; i < count; ++i) {
            const int c = column[static_cast<size_t>(present[i]->GetIdx())];
            if (c < 0) continue;
            KOBWBExpression* entry = factory.CreateDerivative(root, 1, &present[i]);
            if (!entry) {
                const std::string name = present[i]->GetName().str();
                throw py::value_error("equation " + std::to_string(jacobian.equationIds[r]) + " has no derivative by " +
                                      name);
            }
            jacobian.rows.push_back(static_cast<int>(r));
            jacobian.columns.push_back(c);
            jacobian.entries.push_back(entry);
        }
    }
    return jacobian;
}

py::dict JacobianValues(const Jacobian& j, bool check) {
    const py::list values = EvaluateNodes(j.owner->Factory(), j.entries, check, false);
    py::dict matrix;
    for (size_t i = 0; i < j.entries.size(); ++i) matrix[py::make_tuple(j.rows[i], j.columns[i])] = values[i];
    return matrix;
}

} // namespace

void BindEvaluation(py::module_& module) {
    py::class_<Jacobian>(module, "Jacobian",
                         "The sparse Jacobian of equations by variables: an entry (row, column) for every "
                         "variable present in an equation's root, the others being 0.")
        .def_property_readonly("shape", [](const Jacobian& j) {
            return py::make_tuple(j.equationIds.size(), j.variables.size());
        })
        .def_property_readonly("equations", [](const Jacobian& j) {
            py::list equations;
            for (int id : j.equationIds) equations.append(EquationRef{j.owner, id});
            return equations;
        })
        .def_property_readonly("variables", [](const Jacobian& j) {
            py::list variables;
            for (KOBWBVariable* v : j.variables) variables.append(Wrap(j.owner, v, "variable"));
            return variables;
        })
        .def_property_readonly("entries",
                               [](const Jacobian& j) {
                                   py::list entries;
                                   for (size_t i = 0; i < j.entries.size(); ++i)
                                       entries.append(py::make_tuple(j.rows[i], j.columns[i],
                                                                     Wrap(j.owner, j.entries[i], "entry")));
                                   return entries;
                               },
                               "The list of (row, column, derivative expression).")
        .def("__len__", [](const Jacobian& j) { return j.entries.size(); })
        .def("__getitem__",
             [](const Jacobian& j, std::pair<int, int> at) {
                 for (size_t i = 0; i < j.entries.size(); ++i)
                     if (j.rows[i] == at.first && j.columns[i] == at.second) return Wrap(j.owner, j.entries[i], "entry");
                 if (at.first < 0 || at.second < 0 || static_cast<size_t>(at.first) >= j.equationIds.size() ||
                     static_cast<size_t>(at.second) >= j.variables.size())
                     throw py::index_error("outside the Jacobian");
                 return py::object(py::int_(0));
             })
        .def("evaluate", &JacobianValues, py::arg("check") = false,
             "Every entry evaluated over the current domains in one plan: {(row, column): value}. With check, "
             "EvaluationError when evaluation set error bits.")
        .def("values",
             [](const Jacobian& j, bool check, bool bounds) {
                 return EvaluateNodes(j.owner->Factory(), j.entries, check, bounds);
             },
             py::arg("check") = false, py::arg("bounds") = false,
             "The values of the entries, in the order of entries; with bounds, numeric values as (lower, upper) "
             "pairs of floats, which are several times faster to make than Intervals.");

    auto factory = py::class_<FactoryRef>(module.attr("Factory"));
    factory
        .def("evaluate", &Evaluate, py::arg("expressions"), py::arg("check") = false, py::arg("bounds") = false,
             "The values of many expressions, evaluated together in one plan (shared nodes once). With "
             "check, the error bits are cleared first and EvaluationError raised when some are set; with "
             "bounds, numeric values come as (lower, upper) pairs of floats.")
        .def("residuals", &Residuals, py::arg("check") = false, py::arg("bounds") = false,
             "The value of every equation's root over the current domains, in equation order (check and "
             "bounds as for evaluate).")
        .def("jacobian", &MakeJacobian, py::arg("equations") = py::none(), py::arg("variables") = py::none(),
             "The Jacobian of the equations (all by default) by the variables (all, in index order, by default).");
}

} // namespace kobwbx_python
