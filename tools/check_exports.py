#!/usr/bin/env python3
"""Compares what a library exports with a pinned list, and what it needs with what it may need.

check_exports.py LIB LIST [--needs NAME...]    fails when they differ
check_exports.py --write LIB LIST              pins what the library exports now
"""

import argparse
import pathlib
import re
import subprocess
import sys

MAY_NEED = {"libstdc++", "libm", "libgcc_s", "libc"}
SANITIZERS = {"libasan", "libubsan", "libclang_rt"}


def run(*command: str) -> str:
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def exported(library: str) -> list[str]:
    """Demangled names, each once: the variants of a constructor have one name."""
    lines = run("nm", "-D", "--defined-only", "--demangle", library).splitlines()
    return sorted({line.split(maxsplit=2)[2] for line in lines})


def needed(library: str) -> set[str]:
    found = re.findall(r"\(NEEDED\).*\[(.+?)\.so", run("readelf", "-d", library))
    return {re.sub(r"\.(asan|ubsan)_.*|-.*", "", name) for name in found}


def differences(library: str, pinned: pathlib.Path, may_need: set[str]):
    """Complaints, one line each."""
    names = exported(library)
    expected = pinned.read_text().splitlines()
    if expected != sorted(set(expected)):
        yield f"{pinned} is not sorted, or names something twice"
    for name in sorted(set(expected) - set(names)):
        yield f"- {name}: pinned, but no longer exported"
    for name in sorted(set(names) - set(expected)):
        yield f"+ {name}: exported, but not pinned"
    for name in sorted(needed(library) - may_need):
        yield f"needs {name}, which it may not"


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--write", action="store_true")
    parser.add_argument("--needs", nargs="*", default=[], help="libraries besides those of C++")
    parser.add_argument("library")
    parser.add_argument("list", type=pathlib.Path)
    arguments = parser.parse_args()
    try:
        if needed(arguments.library) & SANITIZERS:
            print(f"exported symbols: {arguments.library} is instrumented, not checked")
            return 0
        if arguments.write:
            arguments.list.write_text("\n".join(exported(arguments.library)) + "\n")
            return 0
        complaints = list(differences(arguments.library, arguments.list, MAY_NEED | set(arguments.needs)))
    except subprocess.CalledProcessError as error:
        print(error.stderr.strip(), file=sys.stderr)
        return 2
    except OSError as error:
        print(error, file=sys.stderr)
        return 2
    for complaint in complaints:
        print(complaint)
    print(f"exported symbols: {len(exported(arguments.library))}, {len(complaints)} complaints")
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
