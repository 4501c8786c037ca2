#!/usr/bin/env python3
"""Counts lines that are neither blank nor comment, by room, and the share of the tests.

With --functions it also prints the sizes of files and functions.
"""

import pathlib
import re
import statistics
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
TESTS = ("tests", "viewer/tests")
CODE = (".h", ".cpp", ".py", ".ts", ".mjs", ".css")
# Share of the tests in all code, in per cent.
LEAST, MOST = 20, 32


def code_lines(text: str) -> int:
    text = re.sub(r"/\*.*?\*/", "", text, flags=re.S)
    lines = (line.strip() for line in text.splitlines())
    return sum(1 for line in lines if line and not line.startswith(("//", "# ")))


def room_of(file: pathlib.Path) -> str:
    """The top folder, or the folder of the tests in it, if they lie there."""
    parts = file.relative_to(ROOT).parts
    return "/".join(parts[:2]) if "/".join(parts[:2]) in TESTS else parts[0]


def tracked():
    names = subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], cwd=ROOT, text=True,
                           capture_output=True, check=True)
    files = (ROOT / name for name in names.stdout.splitlines())
    return [file for file in files if file.suffix in CODE and file.is_file()]


def function_sizes(text: str):
    """Lines of each function that starts in the first column and ends with a brace there."""
    start = None
    for number, line in enumerate(text.splitlines()):
        opens = line.endswith("{") and not line.startswith(("namespace", "class", "struct", "enum"))
        if start is None and re.match(r"[A-Za-z_].*\(|    :", line) and opens:
            start = number
        elif start is None and re.match(r"[A-Za-z_].*\).*\{.*\}$", line):
            yield 1
        elif line == "}" and start is not None:
            yield number - start + 1
            start = None


def print_sizes(files) -> None:
    texts = [file.read_text() for file in files if file.suffix == ".cpp"]
    sizes = sorted(size for text in texts for size in function_sizes(text))
    lengths = sorted(len(file.read_text().splitlines()) for file in files)
    print(f"functions: {len(sizes)}, median {statistics.median(sizes)}, "
          f"nine in ten under {sizes[len(sizes) * 9 // 10] + 1}, longest {sizes[-1]}")
    print(f"files: {len(lengths)}, median {statistics.median(lengths)}, longest {lengths[-1]}")


def main() -> int:
    rooms: dict[str, int] = {}
    files = tracked()
    for file in files:
        room = room_of(file)
        rooms[room] = rooms.get(room, 0) + code_lines(file.read_text())
    for room in sorted(rooms):
        print(f"{room:12} {rooms[room]:6}")
    total = sum(rooms.values())
    share = 100 * sum(rooms.get(room, 0) for room in TESTS) / total
    print(f"{'all':12} {total:6}   tests {share:.1f} %")
    if "--functions" in sys.argv:
        print_sizes(files)
    return 0 if LEAST <= share <= MOST else 1


if __name__ == "__main__":
    sys.exit(main())
