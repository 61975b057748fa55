"""Classification, simplification, polynomial tools, integration, composite constructors."""

from fractions import Fraction

import pytest

import kobwbx


def test_classification_reads_the_tree_as_built(f, xy):
    x, y = xy
    assert (x / 2 + y).is_linear and not (2 * x * y).is_linear and not (x ** 1).is_linear
    assert (x * y + x ** 2).is_quadratic and not (x ** 3).is_quadratic
    assert ((x + 1) / y).is_polynomial(x) and not ((x + 1) / y).is_polynomial(y)
    assert ((x + 1) / (x - 1)).is_rational_function(x) and not (x ** 2).is_rational_function(x)
    assert (f.pi * 2).is_constant and not (x * 0).is_constant
    with pytest.raises(TypeError, match="Variable"):
        x.is_polynomial(x + 1)


def test_simplification_and_coefficients(f, xy):
    x, y = xy
    zero = (x + 1) ** 2 - x ** 2 - 2 * x - 1
    assert str(zero.simplify()) == "0"
    assert str((f.pi / 180).simplify()) == "Pi/180"
    assert [str(c) for c in ((x + 2) ** 2).coefficients(x)] == ["4", "4", "1"]
    assert [str(c) for c in (x * y + y).coefficients(x)] == ["y", "y"]
    assert kobwbx.sin(x).coefficients(x) is None
    assert (x * y).is_identical(y * x) and not (x * y).is_identical(x + y)
    assert str((x ** 2 + y).substitute(x, 3)) == "y + 9"
    assert (x ** 2).substitute(x, y + 1).is_identical(y ** 2 + 2 * y + 1)
    assert x.substitute(x, 5).value == 5


def test_univariate_polynomial_tools(f, xy):
    x, y = xy
    roots = kobwbx.real_roots(x ** 2 - 2, x, width=1e-12)
    assert len(roots) == 2 and 2 ** 0.5 in roots[1] and roots[1].width <= 1e-12
    assert kobwbx.rational_roots(4 * x ** 3 - x, x) == [Fraction(-1, 2), 0, Fraction(1, 2)]
    quotient, remainder = kobwbx.divide(x ** 3 - 1, x - 1, x)
    assert str(quotient) == "x^2 + x + 1" and str(remainder) == "0"
    assert str(kobwbx.gcd(x ** 2 - 1, x ** 2 + 2 * x + 1, x)) == "x + 1"
    assert kobwbx.resultant(x ** 2 - 1, x - 2, x) == 3
    content, factors = kobwbx.square_free(2 * (x - 1) ** 2 * (x + 2), x)
    assert content == 2 and [str(p) for p in factors] == ["x + 2", "x - 1"]
    with pytest.raises(ValueError, match="x alone"):
        kobwbx.real_roots(x * y - 1, x)
    with pytest.raises(ValueError, match="zero polynomial"):
        kobwbx.real_roots(x - x, x)
    with pytest.raises(ZeroDivisionError):
        kobwbx.divide(x, x - x, x)


def test_integration_gives_an_antiderivative_or_none(f, xy):
    x, _ = xy
    antiderivative = kobwbx.cos(2 * x).integrate(x)
    assert str(antiderivative) == "1/2*sin(2*x)"
    assert antiderivative.diff(x).simplify().is_identical(kobwbx.cos(2 * x))
    assert (kobwbx.sin(x) * kobwbx.exp(x ** 2)).integrate(x) is None
    area = kobwbx.integral(3 * x ** 2, x)
    x.domain = 2.0
    assert area.value == pytest.approx(8)


def test_composite_constructors(f, xy):
    x, y = xy
    assert str(kobwbx.determinant([[x, 1], [2, 3]])) == "3*x - 2"
    assert kobwbx.determinant([[1, 2], [3, f.constant(4)]]).value == -2
    x.domain = 2.0
    assert kobwbx.polynomial(x, [1, 2, 3]).value == 17
    assert kobwbx.piecewise_linear(x, [0, 1, 3], [0, 1, 0]).value == pytest.approx(0.5)
    assert kobwbx.cubic_spline(x, [0, 1, 2], [0, 1, 0]).value == pytest.approx(0)
    with pytest.raises(ValueError, match="square"):
        kobwbx.determinant([[x, 1], [2]])
    with pytest.raises(ValueError, match="increase"):
        kobwbx.piecewise_linear(x, [0, 0], [1, 2])
    with pytest.raises(ValueError, match="same number"):
        kobwbx.cubic_spline(x, [0, 1, 2], [1, 2])
