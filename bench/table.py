#!/usr/bin/python3
"""table.py RESULT.json... - print the table of ratios.

Each result is the output of one run of vek_bench.  A column is a size, databases by
tables.  A number is the median time of the library, or of a peer, divided by that of
the baseline in the same run.
"""

import json
import sys

# Operations in memory have no baseline of their own.  Their unit is an open and a close
# of a file in the same tree.
UNIT = "search, hit/baseline"


# From top to bottom of the table.
MEASURES = ["search, hit", "search, miss", "level walk, miss", "warm start", "cold start",
            "name to path", "path to alias", "class to extension", "extension to path",
            "name to level", "TABLE statement", "copy of 1 KB", "copy of 1 MB", "copy of 100 MB"]


def medians(paths):
    """{(databases, tables): {measure/who: median time}}"""
    sizes = {}
    for path in paths:
        with open(path, encoding="utf-8") as file:
            result = json.load(file)
        size = (int(result["context"]["databases"]), int(result["context"]["tables"]))
        for run in result["benchmarks"]:
            if run.get("aggregate_name") == "median":
                measure, who = run["run_name"].split("/")[:2]
                sizes.setdefault(size, {})[measure + "/" + who] = run["real_time"]
    return dict(sorted(sizes.items()))


def ratio(times, name):
    """The ratio of one measure at one size, or None if it was not measured."""
    baseline = times.get(name.split("/")[0] + "/baseline", times.get(UNIT))
    return times[name] / baseline if name in times and baseline else None


def shown(value):
    return "" if value is None else f"{value:.2f}" if value < 100 else f"{value:.0f}"


def main():
    sizes = medians(sys.argv[1:])
    names = sorted({name for times in sizes.values() for name in times},
                   key=lambda name: (MEASURES.index(name.split("/")[0]), "/vek" not in name, name))
    print(f"| {'':35} |" + "".join(f" {d} x {t} |".rjust(14) for d, t in sizes))
    print("|---|" + "---:|" * len(sizes))
    for name in names:
        if name.endswith("/baseline"):
            continue
        measure, who = name.split("/")
        unit = "" if measure + "/baseline" in names else ", in opens"
        cells = [shown(ratio(times, name)) for times in sizes.values()]
        print(f"| {measure + unit + ': ' + who:35} |" + "".join(f" {c} |".rjust(14) for c in cells))


if __name__ == "__main__":
    main()
