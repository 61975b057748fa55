"""The point solver and the search of every solution, from Python."""

import math

import pytest

import kobwbx


def circle_and_line(start_x):
    f = kobwbx.Factory()
    x, y = f.variable("x", start_x), f.variable("y", start_x + 0.5)
    f.add(x * x + y * y == 25)
    f.add(y - x == 1)
    return f, x, y


def test_solve_writes_the_answer_back_and_names_conflicts():
    f, x, y = circle_and_line(2.0)
    solver = kobwbx.Solver(f)
    assert solver.solve() == kobwbx.SolverStatus.SOLVED
    assert math.isclose(x.value, 3.0) and math.isclose(y.value, 4.0)
    assert solver.iterations <= 8 and solver.residual <= 1e-10
    solver.diagnose()
    assert (solver.dof, solver.structural_dof, solver.unknowns, solver.rank) == (0, 0, 2, 2)

    wrong = f.add(x == 1)
    assert solver.solve() == kobwbx.SolverStatus.INCONSISTENT
    assert wrong in solver.conflicting or any(e.name == wrong.name for e in solver.conflicting)


def test_presolve_by_the_contractor_bounds_the_solve():
    f = kobwbx.Factory()
    x, y = f.variable("x", kobwbx.Interval(2.5, 10.0)), f.variable("y", 4.0)
    f.add(x * y == 6)
    f.add(x + y == 5)
    solver = kobwbx.Solver(f)
    assert solver.presolve == kobwbx.Presolve.NONE
    solver.presolve = kobwbx.Presolve.CONTRACTOR
    assert solver.solve() == kobwbx.SolverStatus.SOLVED
    assert math.isclose(x.value, 3.0) and math.isclose(y.value, 2.0)
    with pytest.raises(TypeError):
        solver.presolve = 7


def test_fixed_variables_and_free_ones():
    f = kobwbx.Factory()
    x, y = f.variable("x", 3.0), f.variable("y", 0.0)
    f.add(x + y == 2)
    solver = kobwbx.Solver(f)
    solver.fix(x)
    assert solver.solve() == kobwbx.SolverStatus.SOLVED
    assert math.isclose(x.value, 3.0) and math.isclose(y.value, -1.0)
    solver.fix(x, False)
    solver.diagnose()
    assert solver.dof == 1 and {v.name for v in solver.free} == {"x", "y"}


def test_every_solution_in_the_domains():
    f, x, y = circle_and_line(0.0)
    x.domain, y.domain = (-10, 10), (-10, 10)
    found = kobwbx.all_solutions(f)
    assert found["complete"] and len(found["solutions"]) == 2 and not found["undecided"]
    assert [v.name for v in found["unknowns"]] == ["x", "y"]
    points = sorted((box[0].lower, box[1].lower) for box in found["solutions"])
    assert math.isclose(points[0][0], -4, abs_tol=1e-7) and math.isclose(points[1][1], 4, abs_tol=1e-7)


def test_bad_arguments():
    f, x, y = circle_and_line(1.0)
    with pytest.raises(ValueError):
        kobwbx.Solver(f, tolerance=math.nan)
    with pytest.raises(ValueError):
        kobwbx.Solver(f, max_iterations=0)
    x.domain = None
    with pytest.raises(ValueError):
        kobwbx.all_solutions(f)  # an unbounded domain
    with pytest.raises(ValueError):
        kobwbx.all_solutions(kobwbx.Factory())
    other = kobwbx.Factory()
    with pytest.raises(ValueError):
        kobwbx.Solver(f).fix(other.variable("z"))
    solver = kobwbx.Solver(f)
    f.close()
    with pytest.raises(RuntimeError):
        solver.solve()
