"""Nodes keep their factory alive, and nodes of closed or other factories are refused."""

import gc

import pytest

import kobwbx


def test_nodes_keep_their_factory_alive():
    x = kobwbx.Factory().variable("x", (0, 1))
    gc.collect()
    e = x * 2 + 1
    assert e.value == (1, 3) and str(e.factory) == ""
    assert e.factory == x.factory


def test_closed_factory_refuses_every_use():
    f = kobwbx.Factory()
    x = f.variable("x")
    eq = f.add(x == 1)
    contractor = kobwbx.Contractor(f)
    st = kobwbx.SymbolicTransformations(f)
    f.close()
    assert f.closed and repr(f) == "<kobwbx.Factory (closed)>"
    for use in [lambda: x.value, lambda: x + 1, lambda: str(x), lambda: eq.root, lambda: f.variable("y"),
                lambda: contractor.run(), lambda: st.run(), lambda: kobwbx.sin(x), lambda: f.residuals()]:
        with pytest.raises(RuntimeError, match="closed"):
            use()
    assert not eq.exists
    f.close()                                  # closing twice is harmless
    with kobwbx.Factory() as g:
        y = g.variable("y")
    with pytest.raises(RuntimeError):
        y.domain = 1


def test_nodes_of_another_factory_are_refused(f):
    x = f.variable("x")
    g = kobwbx.Factory()
    y = g.variable("y")
    for use in [lambda: x + y, lambda: kobwbx.atan2(x, y), lambda: f.add(x == y), lambda: (x * 2).diff(y),
                lambda: f.evaluate([y]), lambda: f.jacobian(variables=[y]), lambda: kobwbx.Contractor(f).propagate([y]),
                lambda: f.remove(g.add(y == 1)), lambda: kobwbx.min(x, 1, y), lambda: kobwbx.determinant([[x, y], [1, 2]])]:
        with pytest.raises(ValueError, match="another factory"):
            use()
    assert len(f.equations) == 0


def test_removed_equations_and_bad_arguments(f):
    x = f.variable("x")
    eq = f.add(x <= 1)
    f.remove(eq)
    with pytest.raises(KeyError):
        f.remove(eq)
    with pytest.raises(KeyError):
        f.equation(eq.id)
    with pytest.raises(TypeError):
        f.remove(x)
    with pytest.raises(TypeError):
        kobwbx.Contractor("f")
    with pytest.raises(TypeError):
        kobwbx.SymbolicTransformations(f).restrict([x])
    with pytest.raises(TypeError, match="str"):
        f.variable(3)
    with pytest.raises(TypeError, match="Factory"):
        kobwbx.parse("x = 1;").to_factory(3)
    with pytest.raises(TypeError):
        f.add(x, 1)
