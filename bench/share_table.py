#!/usr/bin/python3
"""share_table.py RESULT.txt... - print the table of requests on a share.

Each result is the output of one run of vek_share.  Its name has the size of the tree,
the delay of a request in milliseconds, and the number of the run:
DATABASES-TABLES-DELAY-RUN.txt.  A time is the median of the runs.  The requests of a
measure must be the same in all runs.
"""

import pathlib
import re
import statistics
import sys

LINE = re.compile(r"(?P<name>.*): (?P<total>\d+) requests(?:: (?P<kinds>.*))?; (?P<seconds>.*) s")

HEAD = """\
Requests to a file server, and the time of each measure when a request takes so many
milliseconds.  The client's cache is empty before a start.  Before every other measure
it holds what a start has requested.  The databases are on the share; configuration
files and HOME are on the local disk.  "minimum" is the fewest requests that lead to
the same results.  PhysicsFS and Qt only check whether the file exists.
"""


def read(paths):
    """{(databases, tables): {measure/who: (total, kinds, {delay: [seconds of a run]})}}"""
    sizes = {}
    for path in map(pathlib.Path, paths):
        databases, tables, delay, _ = map(int, path.stem.split("-"))
        for line in map(LINE.fullmatch, path.read_text(encoding="utf-8").splitlines()):
            counted = (int(line["total"]), line["kinds"] or "")
            measures = sizes.setdefault((databases, tables), {})
            *known, times = measures.setdefault(line["name"], (*counted, {}))
            if tuple(known) != counted:
                sys.exit(f"{path}: {line['name']} has other requests in another run")
            times.setdefault(delay, []).append(float(line["seconds"]))
    return dict(sorted(sizes.items()))


def shown(runs):
    if not runs:
        return ""
    seconds = statistics.median(runs)
    return f"{seconds * 1e3:.1f} ms" if seconds < 0.1 else f"{seconds:.3g} s"


def main():
    sizes = read(sys.argv[1:])
    delays = sorted({delay for measures in sizes.values()
                     for _, _, times in measures.values() for delay in times})
    print(HEAD)
    print(f"| size | {'measure':34} | requests |" + "".join(f" {d:5} ms |" for d in delays) +
          " by kind |")
    print("|---|---|---:|" + "---:|" * len(delays) + "---|")
    for (databases, tables), measures in sizes.items():
        for name, (total, kinds, times) in measures.items():
            cells = "".join(f" {shown(times.get(delay)):>8} |" for delay in delays)
            print(f"| {databases} x {tables} | {name.replace('/', ': '):34} | {total:8} |{cells}"
                  f" {kinds} |")


if __name__ == "__main__":
    main()
