#include "Expressions.h"

namespace kobwbx_python {

namespace {

using Unary = KOBWBExpression* (KOBWBFactory::*)(KOBWBExpression*);
using BinaryMember = KOBWBExpression* (KOBWBFactory::*)(KOBWBExpression*, KOBWBExpression*);

void BindUnary(py::module_& module, const char* name, Unary make) {
    module.def(
        name,
        [make, name](const py::object& x) {
            const Owner owner = OwnerOf({x});
            return Wrap(owner, (owner->Factory().*make)(ToExpression(owner, x, "the argument")), name);
        },
        py::arg("x"));
}

void BindBinary(py::module_& module, const char* name, BinaryMember make, const char* first, const char* second) {
    module.def(
        name,
        [make, name](const py::object& a, const py::object& b) {
            const Owner owner = OwnerOf({a, b});
            KOBWBExpression* x = ToExpression(owner, a, "the first argument");
            KOBWBExpression* y = ToExpression(owner, b, "the second argument");
            return Wrap(owner, (owner->Factory().*make)(x, y), name);
        },
        py::arg(first), py::arg(second));
}

// min and max of two or more arguments, folded from the left.
void BindFold(py::module_& module, const char* name, BinaryMember make) {
    module.def(
        name,
        [make, name](const py::args& arguments) {
            if (arguments.size() < 2) throw py::type_error(std::string(name) + "() needs at least two arguments");
            std::vector<py::handle> handles(arguments.begin(), arguments.end());
            Owner owner;
            for (const py::handle& h : handles)
                if (py::isinstance<Node>(h)) owner = h.cast<const Node&>().owner;
            if (!owner) owner = OwnerOf({});
            KOBWBExpression* result = ToExpression(owner, handles[0], "an argument");
            for (size_t i = 1; i < handles.size(); ++i)
                result = (owner->Factory().*make)(result, ToExpression(owner, handles[i], "an argument"));
            return Wrap(owner, result, name);
        });
}

} // namespace

void BindFunctions(py::module_& module) {
    const std::pair<const char*, Unary> unary[] = {
        {"sqrt", &KOBWBFactory::CreateSqrt},   {"exp", &KOBWBFactory::CreateExp},
        {"ln", &KOBWBFactory::CreateLn},       {"log", &KOBWBFactory::CreateLog},
        {"sin", &KOBWBFactory::CreateSin},     {"cos", &KOBWBFactory::CreateCos},
        {"tan", &KOBWBFactory::CreateTan},     {"asin", &KOBWBFactory::CreateAsin},
        {"acos", &KOBWBFactory::CreateAcos},   {"atan", &KOBWBFactory::CreateAtan},
        {"sinh", &KOBWBFactory::CreateSinh},   {"cosh", &KOBWBFactory::CreateCosh},
        {"tanh", &KOBWBFactory::CreateTanh},   {"asinh", &KOBWBFactory::CreateASinh},
        {"acosh", &KOBWBFactory::CreateACosh}, {"atanh", &KOBWBFactory::CreateATanh},
        {"abs", &KOBWBFactory::CreateAbs},     {"ceil", &KOBWBFactory::CreateCeil},
        {"floor", &KOBWBFactory::CreateFloor}, {"round", &KOBWBFactory::CreateRound},
        {"trunc", &KOBWBFactory::CreateTrunc}, {"logical_not", &KOBWBFactory::CreateNot}};
    for (const auto& function : unary) BindUnary(module, function.first, function.second);

    BindBinary(module, "atan2", &KOBWBFactory::CreateAtan2, "y", "x");
    BindBinary(module, "dim", &KOBWBFactory::CreateDim, "a", "b");
    BindBinary(module, "sign", &KOBWBFactory::CreateSign, "a", "b");
    BindBinary(module, "mod", &KOBWBFactory::CreateMod, "a", "b");
    BindBinary(module, "root", &KOBWBFactory::CreateRoot, "x", "n");
    BindBinary(module, "power", &KOBWBFactory::CreatePower, "x", "exponent");
    BindFold(module, "min", &KOBWBFactory::CreateMin);
    BindFold(module, "max", &KOBWBFactory::CreateMax);

    module.def(
        "if_then_else",
        [](const py::object& condition, const py::object& a, const py::object& b) {
            const Owner owner = py::isinstance<Relation>(condition)
                                    ? OwnerOf({condition.cast<const Relation&>().left, condition.cast<const Relation&>().right})
                                    : OwnerOf({condition, a, b});
            KOBWBExpression* test = ToCondition(owner, condition, "the condition");
            KOBWBExpression* thenBranch = ToExpression(owner, a, "the then branch");
            KOBWBExpression* elseBranch = ToExpression(owner, b, "the else branch");
            return Wrap(owner, owner->Factory().CreateIfThenElse(test, thenBranch, elseBranch), "if_then_else");
        },
        py::arg("condition"), py::arg("then"), py::arg("otherwise"),
        "if condition then a else b; the condition is a Relation (x > 1), or relations joined with & and |.");
    module.def(
        "step",
        [](const py::object& x, double x0, double h0, double x1, double h1) {
            const Owner owner = OwnerOf({x});
            return Wrap(owner, owner->Factory().CreateStep(ToExpression(owner, x, "x"), x0, h0, x1, h1), "step");
        },
        py::arg("x"), py::arg("x0"), py::arg("h0"), py::arg("x1"), py::arg("h1"),
        "The step from h0 (x <= x0) to h1 (x >= x1).");
    module.def(
        "integral",
        [](const py::object& e, const py::object& x) {
            const Owner owner = OwnerOf({e});
            KOBWBExpression* integrand = ToExpression(owner, e, "the integrand");
            return Wrap(owner, owner->Factory().CreateIntegrateOperator(integrand, ToVariable(owner, x, "x")),
                        "integral");
        },
        py::arg("e"), py::arg("x"), "The node whose value is the antiderivative of e in x at the current values.");
}

} // namespace kobwbx_python
