#!/usr/bin/env python3
"""Checks that files are written and libraries loaded at the gates alone: fails on a call that opens a file for writing,
renames, removes or loads code anywhere but in the few files that are there for it.

    tools/check_gate.py [ROOT]

Comments and texts in quotes do not count. Tests and benchmarks may write as they like.
"""

import pathlib
import re
import sys

FOLDERS = ["src", "tools", "fuzz"]
# What only the file behind it may do; the reason stands there.
WRITING = "writes files beside the gate (see src/platform/posix/atomic_file.h)"
LOADING = "loads code beside the gate (see src/platform/posix/modules.h)"
RULES = [
    (re.compile(r"\b(o|basic_o|basic_)?fstream\b"), WRITING),
    (re.compile(r"\b(fopen|fopen64|fdopen|freopen|creat|creat64|openat|openat2|tmpfile|mkstemps?|mkostemps?|fmemopen)\s*\("), WRITING),
    (re.compile(r"(?<![\w>)])::open(64)?\s*\("), WRITING),
    (re.compile(r"\b(rename|renameat|renameat2|linkat|symlink|symlinkat|truncate|mknod|mkfifo)\s*\("), WRITING),
    (re.compile(r"(?<![\w>)])::(link|unlink|unlinkat|remove)\s*\(|\bstd::remove\s*\(\s*\w+\.c_str"), WRITING),
    (re.compile(r"\bf(ile)?s(ystem)?::(rename|copy|copy_file|create_hard_link|create_symlink|resize_file)\b"), WRITING),
    (re.compile(r"\b(SDL_RWFromFile|SDL_SaveBMP|png_image_write_to_file|jpeg_stdio_dest)\b"), WRITING),
    (re.compile(r"\b(dlopen|dlmopen|SDL_LoadObject)\s*\("), LOADING),
]
POSIX = "src/platform/posix/"
ALLOWED = {
    POSIX + "atomic_file.cpp": WRITING,
    POSIX + "file_system.cpp": WRITING,  # opens to read, and to update in place
    POSIX + "temporaries.cpp": WRITING,  # clears what killed processes left
    POSIX + "modules.cpp": LOADING,
    "src/platform/sdl/display_loss.cpp": LOADING,  # a handle of what is loaded already
}
NOT_CODE = re.compile(r'"(?:\\.|[^"\\])*"|//.*|^\s*#\s*include.*')


def faults_of(path, name):
    """Yields what is wrong with one file, as "file:line: text"."""
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        code = NOT_CODE.sub("", line)
        for rule, text in RULES:
            if rule.search(code) and ALLOWED.get(name) != text:
                yield f"{path}:{number}: {text}"


def main():
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).parent.parent)
    files = sorted(path for folder in FOLDERS for path in (root / folder).rglob("*") if path.suffix in (".h", ".cpp"))
    faults = [fault for path in files for fault in faults_of(path, path.relative_to(root).as_posix())]
    print("\n".join(faults) if faults else f"Gate: {len(files)} files, none writes or loads beside it.")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
