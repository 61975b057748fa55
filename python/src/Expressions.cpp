#include "Expressions.h"

#include "Errors.h"
#include "Values.h"

#include <functional>
#include <memory>

namespace kobwbx_python {

namespace {

using Maker = std::function<KOBWBExpression*(KOBWBFactory&, KOBWBExpression*, KOBWBExpression*)>;

py::object NotImplemented() { return py::reinterpret_borrow<py::object>(Py_NotImplemented); }

bool IsOperand(const py::handle& object) {
    if (PyBool_Check(object.ptr())) return false;
    if (py::isinstance<Node>(object) || PyLong_Check(object.ptr()) || PyFloat_Check(object.ptr())) return true;
    return py::isinstance(object, FractionType());
}

// self op other, or other op self when reflected; NotImplemented for operands of
// other types, so that Python tries the other side and then raises its TypeError.
py::object Binary(const Node& self, const py::object& other, bool reflected, const Maker& make) {
    KOBWBExpression* b = ToOperand(self.owner, other);
    if (!b) return NotImplemented();
    KOBWBExpression* a = self.Get();
    return Wrap(self.owner, reflected ? make(self.Factory(), b, a) : make(self.Factory(), a, b), "operator");
}

py::object Power(const Node& self, const py::object& exponent) {
    // A Python int exponent is the integer power the algebra expands.
    if (PyLong_Check(exponent.ptr()) && !PyBool_Check(exponent.ptr())) {
        int overflow = 0;
        const long long n = PyLong_AsLongLongAndOverflow(exponent.ptr(), &overflow);
        if (!overflow && n >= INT_MIN && n <= INT_MAX)
            return Wrap(self.owner, self.Factory().CreatePower(self.Get(), static_cast<int>(n)), "power");
    }
    return Binary(self, exponent, false, [](KOBWBFactory& f, KOBWBExpression* a, KOBWBExpression* b) {
        return f.CreatePower(a, b);
    });
}

py::object Compare(const py::object& self, const py::object& other, KOBWBEquationType type) {
    if (!IsOperand(other)) return NotImplemented();
    return py::cast(Relation{self, type, other});
}

bool SameNode(const py::handle& a, const py::handle& b) {
    if (!py::isinstance<Node>(a) || !py::isinstance<Node>(b)) return false;
    const Node& x = a.cast<const Node&>();
    const Node& y = b.cast<const Node&>();
    return x.owner == y.owner && x.expression == y.expression;
}

std::string SideText(const py::handle& side) {
    if (py::isinstance<Node>(side)) return KOBWBEquationPrinter::ToText(side.cast<const Node&>().Get());
    return py::str(side).cast<std::string>();
}

std::string RelationText(const Relation& relation) {
    return SideText(relation.left) + " " + KOBWBGetEquationTypeText(relation.type) + " " + SideText(relation.right);
}

// The comparison node of a relation, for conditions.
KOBWBExpression* ComparisonNode(const Owner& owner, const Relation& relation) {
    KOBWBExpression* a = ToExpression(owner, relation.left, "the left side");
    KOBWBExpression* b = ToExpression(owner, relation.right, "the right side");
    KOBWBFactory& f = owner->Factory();
    switch (relation.type) {
    case KOBWBEqEqual: return f.CreateEqual(a, b);
    case KOBWBEqNotEqual: return f.CreateNotEqual(a, b);
    case KOBWBEqLessEqual: return f.CreateLessEqual(a, b);
    case KOBWBEqLess: return f.CreateLess(a, b);
    case KOBWBEqGreaterEqual: return f.CreateGreaterEqual(a, b);
    case KOBWBEqGreater: return f.CreateGreater(a, b);
    default: throw py::value_error("this relation has no comparison node");
    }
}

Owner RelationOwner(const Relation& relation) { return OwnerOf({relation.left, relation.right}); }

// The factory of a condition operand: a Relation's or an Expression's.
Owner ConditionOwner(const py::handle& object) {
    if (py::isinstance<Relation>(object)) return RelationOwner(object.cast<const Relation&>());
    return OwnerOf({object});
}

py::object Logical(const py::object& a, const py::object& b, bool conjunction) {
    if (!py::isinstance<Relation>(b) && !py::isinstance<Node>(b)) return NotImplemented();
    const Owner owner = ConditionOwner(a);
    KOBWBExpression* x = ToCondition(owner, a, "the left operand");
    KOBWBExpression* y = ToCondition(owner, b, "the right operand");
    KOBWBFactory& f = owner->Factory();
    return Wrap(owner, conjunction ? f.CreateAnd(x, y) : f.CreateOr(x, y), conjunction ? "and" : "or");
}

template <class Class> void BindArithmetic(Class& node) {
    const auto add = [](KOBWBFactory& f, KOBWBExpression* a, KOBWBExpression* b) { return f.CreateSum(a, b); };
    const auto sub = [](KOBWBFactory& f, KOBWBExpression* a, KOBWBExpression* b) { return f.CreateSub(a, b); };
    const auto mul = [](KOBWBFactory& f, KOBWBExpression* a, KOBWBExpression* b) { return f.CreateProduct(a, b); };
    const auto div = [](KOBWBFactory& f, KOBWBExpression* a, KOBWBExpression* b) { return f.CreateQuotient(a, b); };
    const auto pow = [](KOBWBFactory& f, KOBWBExpression* a, KOBWBExpression* b) { return f.CreatePower(a, b); };
    node.def("__add__", [add](const Node& s, const py::object& o) { return Binary(s, o, false, add); })
        .def("__radd__", [add](const Node& s, const py::object& o) { return Binary(s, o, true, add); })
        .def("__sub__", [sub](const Node& s, const py::object& o) { return Binary(s, o, false, sub); })
        .def("__rsub__", [sub](const Node& s, const py::object& o) { return Binary(s, o, true, sub); })
        .def("__mul__", [mul](const Node& s, const py::object& o) { return Binary(s, o, false, mul); })
        .def("__rmul__", [mul](const Node& s, const py::object& o) { return Binary(s, o, true, mul); })
        .def("__truediv__", [div](const Node& s, const py::object& o) { return Binary(s, o, false, div); })
        .def("__rtruediv__", [div](const Node& s, const py::object& o) { return Binary(s, o, true, div); })
        .def("__pow__", [](const Node& s, const py::object& o) { return Power(s, o); })
        .def("__rpow__", [pow](const Node& s, const py::object& o) { return Binary(s, o, true, pow); })
        .def("__neg__", [](const Node& s) { return Wrap(s.owner, s.Factory().CreateOpposite(s.Get()), "negation"); })
        .def("__pos__", [](const py::object& s) { return s; })
        .def("__abs__", [](const Node& s) { return Wrap(s.owner, s.Factory().CreateAbs(s.Get()), "abs"); })
        .def("__floor__", [](const Node& s) { return Wrap(s.owner, s.Factory().CreateFloor(s.Get()), "floor"); })
        .def("__ceil__", [](const Node& s) { return Wrap(s.owner, s.Factory().CreateCeil(s.Get()), "ceil"); })
        .def("__trunc__", [](const Node& s) { return Wrap(s.owner, s.Factory().CreateTrunc(s.Get()), "trunc"); })
        .def("__round__", [](const Node& s) { return Wrap(s.owner, s.Factory().CreateRound(s.Get()), "round"); })
        .def("__eq__", [](const py::object& s, const py::object& o) { return Compare(s, o, KOBWBEqEqual); })
        .def("__ne__", [](const py::object& s, const py::object& o) { return Compare(s, o, KOBWBEqNotEqual); })
        .def("__le__", [](const py::object& s, const py::object& o) { return Compare(s, o, KOBWBEqLessEqual); })
        .def("__lt__", [](const py::object& s, const py::object& o) { return Compare(s, o, KOBWBEqLess); })
        .def("__ge__", [](const py::object& s, const py::object& o) { return Compare(s, o, KOBWBEqGreaterEqual); })
        .def("__gt__", [](const py::object& s, const py::object& o) { return Compare(s, o, KOBWBEqGreater); })
        .def("__and__", [](const py::object& s, const py::object& o) { return Logical(s, o, true); })
        .def("__or__", [](const py::object& s, const py::object& o) { return Logical(s, o, false); })
        .def("__invert__", [](const Node& s) { return Wrap(s.owner, s.Factory().CreateNot(s.Get()), "not"); });
}

py::list VariablesOf(const Node& node) {
    KOBWBVariable** present = nullptr;
    const int count = node.Get()->FindPresentVariables(present);
    const std::unique_ptr<KOBWBVariable*[]> freed(present);
    py::list variables;
    for (int i = 0; i < count; ++i) variables.append(Wrap(node.owner, present[i], "variable"));
    return variables;
}

py::object Derivative(const Node& node, const py::args& variables) {
    if (variables.empty()) throw py::type_error("diff() needs at least one variable");
    std::vector<KOBWBVariable*> by;
    for (const py::handle& v : variables) by.push_back(ToVariable(node.owner, v, "diff() argument"));
    KOBWBExpression* derivative = node.Factory().CreateDerivative(node.Get(), static_cast<int>(by.size()), by.data());
    if (!derivative)
        throw py::value_error(KOBWBEquationPrinter::ToText(node.expression) +
                              " has no derivative (a node of it has none, such as a black box without one)");
    return Wrap(node.owner, derivative, "derivative");
}

py::object Evaluate(const Node& node) {
    KOBWBFactory& factory = node.Factory();
    // Values kept in buffers would not raise their error bits again.
    factory.GetEnvironment().ClearError();
    factory.ResetBuffer();
    py::object value = FromValue(node.Get()->GetValue());
    if (const unsigned bits = factory.GetEnvironment().GetError())
        throw EvaluationFailure("evaluating " + KOBWBEquationPrinter::ToText(node.expression) + " set error bits " +
                                std::to_string(bits) +
                                ((bits & 1) ? " (an empty argument, or one outside a function's domain)" : "") +
                                ((bits & 2) ? " (an argument of a kind the function does not take)" : ""));
    return value;
}

void SetDomain(const VariableNode& variable, const py::object& domain) {
    const KOBWBValue value = ToDomain(domain);
    variable.Variable()->SetExprValue(value);
}

void BindRelation(py::module_& module) {
    py::class_<Relation>(module, "Relation",
                         "left relation right, made by comparing an Expression (x + y == 3, x <= 2). "
                         "Factory.add makes it an equation; & and | join relations into conditions for "
                         "if_then_else. Its truth value is defined only for == and != (whether both sides are "
                         "the same node), so that `x in nodes` works; other relations raise TypeError.")
        .def_readonly("lhs", &Relation::left)
        .def_readonly("rhs", &Relation::right)
        .def_property_readonly("relation", [](const Relation& r) { return std::string(KOBWBGetEquationTypeText(r.type)); })
        .def("expression", [](const Relation& r) {
                 const Owner owner = RelationOwner(r);
                 return Wrap(owner, ComparisonNode(owner, r), "comparison");
             },
             "The comparison as a boolean node (for conditions).")
        .def("__bool__",
             [](const Relation& r) {
                 if (r.type == KOBWBEqEqual) return SameNode(r.left, r.right);
                 if (r.type == KOBWBEqNotEqual) return !SameNode(r.left, r.right);
                 throw py::type_error("the relation " + RelationText(r) +
                                      " has no truth value: add it to a factory with Factory.add");
             })
        .def("__and__", [](const py::object& s, const py::object& o) { return Logical(s, o, true); })
        .def("__or__", [](const py::object& s, const py::object& o) { return Logical(s, o, false); })
        .def("__str__", &RelationText)
        .def("__repr__", [](const Relation& r) { return "Relation(" + RelationText(r) + ")"; });
}

} // namespace

KOBWBExpression* ToCondition(const Owner& owner, const py::handle& object, const char* argument) {
    if (py::isinstance<Relation>(object)) {
        const Relation& relation = object.cast<const Relation&>();
        const Owner own = RelationOwner(relation);
        if (own != owner) throw py::value_error("the condition belongs to another factory");
        return ComparisonNode(owner, relation);
    }
    if (py::isinstance<Node>(object)) return ToExpression(owner, object, argument);
    throw py::type_error(std::string(argument) + " must be a Relation or an Expression, not " +
                         py::str(py::type::of(object)).cast<std::string>());
}

void BindExpressions(py::module_& module) {
    py::class_<Node> node(module, "Expression",
                          "A node of a factory's expression graph. It keeps its factory alive; after "
                          "Factory.close() every use raises RuntimeError.");
    BindArithmetic(node);
    node.def("__hash__", [](const Node& n) { return std::hash<const void*>()(n.expression); })
        .def("same", &SameNode, py::arg("other"), "Whether other is this very node.")
        .def("equals",
             [](const Node& n, const py::object& other) {
                 if (!py::isinstance<Node>(other)) return false;
                 const Node& o = other.cast<const Node&>();
                 CheckSameFactory(n.owner, o);
                 return n.Get()->IsEqualTo(o.expression) != 0;
             },
             py::arg("other"), "Structural equality: the same tree, as built.")
        .def_property_readonly("factory", [](const Node& n) { return FactoryRef{n.owner}; })
        .def_property_readonly("type", [](const Node& n) { return std::string(KOBWBGetExpressionTypeName(n.Get()->GetType())); })
        .def_property_readonly("type_code", [](const Node& n) { return static_cast<int>(n.Get()->GetType()); })
        .def_property_readonly("children",
                               [](const Node& n) {
                                   KOBWBExpression* e = n.Get();
                                   py::tuple children(e->GetNbOfChildren());
                                   for (int i = 0; i < e->GetNbOfChildren(); ++i)
                                       children[i] = WrapOrNone(n.owner, e->GetChild(i));
                                   return children;
                               })
        .def_property_readonly("is_constant", [](const Node& n) { return n.Get()->IsConstant() != 0; })
        .def_property_readonly("variables", &VariablesOf, "The variables of the graph, in index order.")
        .def_property_readonly("value", [](const Node& n) { return FromValue(n.Get()->GetValue()); },
                               "The value over the variables' current domains (Nil values are the empty "
                               "Interval; error bits go to Factory.errors).")
        .def("evaluate", &Evaluate,
             "The value, after clearing the factory's error bits; EvaluationError when evaluation set some.")
        .def("diff", &Derivative, "The derivative by the variables, the first one first: e.diff(x), e.diff(x, y).")
        .def("__str__", [](const Node& n) { return KOBWBEquationPrinter::ToText(n.Get()); })
        .def("__repr__", [](const Node& n) {
            const bool variable = n.Get()->GetType() == KOBWBVariableType;
            return std::string(variable ? "Variable(" : "Expression(") + KOBWBEquationPrinter::ToText(n.expression) + ")";
        })
        .def("_repr_mathml_", [](const Node& n) { return KOBWBEquationMLPrinter::ToMathML(n.Get()); })
        .def("to_json", [](const Node& n) {
            std::string out;
            KOBWBEquationMLPrinter::PrintJson(n.Get(), out);
            return out;
        });

    py::class_<VariableNode, Node>(module, "Variable", "A variable of a factory: a leaf whose value is its domain.")
        .def_property("name", [](const VariableNode& v) { return std::string(v.Variable()->GetName().str()); },
                      [](const VariableNode& v, const std::string& name) {
                          if (name.find('\0') != std::string::npos) throw py::value_error("a name holds no NUL");
                          v.Variable()->SetName(KOBLVRString(name.c_str()));
                          v.owner->NoteVariableName(name, nullptr);
                      })
        .def_property_readonly("index", [](const VariableNode& v) { return v.Variable()->GetIdx(); })
        .def_property("domain", [](const VariableNode& v) { return FromValue(v.Variable()->GetExprValue()); },
                      &SetDomain,
                      "The current domain: set an Interval, a (lower, upper) pair, a number (a point) or None "
                      "(every real).")
        .def_property("fixed", [](const VariableNode& v) { return v.Variable()->IsFixed() != 0; },
                      [](const VariableNode& v, bool fixed) { v.Variable()->Fix(fixed ? 1 : 0); });

    BindRelation(module);
}

} // namespace kobwbx_python
