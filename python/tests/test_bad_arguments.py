"""Every function and method given wrong arguments raises a Python exception, never crashes."""

import inspect
import itertools
import math
from fractions import Fraction

import kobwbx


def argument_pool():
    """Arguments of every kind a caller may pass by mistake, nodes of three factories included."""
    f = kobwbx.Factory()
    x = f.variable("x", (0, 1))
    eq = f.add(x * x == 2)
    other = kobwbx.Factory()
    y = other.variable("y")
    closed = kobwbx.Factory()
    z = closed.variable("z")
    closed_eq = closed.add(z == 1)
    closed.close()
    removed = f.add(x >= 0)
    f.remove(removed)
    pool = [None, 0, -1, 2 ** 40, math.nan, math.inf, Fraction(1, 3), "x", (2, 1), [], x, x + 1, y, z, eq,
            closed_eq, removed, f, closed, x <= 1]
    return f, pool


def callables(f):
    found = [(name, obj) for name, obj in vars(kobwbx._kobwbx).items()
             if callable(obj) and not name.startswith("_") and not inspect.isclass(obj)]
    x = f.variable("x")
    instances = [f, x, x + 1, f.equations[0], f.jacobian(), kobwbx.parse("a = 1;"), kobwbx.Interval(0, 1),
                 kobwbx.Contractor(f), kobwbx.SymbolicTransformations(f, 0)]
    for instance in instances:
        for name in dir(type(instance)):
            if name.startswith("__") and name not in ("__add__", "__pow__", "__getitem__", "__contains__", "__eq__"):
                continue
            if name in ("close", "run"):
                continue
            attribute = getattr(instance, name, None)
            if callable(attribute):
                found.append((f"{type(instance).__name__}.{name}", attribute))
    return found


def test_wrong_arguments_raise_python_exceptions():
    f, pool = argument_pool()
    calls = 0
    for name, function in callables(f):
        for arity in range(4):
            for arguments in itertools.product(pool, repeat=arity) if arity < 3 else zip(pool, reversed(pool), pool):
                try:
                    function(*arguments)
                except Exception:  # noqa: BLE001 - any Python exception is an answer; a crash is not
                    pass
                calls += 1
    assert calls > 10000


def test_setting_attributes_to_wrong_values():
    f, pool = argument_pool()
    x = f.variable("x")
    targets = [(x, "domain"), (x, "name"), (x, "fixed"), (f, "tolerance"), (f.equations[0], "name")]
    for (target, attribute), value in itertools.product(targets, pool):
        try:
            setattr(target, attribute, value)
        except Exception:  # noqa: BLE001
            pass
    assert x.name and f.equations[0].exists
