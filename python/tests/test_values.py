"""Intervals, domains, evaluation, derivatives and the Jacobian."""

import math

import pytest

import kobwbx
from kobwbx import Interval


def test_intervals_from_pairs_points_and_their_errors():
    assert Interval(0, 2) == Interval((0, 2)) == (0, 2)
    assert Interval(0, 1) != (2, 1) and Interval(0, 1) != "a" and Interval(0, 1) != (0, 1, 2)
    assert tuple(Interval(1.5)) == (1.5, 1.5)
    assert Interval(0, 2).width == 2 and Interval(0, 2).mid == 1
    assert 1.5 in Interval(1, 2) and (1, 2) in Interval(0, 3) and 3 not in Interval(1, 2)
    assert Interval(float("-inf"), 0).lower == float("-inf")
    assert str(Interval(0, 0.5)) == "[0, 0.5]" and repr(Interval.empty()) == "Interval.empty()"
    assert repr(Interval(0.1, 1 / 3)) == "Interval(0.1, 0.3333333333333333)"
    empty = Interval.empty()
    assert empty.is_empty and empty.width == 0 and 1 not in empty and empty == Interval.empty()
    with pytest.raises(ValueError, match="inverted"):
        Interval(2, 1)
    with pytest.raises(ValueError, match="NaN"):
        Interval(math.nan, 1)
    with pytest.raises(ValueError, match="pair"):
        Interval((1, 2, 3))
    with pytest.raises(TypeError):
        Interval("a", 1)
    with pytest.raises(ValueError):
        empty.mid


def test_domains_accept_intervals_pairs_points_and_none(f, xy):
    x, y = xy
    x.domain = (0, 2)
    assert x.domain == Interval(0, 2)
    x.domain = Interval(-1, 1)
    assert x.domain == (-1, 1)
    x.domain = 1.5
    assert x.domain == 1.5
    x.domain = None
    assert x.domain == Interval(-math.inf, math.inf)
    f.set_domains({x: (1, 2), "y": 3})
    assert x.domain == (1, 2) and y.domain == 3
    for bad, error in [((2, 1), ValueError), (math.nan, ValueError), ((0, math.nan), ValueError),
                       ("wide", TypeError), ([1, 2, 3], ValueError)]:
        with pytest.raises(error):
            x.domain = bad
    assert x.domain == (1, 2), "a refused domain leaves the old one"
    with pytest.raises(KeyError):
        f.set_domains({"z": 1})


def test_evaluation_over_intervals_and_points(f, xy):
    x, y = xy
    e = (x - 1) ** 2 + kobwbx.sin(y)
    x.domain, y.domain = (0, 2), 0.5
    assert e.value.lower == pytest.approx(math.sin(0.5))         # an even power of [-1, 1]
    assert e.value.upper == pytest.approx(1 + math.sin(0.5))
    x.domain = 3.0
    assert e.value == pytest.approx(4 + math.sin(0.5))
    x.domain = (2, 3)                                          # a new domain resets the buffers
    assert e.value.lower == pytest.approx(1 + math.sin(0.5))


def test_nil_values_and_error_bits(f, xy):
    x, _ = xy
    x.domain = (-2, -1)
    bad = kobwbx.ln(x)
    assert bad.value.is_empty and f.errors & 1
    f.clear_errors()
    assert f.errors == 0
    with pytest.raises(kobwbx.EvaluationError, match="error bits 1"):
        bad.evaluate()
    assert isinstance(kobwbx.EvaluationError("m"), ArithmeticError)
    assert (x + 1).evaluate() == (-1, 0)
    x.domain = (-1, 1)
    assert (1 / x).value == Interval(-math.inf, math.inf) and f.errors == 0


def test_derivatives(f, xy):
    x, y = xy
    e = x ** 3 * kobwbx.sin(y)
    x.domain, y.domain = 2.0, 0.0
    assert e.diff(x).value == pytest.approx(0)
    assert e.diff(y).value == pytest.approx(8)
    assert e.diff(x, y).value == pytest.approx(12)        # mixed: by x, then by y
    assert e.diff(x).diff(x).value == pytest.approx(0)
    branch = kobwbx.if_then_else(x > 1, x ** 2, y)
    assert branch.diff(x).value == 4                     # x = 2 decides the condition
    x.domain = (0, 2)
    with pytest.raises(ValueError, match="no derivative"):
        branch.diff(x)
    f.add(branch == 0)
    with pytest.raises(ValueError, match="no derivative by x"):
        f.jacobian()
    with pytest.raises(TypeError, match="Variable"):
        e.diff(x + 1)
    with pytest.raises(TypeError):
        e.diff()


def test_many_expressions_and_residuals_in_one_call(f, xy):
    x, y = xy
    x.domain, y.domain = 2.0, 3.0
    shared = x * y
    values = f.evaluate([shared + 1, shared * 2, x])
    assert values == [7, 12, 2]
    f.add(x + y == 10)
    f.add(x * y <= 6)
    assert f.residuals() == [-5, 0]
    y.domain = (3, 4)
    assert f.residuals(bounds=True) == [(-5, -4), (0, 2)] and f.evaluate([x], bounds=True) == [(2, 2)]
    x.domain = (-2, -1)
    f.add(kobwbx.ln(x) == 0)
    with pytest.raises(kobwbx.EvaluationError):
        f.residuals(check=True)
    assert f.residuals(bounds=True)[2] == (math.inf, -math.inf)
    with pytest.raises(TypeError):
        f.evaluate([x, 3])


def test_jacobian_sparse_entries_and_values(f):
    x, y, z = f.variable("x", 1.0), f.variable("y", 2.0), f.variable("z", 3.0)
    f.add(x * y == 1)
    f.add(y + z ** 2 == 0)
    j = f.jacobian()
    assert j.shape == (2, 3) and len(j) == 4
    assert [(r, c) for r, c, _ in j.entries] == [(0, 0), (0, 1), (1, 1), (1, 2)]
    assert j.evaluate() == {(0, 0): 2, (0, 1): 1, (1, 1): 1, (1, 2): 6}
    assert j[0, 2] == 0 and j[1, 2].value == 6
    with pytest.raises(IndexError):
        j[2, 0]
    z.domain = (0, 1)
    assert j.values()[3] == (0, 2) and j.values(bounds=True)[:2] == [(2, 2), (1, 1)]
    only = f.jacobian(equations=f.equations[1:], variables=[z])
    assert only.shape == (1, 1) and only.evaluate() == {(0, 0): (0, 2)}
    assert [v.name for v in j.variables] == ["x", "y", "z"] and j.equations == f.equations
