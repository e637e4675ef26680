"""Print the path of each file, and the copies of it that are hidden: resolve.py NAME..."""

import os
import sys

import vek


def show(line: str) -> None:
    sys.stdout.buffer.write(os.fsencode(line) + b"\n")  # print() fails if it is not UTF-8


vek.start()  # the product of KLV_PRODUCT_NAME
missing = 0
for name in sys.argv[1:]:
    try:
        show(vek.find(name))
        for copy in vek.find_all(name):
            if not copy.found:
                show(f"  hides the one in <{copy.database}>, level {copy.level}: {copy.path}")
    except vek.Error as error:
        print(error, file=sys.stderr)
        missing += 1
sys.exit(min(missing, 1))
