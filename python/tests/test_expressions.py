"""Building expressions: operators, constants, functions, relations, printing."""

from fractions import Fraction

import pytest

import kobwbx


def test_operators_build_the_tree_the_formula_reads(f, xy):
    x, y = xy
    e = (x - 1) ** 2 + kobwbx.sin(y)
    assert str(e) == "(x - 1)^2 + sin(y)"
    assert e.type == "+" and len(e.children) == 2
    assert str(2 - x) == "2 - x"
    assert str(x / (y + 1)) == "x/(y + 1)"
    assert str(2 ** x) == "2^x"
    assert str(-x * y) == "-x*y" and str(-(x * y)) == "-(x*y)"
    assert str(abs(x)) == "abs(x)"
    x.domain, y.domain = 3, 0
    assert (x ** 2).value == 9
    assert (x ** 0.5).value == pytest.approx(3 ** 0.5)
    assert (1 / x).value == pytest.approx(1 / 3)


def test_python_numbers_become_exact_or_real_constants(f, xy):
    x, _ = xy
    assert f.constant(3).value == 3 and isinstance(f.constant(3).value, int)
    assert f.constant(Fraction(1, 3)).value == Fraction(1, 3)
    assert f.constant(0.1).value == 0.1
    assert f.constant((1, 2)).value == kobwbx.Interval(1, 2)
    assert str(x + Fraction(2, 3)) == "x + 2/3"
    assert (f.pi / 4).simplify().value == pytest.approx(0.7853981633974483)
    with pytest.raises(ValueError, match="32 bits"):
        x + 2 ** 40
    with pytest.raises(ValueError, match="NaN"):
        x + float("nan")
    with pytest.raises(ValueError, match="32 bits"):
        f.constant(Fraction(1, 2 ** 40))
    with pytest.raises(TypeError):
        x + True
    with pytest.raises(TypeError):
        x * "2"
    with pytest.raises(TypeError):
        f.constant(None)


def test_functions_of_the_language(f, xy):
    x, y = xy
    x.domain, y.domain = 0.5, 2.0
    cases = {
        kobwbx.sqrt(y): 2 ** 0.5, kobwbx.exp(x): 1.6487212707001282, kobwbx.ln(y): 0.6931471805599453,
        kobwbx.atan2(y, x): 1.3258176636680326, kobwbx.min(x, y, 1): 0.5, kobwbx.max(x, 3, y): 3,
        kobwbx.cos(x): 0.8775825618903728, kobwbx.tanh(x): 0.46211715726000974, kobwbx.floor(y + x): 2,
    }
    for expression, expected in cases.items():
        assert expression.value == pytest.approx(expected), str(expression)
    assert str(kobwbx.atan2(y, x)) == "atan2(y, x)"
    choice = kobwbx.if_then_else((x > 1) | (y == 2), x, y)
    assert str(choice) == "if (x > 1 or y == 2) then (x) else (y)"
    assert choice.value == 0.5
    with pytest.raises(TypeError, match="no factory"):
        kobwbx.sin(3)
    with pytest.raises(TypeError, match="at least two"):
        kobwbx.min(x)
    with pytest.raises(TypeError, match="Relation or an Expression"):
        kobwbx.if_then_else(True, x, y)


def test_relations_become_equations_and_have_truth_only_for_identity(f, xy):
    x, y = xy
    rel = (x - 1) ** 2 + y == 3
    assert isinstance(rel, kobwbx.Relation) and rel.relation == "="
    eq = f.add(rel)
    assert str(eq) == "(x - 1)^2 + y = 3;"
    assert str(f.add(x <= 3)) == "x <= 3;"
    assert f.add(3 < x).relation == ">"          # reflected: x > 3
    assert f.add(x * y, "=").relation == "="
    assert [e.id for e in f.equations] == [0, 1, 2, 3]
    assert bool(x == x) and not bool(x == y) and x in [y, x]
    assert bool(x != y) and not (x == 2)
    with pytest.raises(TypeError, match="no truth value"):
        bool(x < y)
    with pytest.raises(ValueError, match="unknown relation"):
        f.add(x, "=>")
    with pytest.raises(TypeError, match="own relation"):
        f.add(x == 1, "=")
    with pytest.raises(TypeError):
        f.add(3)


def test_nodes_hash_by_identity_and_compare_structurally(f, xy):
    x, y = xy
    a, b = x + y, x + y
    assert len({x, f["x"], y}) == 2
    assert a.equals(b) and not a.same(b) and a.same(a)
    assert not a.equals(x * y) and not a.equals(3)


def test_printing_as_model_text_and_mathml(f, xy):
    x, y = xy
    e = x - 3 / y
    assert repr(e) == "Expression(x - 3/y)" and repr(x) == "Variable(x)"
    assert e._repr_mathml_() == ('<math xmlns="http://www.w3.org/1998/Math/MathML"><mrow><mi>x</mi>'
                                 '<mo>&#x2212;</mo><mfrac><mn>3</mn><mi>y</mi></mfrac></mrow></math>')
    f.add(e == 1)
    assert str(f) == "x - 3/y = 1;\n"
    assert f._repr_mathml_().startswith('<equations count="1">')
    assert '"op": "variable"' in f.to_json() and f.to_dot().startswith("digraph")
    assert '"root"' in e.to_json()


def test_variables_by_name(f):
    x = f.variable("x", domain=(0, 1))
    assert f.variable("x").same(x) and f["x"].same(x)
    assert x.name == "x" and x.index == 0 and x.domain == (0, 1)
    unnamed = f.variable()
    assert unnamed.index == 1 and unnamed.domain == kobwbx.Interval(float("-inf"), float("inf"))
    x.name = "width"
    assert f["width"].same(x)
    with pytest.raises(KeyError):
        f["x"]
    with pytest.raises(ValueError):
        f.variable("")
    assert [v.name for v in f.variables] == ["width", unnamed.name]
