#!/usr/bin/python3
"""calls.py TRACE DATABASES TABLES - count the system calls of each part that
"vek_bench calls" marks, and print the count of the part's baseline alongside.

In the baseline, a directory test reads the current directory, changes to the directory
and changes back.  A probe creates a file, closes it and removes it.  Looking for a file
takes an open and a close.  Two passes, that over the ENVIRONMENT statements and the
start itself, look for each of the two configuration files and then open it.
"""

import collections
import re
import sys

NOTES = {"brk": "for memory", "mmap": "for memory", "read": "of the configuration files"}
NAMES = {"openat": "open", "newfstatat": "stat", "mkdirat": "mkdir", "getdents64": "getdents"}
FILES = 2 * 2 * 2  # opens of configuration files


def baseline(part, databases, tables):
    tests = databases * (1 + tables)
    if part.endswith("start"):
        made = databases * tables if part == "cold start" else 0  # their test fails first
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
