#!/usr/bin/python3
"""plot.py PICTURE RESULT.json... - draw how cost grows with the size of the tree.

Each measure has a panel, with the time of the library and of what it is held
against over the number of tables, and a line for each number of databases.
"""

import sys

import matplotlib

matplotlib.use("svg")
matplotlib.rcParams.update({"svg.hashsalt": "vek", "svg.fonttype": "none", "font.size": 8})

from matplotlib import pyplot  # noqa: E402
from table import medians  # noqa: E402

PANELS = ["search, hit", "level walk, miss", "warm start", "name to path", "path to alias",
          "TABLE statement"]
COLOURS = {"vek": "#1f5fa8", "floor": "#999999"}


def draw(axes, measure, sizes):
    for who, colour in COLOURS.items():
        for databases, style in zip(sorted({d for d, _ in sizes}), (":", "--", "-")):
            points = [(t, times[f"{measure}/{who}"] / 1e3) for (d, t), times in sizes.items()
                      if d == databases and f"{measure}/{who}" in times]
            if points:
                axes.plot(*zip(*points), style, color=colour, marker=".", linewidth=1,
                          label=f"{who}, {databases} databases")
    axes.set(title=measure, xscale="log", xlabel="tables", ylabel="microseconds")
    if measure.endswith("start"):
        axes.set_yscale("log")
    else:
        axes.set_ylim(0, 1.1 * axes.get_ylim()[1])
    axes.set_xticks([40, 200, 1000], ["40", "200", "1000"])
    axes.minorticks_off()


def main():
    sizes = medians(sys.argv[2:])
    figure, panels = pyplot.subplots(2, 3, figsize=(9, 6))
    for axes, measure in zip(panels.flat, PANELS):
        draw(axes, measure, sizes)
    figure.legend(*panels.flat[0].get_legend_handles_labels(), loc="lower center", ncols=2,
                  frameon=False)
    figure.tight_layout(rect=(0, 0.09, 1, 1))
    figure.savefig(sys.argv[1], metadata={"Date": None})


if __name__ == "__main__":
    main()
