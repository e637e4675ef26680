#!/usr/bin/python3
"""plot.py PLOT [RESULT.json...] [RESULT.txt...] - plot how cost grows.

Results of vek_bench: each measure has a panel that shows the time of the library and
of the baseline over the number of tables, with a line for each number of databases.

Results of vek_share: the warm and the cold start have a panel each, which shows the
time of the library and of the minimum over the time that a request takes, with a line
for each size of the tree.
"""

import sys
from statistics import median

import matplotlib

matplotlib.use("svg")
matplotlib.rcParams.update({"svg.hashsalt": "vek", "svg.fonttype": "none", "font.size": 8})

from matplotlib import pyplot  # noqa: E402
from share_table import read  # noqa: E402
from table import medians  # noqa: E402

PANELS = ["search, hit", "level walk, miss", "warm start", "name to path", "path to alias",
          "TABLE statement"]
SHARE_PANELS = ["warm start", "cold start"]
COLOURS = {"vek": "#1f5fa8", "baseline": "#999999"}
SHARE_COLOURS = {"vek": "#1f5fa8", "minimum": "#999999"}
STYLES = (":", "--", "-")


def draw(axes, measure, sizes):
    for who, colour in COLOURS.items():
        for databases, style in zip(sorted({d for d, _ in sizes}), STYLES):
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


def draw_share(axes, measure, sizes):
    for who, colour in SHARE_COLOURS.items():
        for (databases, tables), style in zip(sizes, STYLES):
            _, _, times = sizes[databases, tables][f"{measure}/{who}"]
            points = [(delay, median(runs)) for delay, runs in sorted(times.items())]
            axes.plot(*zip(*points), style, color=colour, marker=".", linewidth=1,
                      label=f"{who}, {databases} x {tables}")
    axes.set(title=f"{measure} on a share", xlabel="milliseconds a request", ylabel="seconds",
             yscale="log")
    axes.minorticks_off()


def main():
    memory = medians(path for path in sys.argv[2:] if path.endswith(".json"))
    share = read(path for path in sys.argv[2:] if path.endswith(".txt"))
    rows = 2 * bool(memory) + bool(share)
    figure = pyplot.figure(figsize=(9, 3 * rows))
    if memory:
        for index, measure in enumerate(PANELS, 1):
            draw(figure.add_subplot(rows, 3, index), measure, memory)
        figure.legend(*figure.axes[0].get_legend_handles_labels(), loc="lower center", ncols=2,
                      frameon=False)
    if share:
        for index, measure in enumerate(SHARE_PANELS, 3 * rows - 2):
            draw_share(figure.add_subplot(rows, 3, index), measure, share)
        lines = figure.axes[-1].get_legend_handles_labels()
        key = figure.add_subplot(rows, 3, 3 * rows, frameon=False, xticks=[], yticks=[])
        key.legend(*lines, loc="center left", frameon=False)
    figure.tight_layout(rect=(0, 0.18 / rows if memory else 0, 1, 1))
    figure.savefig(sys.argv[1], metadata={"Date": None})


if __name__ == "__main__":
    main()
