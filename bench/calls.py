#!/usr/bin/python3
"""calls.py STRACE DATABASES TABLES - count the system calls of each part that
"vek_bench calls" marks, beside those of the part's baseline.

A directory test reads the current directory, changes and changes back; a probe
creates a file, closes and removes it; a file is looked for by an open and a
close.  The two configuration files are looked for, and then opened, by the pass
over their ENVIRONMENT statements and by the start.
"""

import collections
import re
import sys

NOTES = {"brk": "for memory", "mmap": "for memory", "read": "of the configuration files"}
NAMES = {"openat": "open", "newfstatat": "stat", "mkdirat": "mkdir", "getdents64": "getdents"}
FILES = 2 * 2 * 2  # times that a configuration file is opened


def baseline(part, databases, tables):
    tests = databases * (1 + tables)
    if part.endswith("start"):
        made = databases * tables if part == "cold start" else 0  # whose test fails before
        return {"getcwd": tests, "chdir": 2 * tests - made, "mkdir": made,
                "open": databases + FILES, "close": databases + FILES, "unlink": databases}
    return {"search, hit": {"open": 1, "close": 1}, "search, miss": {"open": 1},
            "level walk, miss": {"open": 1 + databases}}[part]


def count(path):
    parts, part = {}, None
    with open(path, encoding="utf-8") as file:
        for line in file:
            call = re.match(r"(?:\d+ +)?(\w+)\(", line)
            mark = re.search(r'"/mark/([^"]*)"', line)
            if mark:
                part = mark.group(1)
            elif call and part not in (None, "end"):
                name = NAMES.get(call.group(1), call.group(1))
                parts.setdefault(part, collections.Counter())[name] += 1
    return parts


def main():
    databases, tables = int(sys.argv[2]), int(sys.argv[3])
    for part, calls in count(sys.argv[1]).items():
        expected = baseline(part, databases, tables)
        total = sum(number for name, number in calls.items() if name not in NOTES)
        print(f"{part}: {total} system calls of {sum(expected.values())}")
        for name in sorted(calls | expected, key=lambda name: -max(calls[name], expected.get(name, 0))):
            if calls[name] or expected.get(name):
                note = NOTES.get(name, f"of {expected.get(name, 0)}")
                print(f"  {name:12} {calls[name]:7} {note}")


if __name__ == "__main__":
    main()
