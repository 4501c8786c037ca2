#!/usr/bin/env python3
"""Checks that built programs and libraries are hardened, and that all sources are compiled so.

check_hardening.py BUILD    looks at what lies in the build folder
"""

import json
import pathlib
import re
import subprocess
import sys

FLAGS = ("-fstack-protector-strong", "-D_FORTIFY_SOURCE=2", "-D_GLIBCXX_ASSERTIONS")
# What code calls that is compiled with these flags, if it has anything to guard, as what people
# get always has; a small test need not.
GUARDS = {
    "stack protector": r"\b__stack_chk_fail\b",
    "assertions of the standard library": r"\b_ZSt21__glibcxx_assert_fail",
}


def readelf(option: str, file: pathlib.Path) -> str:
    return subprocess.run(("readelf", "-W", option, file), check=True, capture_output=True,
                          text=True).stdout


def is_elf(file: pathlib.Path) -> bool:
    with file.open("rb") as stream:
        return stream.read(4) == b"\x7fELF"


def built(build: pathlib.Path) -> list[pathlib.Path]:
    """The programs and libraries of a build, each once."""
    found = (file for pattern in ("lib*.so", "planner/biwplan", "tests/*_tests", "bench/tuv_bench")
             for file in build.glob(pattern))
    return sorted({file.resolve() for file in found if is_elf(file)})


def complaints_about_file(file: pathlib.Path):
    segments = readelf("-l", file)
    dynamic = readelf("-d", file)
    symbols = readelf("--dyn-syms", file)
    is_program = "INTERP" in segments
    if "DYN" not in readelf("-h", file) or (is_program and not re.search(r"FLAGS_1\).*\bPIE\b", dynamic)):
        yield "is loaded at a fixed address"
    if "GNU_RELRO" not in segments:
        yield "what the loader has bound can be written"
    if not re.search(r"FLAGS(_1)?\).*\b(BIND_)?NOW\b", dynamic):
        yield "is bound when it is used, not when it is loaded"
    if not re.search(r"GNU_STACK\s.*\sRW\s", segments):
        yield "has a stack that can be executed"
    if file.name.endswith("_tests"):
        return
    for guard, pattern in GUARDS.items():
        if not re.search(pattern, symbols):
            yield f"has no {guard}"


def complaints_about_commands(build: pathlib.Path):
    for entry in json.loads((build / "compile_commands.json").read_text()):
        words = entry["command"].split()
        missing = [flag for flag in FLAGS if flag not in words]
        if "-O0" in words or not any(re.fullmatch(r"-O[123s]", word) for word in words):
            missing.append("-O")
        if missing:
            yield f"{entry['file']}: compiled without {' '.join(missing)}"


def main() -> int:
    if len(sys.argv) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    build = pathlib.Path(sys.argv[1])
    try:
        files = built(build)
        complaints = list(complaints_about_commands(build))
        for file in files:
            complaints += [f"{file.name} {complaint}" for complaint in complaints_about_file(file)]
    except (OSError, subprocess.CalledProcessError) as error:
        print(error, file=sys.stderr)
        return 2
    for complaint in complaints:
        print(complaint)
    print(f"hardening: {len(files)} programs and libraries, {len(complaints)} complaints")
    return 1 if complaints or not files else 0


if __name__ == "__main__":
    sys.exit(main())
