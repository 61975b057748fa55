"""What a Python call costs: the sketch workload of bench/SketchWorkload.h built through
the kobwbx module, then evaluated whole (Factory.residuals, the Jacobian's values) in one
call each, against the cost of the cheapest call into the module.

    PYTHONPATH=_build/bench/python python3 python/bench/EvaluationBench.py [POINTS]

Each figure is the best of several repetitions. Every evaluation follows a change of one
domain, which resets every value buffer, so that the whole graph is computed again.
"""

import sys
import time

import kobwbx


def build_sketch(points):
    f = kobwbx.Factory()
    variables = []
    for i in range(points):
        variables.append(f.variable(f"x{i}", (i * 10.0 - 1, i * 10.0 + 1)))
        variables.append(f.variable(f"y{i}", (i * 5.0 - 1, i * 5.0 + 1)))
    for i in range(points - 1):
        x1, y1, x2, y2 = variables[2 * i:2 * i + 4]
        dx, dy = x2 - x1, y2 - y1
        f.add(kobwbx.sqrt(dx ** 2 + dy ** 2) == 11.18)
        f.add(kobwbx.atan2(dy, dx) == 0.4636)
    return f, variables


def best(function, repetitions):
    times = []
    for _ in range(repetitions):
        start = time.perf_counter()
        function()
        times.append(time.perf_counter() - start)
    return min(times)


def main():
    points = int(sys.argv[1]) if len(sys.argv) > 1 else 10000
    start = time.perf_counter()
    f, variables = build_sketch(points)
    built = time.perf_counter() - start
    nodes = f.node_count
    equations = len(f.equations)
    print(f"sketch of {points} points: {equations} equations, {nodes} nodes, "
          f"built from Python in {built:.2f} s ({built / nodes * 1e9:.0f} ns per node)")

    x0 = variables[0]
    calls = 100000
    per_call = best(lambda: [x0.index for _ in range(calls)], 5) / calls
    print(f"cheapest call (Variable.index): {per_call * 1e9:.0f} ns")

    toggle = [(-1.0, 1.0), (-1.0, 1.5)]
    state = {"i": 0}

    def change_domain():
        state["i"] ^= 1
        x0.domain = toggle[state["i"]]

    domain_change = best(lambda: [change_domain() for _ in range(1000)], 5) / 1000
    print(f"domain change (resets the buffers): {domain_change * 1e9:.0f} ns")

    f.residuals()  # makes the evaluation plans

    def residuals():
        change_domain()
        f.residuals()

    whole = best(residuals, 10) - domain_change
    print(f"Factory.residuals(), one call: {whole * 1e3:.2f} ms, {whole / nodes * 1e9:.1f} ns per node, "
          f"{whole / equations * 1e9:.0f} ns per equation (value to Python included)")

    def residual_bounds():
        change_domain()
        f.residuals(bounds=True)

    pairs = best(residual_bounds, 10) - domain_change
    print(f"Factory.residuals(bounds=True), one call: {pairs * 1e3:.2f} ms, {pairs / nodes * 1e9:.1f} ns per node, "
          f"{pairs / equations * 1e9:.0f} ns per equation (pairs of floats)")

    jacobian = f.jacobian()
    jacobian_nodes = f.node_count - nodes
    jacobian.values()

    def jacobian_values():
        change_domain()
        jacobian.values(bounds=True)

    entries = best(jacobian_values, 10) - domain_change
    print(f"Jacobian.values(bounds=True), one call: {len(jacobian)} entries over {jacobian_nodes} new nodes: "
          f"{entries * 1e3:.2f} ms, {entries / len(jacobian) * 1e9:.0f} ns per entry, "
          f"{entries / (nodes + jacobian_nodes) * 1e9:.1f} ns per node of sketch and derivatives")
    f.close()


if __name__ == "__main__":
    main()
