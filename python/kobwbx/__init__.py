"""Python interface of KOBWBx: equation systems as white-box expression graphs.

    import kobwbx
    f = kobwbx.Factory()
    x, y = f.variable("x"), f.variable("y")
    e = (x - 1)**2 + kobwbx.sin(y)
    f.add(e == 3)
    x.domain = (0, 2)
    y.domain = 0.5
    e.value            # Interval(...)
    e.diff(x)          # 2*(x - 1)

Nodes keep their factory alive; Factory.close() destroys it at once, and nodes of
a closed factory raise RuntimeError. Nodes of different factories never mix
(ValueError). Evaluation never raises by itself: a value that cannot be computed
is the empty Interval and the cause is in Factory.errors; Expression.evaluate()
and the check=True forms raise EvaluationError instead.
"""

from ._kobwbx import *  # noqa: F401,F403
from ._kobwbx import __doc__ as _module_doc  # noqa: F401

__all__ = [name for name in dir() if not name.startswith("_")]
