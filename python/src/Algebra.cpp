#include "Algebra.h"

#include "Values.h"

#include <cmath>
#include <memory>
#include <vector>

namespace kobwbx_python {

namespace {

py::object ToFraction(const KOBWBRational& value) {
    const py::int_ numerator(py::reinterpret_steal<py::object>(
        PyLong_FromString(value.Numerator().ToString().c_str(), nullptr, 10)));
    const py::int_ denominator(py::reinterpret_steal<py::object>(
        PyLong_FromString(value.Denominator().ToString().c_str(), nullptr, 10)));
    return FractionType()(numerator, denominator);
}

// An expression read as a polynomial in x, for the univariate tools.
struct Univariate {
    Owner owner;
    KOBWBPolynomialContext* algebra;
    int atom;
};

Univariate UnivariateIn(const Owner& owner, const py::handle& x) {
    KOBWBVariable* variable = ToVariable(owner, x, "x");
    KOBWBPolynomialContext& algebra = owner->Algebra();
    return {owner, &algebra, algebra.GetVariableAtom(variable)};
}

KOBWBPolynomial PolynomialOf(const Univariate& u, const py::handle& e, const char* argument) {
    KOBWBPolynomial polynomial;
    u.algebra->ToPolynomial(ToExpression(u.owner, e, argument), polynomial);
    if (!KOBWBUnivariatePolynomialTools::IsUnivariate(polynomial, u.atom))
        throw py::value_error(std::string(argument) +
                              " is not a polynomial in x alone with exact rational coefficients");
    return polynomial;
}

py::object ToExpressionOf(const Univariate& u, const KOBWBPolynomial& polynomial) {
    return Wrap(u.owner, u.algebra->ToExpression(polynomial), "polynomial");
}

py::list RealRoots(const py::object& e, const py::object& x, double width) {
    const Univariate u = UnivariateIn(OwnerOf({e}), x);
    const KOBWBPolynomial p = PolynomialOf(u, e, "e");
    std::vector<KOBWBRealInterval> roots;
    if (!KOBWBUnivariatePolynomialTools::IsolateRealRoots(p, u.atom, roots))
        throw py::value_error("the zero polynomial: every number is a root");
    py::list result;
    for (KOBWBRealInterval& root : roots) {
        if (width >= 0) KOBWBUnivariatePolynomialTools::RefineRoot(p, u.atom, root, width);
        result.append(Interval{root.lower, root.upper});
    }
    return result;
}

py::list RationalRoots(const py::object& e, const py::object& x) {
    const Univariate u = UnivariateIn(OwnerOf({e}), x);
    std::vector<KOBWBRational> roots;
    if (!KOBWBUnivariatePolynomialTools::RationalRoots(PolynomialOf(u, e, "e"), u.atom, roots))
        throw py::value_error("the zero polynomial: every number is a root");
    py::list result;
    for (const KOBWBRational& root : roots) result.append(ToFraction(root));
    return result;
}

py::tuple Divide(const py::object& a, const py::object& b, const py::object& x) {
    const Univariate u = UnivariateIn(OwnerOf({a, b}), x);
    KOBWBPolynomial quotient;
    KOBWBPolynomial remainder;
    if (!KOBWBUnivariatePolynomialTools::Divide(PolynomialOf(u, a, "a"), PolynomialOf(u, b, "b"), u.atom, quotient,
                                                remainder))
        {
        PyErr_SetString(PyExc_ZeroDivisionError, "division by the zero polynomial");
        throw py::error_already_set();
    }
    return py::make_tuple(ToExpressionOf(u, quotient), ToExpressionOf(u, remainder));
}

py::object Gcd(const py::object& a, const py::object& b, const py::object& x) {
    const Univariate u = UnivariateIn(OwnerOf({a, b}), x);
    KOBWBPolynomial gcd;
    KOBWBUnivariatePolynomialTools::Gcd(PolynomialOf(u, a, "a"), PolynomialOf(u, b, "b"), u.atom, gcd);
    return ToExpressionOf(u, gcd);
}

py::object Resultant(const py::object& a, const py::object& b, const py::object& x) {
    const Univariate u = UnivariateIn(OwnerOf({a, b}), x);
    KOBWBRational resultant;
    KOBWBUnivariatePolynomialTools::Resultant(PolynomialOf(u, a, "a"), PolynomialOf(u, b, "b"), u.atom, resultant);
    return ToFraction(resultant);
}

py::tuple SquareFree(const py::object& e, const py::object& x) {
    const Univariate u = UnivariateIn(OwnerOf({e}), x);
    KOBWBRational content;
    std::vector<KOBWBPolynomial> factors;
    KOBWBUnivariatePolynomialTools::SquareFreeDecomposition(PolynomialOf(u, e, "e"), u.atom, content, factors);
    py::list expressions;
    for (const KOBWBPolynomial& factor : factors) expressions.append(ToExpressionOf(u, factor));
    return py::make_tuple(ToFraction(content), expressions);
}

std::vector<KOBWBExpression*> Operands(const Owner& owner, const py::iterable& objects, const char* argument) {
    std::vector<KOBWBExpression*> nodes;
    for (const py::handle& object : objects) nodes.push_back(ToExpression(owner, object, argument));
    return nodes;
}

std::vector<double> Numbers(const py::iterable& objects, const char* argument) {
    std::vector<double> numbers;
    for (const py::handle& object : objects) {
        const double value = py::float_(py::reinterpret_borrow<py::object>(object));
        if (std::isnan(value)) throw py::value_error(std::string(argument) + " holds NaN");
        numbers.push_back(value);
    }
    return numbers;
}

py::object Interpolation(const py::object& x, const py::iterable& xs, const py::iterable& ys, bool spline) {
    const Owner owner = OwnerOf({x});
    const std::vector<double> abscissae = Numbers(xs, "xs");
    const std::vector<double> ordinates = Numbers(ys, "ys");
    if (abscissae.size() != ordinates.size() || abscissae.size() < 2)
        throw py::value_error("xs and ys must hold the same number of points, at least two");
    for (size_t i = 1; i < abscissae.size(); ++i)
        if (!(abscissae[i - 1] < abscissae[i])) throw py::value_error("xs must increase strictly");
    KOBWBFactory& f = owner->Factory();
    KOBWBExpression* at = ToExpression(owner, x, "x");
    const int n = static_cast<int>(abscissae.size());
    return Wrap(owner,
                spline ? f.CreateCubicSpline(at, n, abscissae.data(), ordinates.data())
                       : f.CreatePiecewiseLinear(at, n, abscissae.data(), ordinates.data()),
                "interpolation");
}

py::object Determinant(const py::sequence& matrix) {
    const size_t n = py::len(matrix);
    if (n == 0) throw py::value_error("the matrix is empty");
    std::vector<py::object> cells;
    for (const py::handle& row : matrix) {
        const py::sequence r = py::reinterpret_borrow<py::sequence>(row);
        if (py::len(r) != n) throw py::value_error("the matrix must be square");
        for (const py::handle& cell : r) cells.push_back(py::reinterpret_borrow<py::object>(cell));
    }
    Owner owner;
    for (const py::object& cell : cells)
        if (py::isinstance<Node>(cell)) owner = cell.cast<const Node&>().owner;
    if (!owner) throw py::type_error("at least one entry must be an Expression (numbers alone have no factory)");
    std::vector<KOBWBExpression*> entries;
    for (const py::object& cell : cells) entries.push_back(ToExpression(owner, cell, "an entry"));
    return Wrap(owner, owner->Factory().CreateDeterminant(static_cast<int>(n), entries.data()), "determinant");
}

} // namespace

void BindAlgebra(py::module_& module) {
    auto expression = py::class_<Node>(module.attr("Expression"));
    expression
        .def_property_readonly("is_linear", [](const Node& n) { return n.Get()->IsLinear() != 0; },
                               "Degree at most 1, read from the tree as built (nothing expanded).")
        .def_property_readonly("is_quadratic", [](const Node& n) { return n.Get()->IsQuadratic() != 0; })
        .def("is_polynomial", [](const Node& n, const py::object& x) {
                 return n.Get()->IsPolynomial(ToVariable(n.owner, x, "x")) != 0;
             }, py::arg("x"))
        .def("is_rational_function", [](const Node& n, const py::object& x) {
                 return n.Get()->IsRationalFunction(ToVariable(n.owner, x, "x")) != 0;
             }, py::arg("x"))
        .def("coefficients",
             [](const Node& n, const py::object& x) -> py::object {
                 KOBWBVariable* variable = ToVariable(n.owner, x, "x");
                 int degree = 0;
                 KOBWBExpression** coefficients = nullptr;
                 if (!n.Get()->IsPolynomial(variable, degree, coefficients)) return py::none();
                 const std::unique_ptr<KOBWBExpression*[]> freed(coefficients);
                 py::list result;
                 for (int k = 0; k <= degree; ++k) result.append(WrapOrNone(n.owner, coefficients[k]));
                 return std::move(result);
             },
             py::arg("x"),
             "The coefficients c0, c1, ... of the expression as a polynomial in x, canonical; None when it is "
             "not exactly one.")
        .def("simplify", [](const Node& n) { return Wrap(n.owner, KOBWBPolynomialTools::Simplify(n.Get()), "simplify"); },
             "The canonical form: expanded, like terms collected, exact constants.")
        .def("is_identical",
             [](const Node& n, const py::object& other) {
                 return n.owner->Algebra().AreIdentical(n.Get(), ToExpression(n.owner, other, "other"));
             },
             py::arg("other"), "Whether the difference with other is exactly 0 (by algebra).")
        .def("substitute",
             [](const Node& n, const py::object& x, const py::object& value) {
                 KOBWBVariable* variable = ToVariable(n.owner, x, "x");
                 KOBWBExpression* by = ToExpression(n.owner, value, "value");
                 KOBWBExpression* root = n.Get();
                 // The root itself is never replaced: a lone variable is its value.
                 if (root == variable) return Wrap(n.owner, by, "substitute");
                 return Wrap(n.owner, n.owner->Algebra().Substitute(root, variable, by), "substitute");
             },
             py::arg("x"), py::arg("value"), "A copy with value in place of x, simplified.")
        .def("integrate",
             [](const Node& n, const py::object& x) {
                 unsigned char integrable = 0;
                 KOBWBExpression* result = KOBWBIntegration::Integrate(n.Get(), ToVariable(n.owner, x, "x"), integrable);
                 return integrable ? WrapOrNone(n.owner, result) : py::none();
             },
             py::arg("x"), "The antiderivative in x (constant 0), or None when the integrator cannot find one.");

    module.def("real_roots", &RealRoots, py::arg("e"), py::arg("x"), py::arg("width") = -1.0,
               "Intervals each holding one real root of the polynomial e in x, in increasing order; with width, "
               "each refined to at most that width (0: as narrow as doubles allow).");
    module.def("rational_roots", &RationalRoots, py::arg("e"), py::arg("x"),
               "The rational roots of the polynomial e in x, exact, as fractions.Fraction.");
    module.def("divide", &Divide, py::arg("a"), py::arg("b"), py::arg("x"), "(quotient, remainder) of a by b in x.");
    module.def("gcd", &Gcd, py::arg("a"), py::arg("b"), py::arg("x"), "The monic greatest common divisor in x.");
    module.def("resultant", &Resultant, py::arg("a"), py::arg("b"), py::arg("x"), "The resultant in x, exact.");
    module.def("square_free", &SquareFree, py::arg("e"), py::arg("x"),
               "(content, [f1, f2, ...]) with e = content f1 f2^2 ..., each fi monic and square-free.");
    module.def("determinant", &Determinant, py::arg("matrix"),
               "The determinant of a square matrix (rows of Expressions or numbers), in canonical form.");
    module.def(
        "polynomial",
        [](const py::object& x, const py::iterable& coefficients) {
            const Owner owner = OwnerOf({x});
            std::vector<KOBWBExpression*> nodes = Operands(owner, coefficients, "a coefficient");
            if (nodes.empty()) throw py::value_error("a polynomial needs at least one coefficient");
            return Wrap(owner,
                        owner->Factory().CreatePolynomial(ToExpression(owner, x, "x"), static_cast<int>(nodes.size()),
                                                          nodes.data()),
                        "polynomial");
        },
        py::arg("x"), py::arg("coefficients"), "c0 + c1 x + c2 x^2 + ... from the coefficients, lowest first.");
    module.def(
        "piecewise_linear",
        [](const py::object& x, const py::iterable& xs, const py::iterable& ys) { return Interpolation(x, xs, ys, false); },
        py::arg("x"), py::arg("xs"), py::arg("ys"));
    module.def(
        "cubic_spline",
        [](const py::object& x, const py::iterable& xs, const py::iterable& ys) { return Interpolation(x, xs, ys, true); },
        py::arg("x"), py::arg("xs"), py::arg("ys"), "The natural cubic spline through the points.");
}

} // namespace kobwbx_python
