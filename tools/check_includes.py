#!/usr/bin/env python3
"""Checks from the #include lines who may include whom (docs/architecture.md, section 1)."""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
PLUGIN = {"frame", "services", "visu", "manufassly"}

# Room -> rooms of this project that it may include.
ALLOWED = {
    "host": {"host"},
    "frame": {"host", "frame"},
    "services": {"host"} | PLUGIN,
    "visu": {"host"} | PLUGIN,
    "manufassly": {"host"} | PLUGIN,
    "embedded": {"host", "embedded"},
    "hostcheck": {"host", "hostcheck"},
    "embeddedcheck": {"host", "embedded", "hostcheck", "embeddedcheck"},
    "planner": {"host", "embedded", "planner"} | PLUGIN,
    "tests": {"host", "embedded", "hostcheck", "embeddedcheck", "planner", "tests",
              "examples"} | PLUGIN,
    "examples": {"host", "embedded", "hostcheck", "examples"} | PLUGIN,
    "bench": {"host", "embedded", "planner", "tests", "bench"} | PLUGIN,
}

# The registrations name the classes of the floor above: the one place that ties the library.
EXCEPTIONS = {"frame/Registration.cpp"}

# Library header -> the only folders that may include it.
SEAMS = {
    r"nlohmann/": ("embedded/storage/", "planner/report/Json.h", "tests/", "bench/"),
    r"sqlite3\.h": (
        "embedded/processdb/",
        "planner/history/Database",
        "tests/history/",
        "tests/processdb/",
    ),
    r"xxhash\.h": ("embedded/storage/Fingerprint.cpp",),
    r"zstd\.h": ("planner/history/Compression",),
    r"CLI/": ("planner/",),
    r"histedit\.h|editline/": ("planner/",),
    r"gtest/|gmock/": ("tests/",),
    r"benchmark/": ("bench/",),
    r"boost/": (
        "bench/",
        "embedded/model/ActivityMemory.cpp",
        "planner/check/NearPoints",
        "planner/check/LoadedParts",
        "planner/scene/Page",
    ),
    r"assimp/": ("planner/scene/MeshFile",),
    r"tiny_gltf": ("planner/scene/Glb",),
}

# What host/, the checks of hosts and the plug-in may include besides: the standard library and, in
# these places only, the system.
STANDARD = re.compile(r"^[a-z0-9_]+$")
SYSTEM = ("hostcheck/Isolation.cpp", "host/loading/")

INCLUDE = re.compile(r'^\s*#\s*include\s+([<"])([^>"]+)[>"]')


def complaints(path: str, opening: str, target: str):
    room = path.split("/")[0]
    if opening == '"':
        if room == "examples" and (ROOT / path).parent.joinpath(target).is_file():
            return
        target_room = target.split("/")[0]
        if target_room not in ALLOWED[room] and path not in EXCEPTIONS:
            yield f"{room}/ may not include {target_room}/"
        if not (ROOT / target).is_file():
            yield f'"{target}" is not a path from the root of the project'
        return
    if (room in ("host", "hostcheck") or room in PLUGIN) and not path.startswith(SYSTEM):
        if not STANDARD.match(target):
            yield f"<{target}> is not of the C++ standard library"
    for pattern, places in SEAMS.items():
        if re.match(pattern, target) and not path.startswith(places):
            yield f"<{target}> is used outside of {', '.join(places)}"


def main() -> int:
    failures = 0
    checked = 0
    for room in ALLOWED:
        for file in sorted((ROOT / room).rglob("*")):
            if file.suffix not in (".h", ".cpp"):
                continue
            path = file.relative_to(ROOT).as_posix()
            checked += 1
            for number, line in enumerate(file.read_text().splitlines(), 1):
                match = INCLUDE.match(line)
                for complaint in complaints(path, *match.groups()) if match else ():
                    print(f"{path}:{number}: {complaint}")
                    failures += 1
    print(f"include rules: {checked} files, {failures} complaints")
    return 1 if failures or not checked else 0


if __name__ == "__main__":
    sys.exit(main())
