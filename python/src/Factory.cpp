#include "Factory.h"

#include "Expressions.h"
#include "Values.h"

namespace kobwbx_python {

void GiveEveryRealToUnset(KOBWBFactory& factory) {
    for (int i = 0; i < factory.GetNbOfVariables(); ++i) {
        KOBWBVariable* variable = factory.GetVariable(i);
        if (variable->GetExprValue().GetType() == KOBWBUndefinedValue)
            variable->SetExprValue(KOBWBValue(KOBWBCreateRealInterval(-KOBWBMaxReal, KOBWBMaxReal)));
    }
}

namespace {

// A new variable ranges over every real until it is given a domain.
KOBWBVariable* NewVariable(KOBWBFactory& factory) {
    KOBWBVariable* variable = factory.CreateVariable();
    if (variable) variable->SetExprValue(KOBWBValue(KOBWBCreateRealInterval(-KOBWBMaxReal, KOBWBMaxReal)));
    return variable;
}

py::object Variable(const FactoryRef& self, const py::object& name, const py::object& domain) {
    KOBWBFactory& factory = self.owner->Factory();
    KOBWBVariable* variable = nullptr;
    if (!name.is_none()) {
        const std::string text = ToText(name, "the name");
        if (text.empty() || text.find('\0') != std::string::npos)
            throw py::value_error("a variable name is a non-empty text without NUL");
        variable = self.owner->FindVariable(text);
        if (!variable) {
            variable = NewVariable(factory);
            if (variable) variable->SetName(KOBLVRString(text.c_str()));
            self.owner->NoteVariableName(text, variable);
        }
    } else {
        variable = NewVariable(factory);
        if (variable) self.owner->NoteVariableName(variable->GetName().str(), variable);
    }
    if (variable && !domain.is_none()) variable->SetExprValue(ToDomain(domain));
    return Wrap(self.owner, variable, "variable");
}

py::object Constant(const FactoryRef& self, const py::object& value) {
    if (py::isinstance<Interval>(value) || py::isinstance<py::tuple>(value)) {
        const Interval interval = ToInterval(value);
        const KOBWBRealInterval bounds =
            interval.IsEmpty() ? KOBWBReal_Nil : KOBWBCreateRealInterval(interval.lower, interval.upper);
        return Wrap(self.owner, self.owner->Factory().CreateConstant(KOBWBValue(bounds)), "constant");
    }
    return Wrap(self.owner, ToExpression(self.owner, value, "the value"), "constant");
}

EquationRef Add(const FactoryRef& self, const py::object& what, const py::object& relation, const py::object& name) {
    KOBWBFactory& factory = self.owner->Factory();
    KOBWBEquation* equation = nullptr;
    if (py::isinstance<Relation>(what)) {
        if (!relation.is_none()) throw py::type_error("a Relation carries its own relation");
        const Relation& r = what.cast<const Relation&>();
        KOBWBExpression* left = ToExpression(self.owner, r.left, "the left side");
        KOBWBExpression* right = ToExpression(self.owner, r.right, "the right side");
        equation = factory.AddEquation(left, r.type, right);
    } else if (py::isinstance<Node>(what)) {
        const KOBWBEquationType type =
            relation.is_none() ? KOBWBEqUndefined : RelationFromText(ToText(relation, "the relation"));
        equation = factory.AddEquation(ToExpression(self.owner, what, "the root"), type);
    } else {
        throw py::type_error("add() takes a Relation (x + y == 3) or an Expression, not " +
                             py::str(py::type::of(what)).cast<std::string>());
    }
    if (!equation) throw std::runtime_error("the factory made no equation");
    if (!name.is_none()) equation->SetName(KOBLVRString(ToText(name, "the name").c_str()));
    return EquationRef{self.owner, equation->GetId()};
}

py::list Equations(const FactoryRef& self) {
    KOBWBFactory& factory = self.owner->Factory();
    py::list equations;
    for (KOBWBEquation* e = factory.GetFirstEquation(); e; e = factory.GetNextEquation(e))
        equations.append(EquationRef{self.owner, e->GetId()});
    return equations;
}

py::list Variables(const FactoryRef& self) {
    KOBWBFactory& factory = self.owner->Factory();
    py::list variables;
    for (int i = 0; i < factory.GetNbOfVariables(); ++i) variables.append(Wrap(self.owner, factory.GetVariable(i), "variable"));
    return variables;
}

py::object VariableByName(const FactoryRef& self, const std::string& name) {
    KOBWBVariable* variable = self.owner->FindVariable(name);
    if (!variable) throw py::key_error("no variable named '" + name + "'");
    return Wrap(self.owner, variable, "variable");
}

void SetDomains(const FactoryRef& self, const py::dict& domains) {
    for (const auto& item : domains) {
        KOBWBVariable* variable = py::isinstance<py::str>(item.first)
                                      ? VariableByName(self, item.first.cast<std::string>()).cast<const VariableNode&>().Variable()
                                      : ToVariable(self.owner, item.first, "a key");
        variable->SetExprValue(ToDomain(item.second));
    }
}

std::string Describe(const FactoryRef& self) {
    if (!self.owner->IsOpen()) return "<kobwbx.Factory (closed)>";
    const KOBWBFactory& factory = self.owner->Factory();
    return "<kobwbx.Factory: " + std::to_string(factory.GetNbOfVariables()) + " variables, " +
           std::to_string(factory.GetNbOfEquations()) + " equations>";
}

void BindEquation(py::module_& module) {
    py::class_<EquationRef>(module, "Equation",
                            "An equation of a factory: its root stands in its relation to 0. It is found by its "
                            "id at each use; once removed (Factory.remove, the symbolic transformations), every "
                            "use raises KeyError.")
        .def_readonly("id", &EquationRef::id)
        .def_property_readonly("factory", [](const EquationRef& e) { return FactoryRef{e.owner}; })
        .def_property("name", [](const EquationRef& e) { return std::string(e.Get()->GetName().str()); },
                      [](const EquationRef& e, const std::string& name) { e.Get()->SetName(KOBLVRString(name.c_str())); })
        .def_property_readonly("relation", [](const EquationRef& e) { return std::string(KOBWBGetEquationTypeText(e.Get()->GetType())); })
        .def_property_readonly("root", [](const EquationRef& e) { return WrapOrNone(e.owner, e.Get()->GetRoot()); })
        .def_property_readonly("value",
                               [](const EquationRef& e) {
                                   KOBWBExpression* root = e.Get()->GetRoot();
                                   return root ? FromValue(root->GetValue()) : py::none();
                               },
                               "The value of the root over the current domains.")
        .def_property_readonly("exists", [](const EquationRef& e) {
            return e.owner->IsOpen() && e.owner->Factory().GetEquationById(e.id) != nullptr;
        })
        .def("__eq__", [](const EquationRef& a, const py::object& b) {
            return py::isinstance<EquationRef>(b) && b.cast<const EquationRef&>().owner == a.owner &&
                   b.cast<const EquationRef&>().id == a.id;
        })
        .def("__hash__", [](const EquationRef& e) { return py::hash(py::make_tuple(reinterpret_cast<std::uintptr_t>(e.owner.get()), e.id)); })
        .def("__str__", [](const EquationRef& e) { return KOBWBEquationPrinter::ToText(e.Get()); })
        .def("__repr__", [](const EquationRef& e) { return "Equation(" + KOBWBEquationPrinter::ToText(e.Get()) + ")"; })
        .def("_repr_mathml_", [](const EquationRef& e) { return KOBWBEquationMLPrinter::ToMathML(e.Get()); });
}

} // namespace

void BindFactory(py::module_& module) {
    py::class_<FactoryRef>(module, "Factory",
                           "Makes and owns the nodes and equations of one equation system. Every node keeps "
                           "its factory alive; close() (or leaving a with block) destroys it at once, after "
                           "which its nodes raise RuntimeError.")
        .def(py::init([] { return FactoryRef{std::make_shared<FactoryHolder>()}; }))
        .def("close", [](const FactoryRef& f) { f.owner->Close(); })
        .def_property_readonly("closed", [](const FactoryRef& f) { return !f.owner->IsOpen(); })
        .def("__enter__", [](const py::object& f) { return f; })
        .def("__exit__", [](const FactoryRef& f, const py::args&) { f.owner->Close(); })
        .def("__eq__", [](const FactoryRef& a, const py::object& b) {
            return py::isinstance<FactoryRef>(b) && b.cast<const FactoryRef&>().owner == a.owner;
        })
        .def("__hash__", [](const FactoryRef& f) { return std::hash<const void*>()(f.owner.get()); })
        .def("variable", &Variable, py::arg("name") = py::none(), py::arg("domain") = py::none(),
             "The variable of that name, made when the factory has none; its domain set when given.")
        .def("__getitem__", &VariableByName, py::arg("name"))
        .def_property_readonly("variables", &Variables, "Every variable, in index order.")
        .def("constant", &Constant, py::arg("value"),
             "A constant: int (32 bits), float, fractions.Fraction (exact), or an Interval or pair.")
        .def_property_readonly("pi", [](const FactoryRef& f) {
            return Wrap(f.owner, f.owner->Factory().CreateConstantPi(), "pi");
        })
        .def_property_readonly("degree", [](const FactoryRef& f) {
            return Wrap(f.owner, f.owner->Factory().CreateConstantDTOR(), "degree");
        }, "The exact constant Pi/180.")
        .def("add", &Add, py::arg("equation"), py::arg("relation") = py::none(), py::arg("name") = py::none(),
             "Adds an equation: a Relation (x + y == 3), or an Expression with a relation text ('=', '<=', ...; "
             "none for an equation without relation).")
        .def_property_readonly("equations", &Equations)
        .def_property_readonly("node_count", [](const FactoryRef& f) { return f.owner->Factory().GetNbOfExpressions(); },
                               "How many nodes the factory made.")
        .def("equation", [](const FactoryRef& f, int id) {
                 EquationRef e{f.owner, id};
                 e.Get();
                 return e;
             }, py::arg("id"))
        .def("remove", [](const FactoryRef& f, const EquationRef& e) {
                 if (e.owner != f.owner) throw py::value_error("the equation belongs to another factory");
                 KOBWBEquation* equation = e.Get();
                 f.owner->Factory().RemoveEquation(equation);
             }, py::arg("equation"))
        .def("set_domains", &SetDomains, py::arg("domains"),
             "Sets many domains in one call: {variable or name: domain}.")
        .def_property_readonly("errors", [](const FactoryRef& f) { return f.owner->Factory().GetEnvironment().GetError(); },
                               "The error bits of evaluations since they were last cleared: 1 an empty or "
                               "out-of-domain argument, 2 an argument of the wrong kind.")
        .def("clear_errors", [](const FactoryRef& f) { f.owner->Factory().GetEnvironment().ClearError(); })
        .def_property("tolerance", [](const FactoryRef& f) { return f.owner->Factory().GetEnvironment().GetTolerance(); },
                      [](const FactoryRef& f, double t) { f.owner->Factory().SetTolerance(t); })
        .def("__str__", [](const FactoryRef& f) { return KOBWBEquationPrinter::ToText(f.owner->Factory()); })
        .def("__repr__", &Describe)
        .def("_repr_mathml_", [](const FactoryRef& f) { return KOBWBEquationMLPrinter::ToMathML(f.owner->Factory()); })
        .def("to_json", [](const FactoryRef& f) {
            std::string out;
            KOBWBEquationMLPrinter::PrintJson(f.owner->Factory(), out);
            return out;
        })
        .def("to_dot", [](const FactoryRef& f) {
            std::string out;
            KOBWBGraphPrinter::PrintDot(f.owner->Factory(), out);
            return out;
        });
    BindEquation(module);
}

} // namespace kobwbx_python
