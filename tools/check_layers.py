#!/usr/bin/env python3
"""Checks the layers of src/: fails on an include that points upward, and on a file without a place.

A header and a source include headers of their own layer or of lower ones. A few sources are hubs, whose work is to
join what lies above them; docs/architecture.md gives the reason of each. The machines of platform/ use what foundation
knows of limits, texts and reports, and foundation asks the machine for the time, so among sources the two are one layer.
Every file of src/ lies in the folder of a layer and is a header or a source.
"""

import pathlib
import re
import sys

# From the bottom up; the folders of one line are one layer.
LAYERS = [
    ["platform"],
    ["foundation"],
    ["files"],
    ["gfx"],
    ["sound", "text", "input"],
    ["sequence"],
    ["script", "net"],
    ["objects", "app"],
    ["host"],
]
RANK = {folder: rank for rank, folders in enumerate(LAYERS) for folder in folders}
HUBS = {"gfx/window.cpp", "gfx/window_input.cpp"}
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"')


def points_up(relative, target):
    """Whether a file must not include a header of the folder `target`."""
    rank, goal = RANK[relative.parts[0]], RANK.get(target, len(LAYERS))
    if relative.suffix == ".cpp":
        if relative.as_posix() in HUBS:
            return False
        rank = max(rank, RANK["foundation"])
    return goal > rank


def faults_of(path, root):
    """Yields what is wrong with one file, as "file:line: text"."""
    relative = path.relative_to(root)
    folder = relative.parts[0]
    if len(relative.parts) < 2 or folder not in RANK:
        yield f"{path}: lies in no layer's folder"
        return
    if path.suffix not in (".h", ".cpp"):
        yield f"{path}: is neither header nor source"
        return
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        match = INCLUDE.match(line)
        if not match:
            continue
        target = match.group(1).split("/")[0]
        if not (root / match.group(1)).is_file():
            yield f"{path}:{number}: {match.group(1)} is no file of src/"
        elif points_up(relative, target):
            yield f"{path}:{number}: {folder} lies below {target} and must not include it"


def main():
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).parent.parent / "src")
    files = sorted(path for path in root.rglob("*") if path.is_file())
    faults = [fault for path in files for fault in faults_of(path, root)]
    faults += [f"{root / hub}: is named as a hub and is not there" for hub in sorted(HUBS) if not (root / hub).is_file()]
    print("\n".join(faults) if faults else f"Layers: {len(files)} files, all in their place.")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
