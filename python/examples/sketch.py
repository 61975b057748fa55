"""The bracket sketch of examples/sketch.wbm in Python: read, check, solve, differentiate."""

import os
import sys

import kobwbx

MODEL = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "examples", "sketch.wbm")


def main():
    with open(sys.argv[1] if len(sys.argv) > 1 else MODEL, encoding="utf-8") as file:
        model = kobwbx.parse(file.read())
    for line, column, message in model.errors:
        print(f"{line}:{column}: {message}")
    if not model.ok or not model.is_homogeneous:
        return 1
    f = model.to_factory()
    print(f"{len(f.variables)} variables, {len(f.equations)} equations")

    f.set_domains({"x3": (0, 200), "y3": (0, 200)})
    status = kobwbx.Contractor(f).run()
    print("contract:", status.name)
    for name in ("x3", "y3", "angle"):
        print(f"  {name} in {f[name].domain}")

    # The Jacobian of the system over the contracted box, in one call.
    jacobian = f.jacobian()
    print(f"Jacobian {jacobian.shape[0]}x{jacobian.shape[1]}, {len(jacobian)} entries")
    side = next(e for e in f.equations if "sqrt" in str(e))
    x3 = f["x3"]
    slope = side.root.diff(x3)
    print(f"d/dx3 of {side.root}:\n  {slope}\n  over the box: {slope.value}")

    # Building expressions directly, simplifying them, printing them.
    x, y = f.variable("u"), f.variable("v")
    e = ((x + 1) ** 2 - x ** 2 - 2 * x) * kobwbx.cos(y)
    print(f"{e}  simplifies to  {e.simplify()}")
    print("MathML:", (x / 2 - kobwbx.sqrt(y))._repr_mathml_())
    return 0


if __name__ == "__main__":
    sys.exit(main())
