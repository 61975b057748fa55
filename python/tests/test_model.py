"""Model text: errors, homogeneity, conversion, and the round trip through text."""

import pytest

import kobwbx

SKETCH = """/* a bracket */
x1 = 0 mm;
x2 - x1 = width;
width = 80 mm;
sqrt((x3 - x2)^2 + (y3 - y2)^2) = side;
atan2(y3 - y2, x3 - x2) = 60 deg;
y3 - y2 >= 10 mm;
"""


def test_errors_with_line_and_column_instead_of_exceptions():
    model = kobwbx.parse("x + = 3;\ny = 2 mm;\nz = 3 kg;")
    assert not model.ok
    assert [tuple(e) for e in model.errors] == [(1, 5, "syntax error, unexpected ="),
                                                (3, 7, "semantic error, unknown unit kg")]
    assert model.errors[1].code == 22
    # The message says what disagrees, at the operator where it meets.
    mixed = kobwbx.parse("a = 3 mm + 2 deg;")
    assert [tuple(e) for e in mixed.errors] == [
        (1, 10, "semantic error, inconsistent unit: '+' joins 3 mm, a length, and 2 deg, an angle")]
    unended = kobwbx.parse("a = 1\nb = 2;")
    assert unended.errors[0].line == 1 and "expected ';' at the end of line 1" in unended.errors[0].message
    with pytest.raises(kobwbx.ModelError, match="1:5: syntax error"):
        model.to_factory()
    with pytest.raises(kobwbx.ModelError):
        kobwbx.from_text("sin(x, y) = 1;")
    with pytest.raises(ValueError, match="NUL"):
        kobwbx.parse("x = 1;\0")
    assert kobwbx.parse("a@ = 1;").invalid_characters == [(1, 2)]
    assert kobwbx.parse("").ok and kobwbx.parse("").equation_count == 0


def test_homogeneity_reports_equations_mixing_lengths_and_angles():
    model = kobwbx.parse("y = 3 mm;\n2 km = 30 deg;\n")
    assert model.ok and not model.is_homogeneous
    assert model.inhomogeneous_equations() == [(2, 1, "Distance", "Angle")]
    assert kobwbx.parse(SKETCH).is_homogeneous


def test_conversion_names_variables_and_converts_units():
    model = kobwbx.parse(SKETCH)
    assert model.variable_names == ["x1", "x2", "width", "x3", "y3", "y2", "side"]
    f = model.to_factory()
    assert [v.name for v in f.variables] == model.variable_names
    assert f["width"].domain == kobwbx.Interval(float("-inf"), float("inf"))
    assert str(f.equations[4]) == "atan2(y3 - y2, x3 - x2) = Pi/3;"
    assert str(f.equations[2]) == "width = 80;"
    again = model.to_factory()            # the model converts as often as asked
    assert str(again) == str(f) and again != f


def test_conversion_into_a_factory_reuses_its_variables(f):
    x = f.variable("x", 2.0)
    kobwbx.parse("x + y = 3;").to_factory(f)
    assert len(f.variables) == 2 and f["x"].same(x) and f.residuals()[0].lower == float("-inf")
    f["y"].domain = 1.0
    assert f.residuals() == [0]


def test_round_trip_text_factory_text():
    text = str(kobwbx.from_text(SKETCH))
    copy = kobwbx.from_text(text)
    assert str(copy) == text
    f = kobwbx.Factory()
    x, y = f.variable("x"), f.variable("y")
    f.add((x - 1) ** 2 + kobwbx.sin(y) == 3)
    f.add(x / 3 + f.pi / 4 <= kobwbx.atan2(y, x))
    f.add(kobwbx.if_then_else(x > 1, x, 2 * y) != 0.1)
    text = str(f)
    assert str(kobwbx.from_text(text)) == text
