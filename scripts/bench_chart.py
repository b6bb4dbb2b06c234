#!/usr/bin/env python3
"""Draws the benchmark program's JSON output as one PNG, for scripts/bench.sh.

    bench_chart.py BENCH_JSON [PNG]        (PNG defaults to bench/bench.png)

BENCH_JSON is what cmddata_bench writes with --benchmark_out=FILE --benchmark_out_format=json.
Panel (a): per shape and operation, each implementation's time over the limit+cmp's time.
Panel (b): ns per item of the scaling shapes S5-words and S5-texts against their item count.
Like the program's own tables, every benchmark counts with its fastest repetition in CPU time.
"""
import argparse
import json
import math
import pathlib
import re

import matplotlib

matplotlib.use("Agg")  # no display needed
import matplotlib.pyplot as plt  # noqa: E402
from matplotlib.lines import Line2D  # noqa: E402

OPS = ("write", "read-fresh", "read-reused")
RATIO_IMPLS = ("cmddata", "cereal", "protobuf", "pb-arena")
SCALING_IMPLS = ("cmddata", "limit", "cereal", "protobuf")
SCALING_SHAPES = ("S5-words", "S5-texts")
COLORS = {"cmddata": "tab:blue", "limit": "tab:gray", "cereal": "tab:orange",
          "protobuf": "tab:green", "pb-arena": "tab:olive"}
STYLES = {"read-fresh": "-", "read-reused": "--", "write": ":"}
NS_PER_UNIT = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}


def fastest(path):
    """{(shape, op, impl): CPU ns} of every benchmark "shape/op/impl" in the file, and the shapes
    in the order the program ran them. Aggregates (mean, median, ...) are left out."""
    with open(path, encoding="utf-8") as f:
        runs = json.load(f)["benchmarks"]
    best, shapes = {}, []
    for run in runs:
        if run.get("run_type") != "iteration" or run.get("error_occurred"):
            continue
        shape, op, impl = run.get("run_name", run["name"]).rsplit("/", 2)
        if op not in OPS:
            continue
        ns = run["cpu_time"] * NS_PER_UNIT[run["time_unit"]]
        best[(shape, op, impl)] = min(ns, best.get((shape, op, impl), math.inf))
        if shape not in shapes:
            shapes.append(shape)
    return best, shapes


def draw_ratios(ax, best, shapes):
    groups = [(s, op) for s in shapes for op in OPS if (s, op, "limit+cmp") in best]
    if not groups:
        ax.text(0.5, 0.5, "no limit+cmp runs in this file", ha="center", transform=ax.transAxes)
        ax.set_axis_off()
        return
    width = 0.8 / len(RATIO_IMPLS)
    for i, impl in enumerate(RATIO_IMPLS):
        xs, ys = [], []
        for g, (shape, op) in enumerate(groups):
            if (shape, op, impl) in best:
                xs.append(g + (i - (len(RATIO_IMPLS) - 1) / 2) * width)
                ys.append(best[(shape, op, impl)] / best[(shape, op, "limit+cmp")])
        ax.bar(xs, ys, width, color=COLORS[impl], label=impl)
    ax.axhline(1.0, color="black", linewidth=0.8)
    for g in range(1, len(groups)):  # a faint line between shapes
        if groups[g][0] != groups[g - 1][0]:
            ax.axvline(g - 0.5, color="lightgray", linewidth=0.8)
    ax.set_yscale("log")
    ax.set_xticks(range(len(groups)))
    ax.set_xticklabels([f"{s.replace('/', ' ')}  {op}" for s, op in groups], rotation=90,
                       fontsize=7)
    ax.set_xlim(-0.6, len(groups) - 0.4)
    ax.set_ylabel("time / limit+cmp time")
    ax.set_title("(a) time per message relative to the hand-written codec with compares "
                 "(limit+cmp = 1; below 1 is faster)")
    ax.grid(axis="y", which="major", alpha=0.3)
    ax.legend(ncol=len(RATIO_IMPLS), fontsize=8)


def draw_scaling(ax, best, shapes, list_name):
    sizes = sorted(int(m.group(1)) for s in shapes
                   if (m := re.fullmatch(re.escape(list_name) + r"/n=(\d+)", s)))
    drawn = False
    for impl in SCALING_IMPLS:
        for op in OPS:
            points = [(n, best[(f"{list_name}/n={n}", op, impl)] / n) for n in sizes
                      if (f"{list_name}/n={n}", op, impl) in best]
            if points:
                ax.plot(*zip(*points), STYLES[op], marker="o", markersize=3,
                        color=COLORS[impl])
                drawn = True
    ax.set_title(f"(b) {list_name}: ns per item")
    if not drawn:
        ax.text(0.5, 0.5, f"no {list_name} runs in this file", ha="center",
                transform=ax.transAxes)
        ax.set_axis_off()
        return
    ax.set_xscale("log")
    ax.set_yscale("log")
    ax.set_xlabel("items in the list (n)")
    ax.set_ylabel("CPU ns per item")
    ax.grid(which="major", alpha=0.3)
    # Colour says the implementation, line style the operation: one key of each, under the plot.
    keys = [Line2D([], [], color=COLORS[impl], label=impl) for impl in SCALING_IMPLS]
    keys += [Line2D([], [], color="black", linestyle=STYLES[op], label=op) for op in OPS]
    ax.legend(handles=keys, fontsize=8, ncol=len(keys), loc="upper center",
              bbox_to_anchor=(0.5, -0.12))


def main():
    default_png = pathlib.Path(__file__).resolve().parent.parent / "bench" / "bench.png"
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("json", help="Google Benchmark JSON output of cmddata_bench")
    parser.add_argument("png", nargs="?", default=str(default_png), help="the image to write")
    args = parser.parse_args()

    best, shapes = fastest(args.json)
    fig = plt.figure(figsize=(16, 12), layout="constrained")
    grid = fig.add_gridspec(2, 2, height_ratios=(1.3, 1))
    draw_ratios(fig.add_subplot(grid[0, :]), best, shapes)
    for col, list_name in enumerate(SCALING_SHAPES):
        draw_scaling(fig.add_subplot(grid[1, col]), best, shapes, list_name)
    fig.savefig(args.png, dpi=100)
    print(f"bench: chart written to {args.png}")


if __name__ == "__main__":
    main()
