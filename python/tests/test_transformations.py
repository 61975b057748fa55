"""The symbolic transformations operator and the contractor."""

import pytest

import kobwbx


def test_symbolic_transformations_eliminate_and_simplify():
    f = kobwbx.from_text("x + 2*y = 10; x*y = 12; z >= 0;")
    x, y, z = f["x"], f["y"], f["z"]
    first, second, third = f.equations
    st = kobwbx.SymbolicTransformations(f, mode=2 | 4)
    assert st.mode == 6
    st.run()
    assert not first.exists and second.exists
    with pytest.raises(KeyError, match="removed"):
        first.root
    assert str(st.variable_expression(y)) == "-1/2*x + 5"
    assert st.variable_expression(x) is None and st.variable_expression(z) is None
    assert str(f) == "-1/2*x^2 + 5*x = 12;\nz >= 0;\n"
    assert str(third) == "z >= 0;"


def test_inconsistent_constant_inequalities():
    f = kobwbx.from_text("x = 2; x >= 3;")
    st = kobwbx.SymbolicTransformations(f, mode=2 | 16)
    st.run()
    assert st.inconsistent


def test_contractor_narrows_to_a_fixed_point_or_finds_no_solution(f):
    x, y = f.variable("x", (0, 100)), f.variable("y", (0, 100))
    f.add(x + y == 10)
    f.add(y ** 2 == 16)
    contractor = kobwbx.Contractor(f)
    assert contractor.run() == kobwbx.ContractionStatus.FIXED_POINT
    assert x.domain.lower == pytest.approx(6) and y.domain.upper == pytest.approx(4)
    assert contractor.revisions > 0
    y.domain = (5, 6)
    assert contractor.propagate([y]) == kobwbx.ContractionStatus.NO_SOLUTION
    assert contractor.revise(f.equations[0]) in list(kobwbx.ContractionStatus.__members__.values())
    with pytest.raises(ValueError):
        kobwbx.Contractor(f, ratio=float("nan"))
    with pytest.raises(ValueError):
        kobwbx.Contractor(f, budget=-1)
