#!/usr/bin/python3
"""calls.py STRACE DATABASES TABLES - count the system calls of each part that
"vek_bench calls" marks, beside those that it is told to make, word by word.

A directory test reads the current directory, changes and changes back; a probe
creates a file, closes and removes it; a file is looked for by an open and a
close; a configuration file is opened, read to its end and closed.
"""

import collections
import re
import sys

MEMORY = {"brk", "mmap", "munmap", "mremap", "madvise"}  # for the records


def demanded(part, databases, tables, reads):
    tests = databases * (1 + tables)
    looks, readings = 4, 4  # two files, each looked for twice and read twice
    if part.endswith("start"):
        made = databases * tables if part == "cold start" else 0  # whose test fails before
        opens = databases + looks + readings
        return {"getcwd": tests, "chdir": 2 * tests - made, "mkdir": made, "open": opens,
                "close": opens, "unlink": databases, "read": reads}
    return {"search, hit": {"open": 1, "close": 1}, "search, miss": {"open": 1},
            "level walk, miss": {"open": 1 + databases}}[part]


def made(path):
    parts, part = {}, None
    with open(path, encoding="utf-8") as file:
        for line in file:
            call = re.match(r"(?:\d+ +)?(\w+)\(", line)
            mark = re.search(r'"/mark/([^"]*)"', line)
            if mark:
                part = mark.group(1)
            elif call and part not in (None, "end"):
                name = {"openat": "open", "newfstatat": "stat"}.get(call.group(1), call.group(1))
                parts.setdefault(part, collections.Counter())[name] += 1
    return parts


def main():
    databases, tables = int(sys.argv[2]), int(sys.argv[3])
    for part, calls in made(sys.argv[1]).items():
        rules = demanded(part, databases, tables, calls["read"])
        total = sum(count for name, count in calls.items() if name not in MEMORY)
        print(f"{part}: {total} system calls of {sum(rules.values())}")
        for name in sorted(calls | rules, key=lambda name: -max(calls[name], rules.get(name, 0))):
            if not calls[name] and not rules.get(name):
                continue
            note = " for memory" if name in MEMORY else f" of {rules.get(name, 0)}"
            print(f"  {name:12} {calls[name]:7}{note}")


if __name__ == "__main__":
    main()
