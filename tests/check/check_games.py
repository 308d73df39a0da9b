#!/usr/bin/env python3
"""Checks the definitions of the demo and of all games under tests/games with footlight-check.

    check_games.py --tool build/debug/footlight-check --font-tool build/debug/footlight-font

Nothing may be found in them, but for what a game's expect.json lists under "check", the findings without the game's
folder, or null where the tool cannot work. Every definition file of a game must have been read.
"""

import argparse
import json
import pathlib
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests" / "games"))
import game_folder  # noqa: E402
TIME_LIMIT = 100  # seconds


def run(tool, *words):
    done = subprocess.run([tool, *map(str, words)], stdin=subprocess.DEVNULL, capture_output=True, timeout=TIME_LIMIT)
    return done.returncode, done.stdout.decode("utf-8"), done.stderr.decode("utf-8", "replace")


def data_root(game, words):
    """The folder that the game's own command line names."""
    for option, value in zip(words, words[1:]):
        if option in ("-path", "/path"):
            for folder in game.iterdir():
                if folder.name.lower() == value.lower():
                    return folder
    return game


def definition_files(game, data):
    for folder in {game, data}:
        for part in folder.iterdir():
            if part.name in ("Dane", "COMMON"):
                yield from (path for path in part.rglob("*") if path.suffix.lower() in (".cnv", ".def"))


def check(tool, game, expect):
    data = data_root(game, expect.get("args", []))
    where = [data] if data == game else [data, "--root", game]
    status, output, errors = run(tool, *where)
    expected = expect.get("check", [])
    if expected is None:
        return [] if status == 2 and errors else [f"{game}: could be checked: {output}{errors}"]
    found = [line.removeprefix(f"{game}/") for line in output.splitlines()]
    faults = [f"{game}: found: {line}" for line in found if line not in expected]
    faults += [f"{game}: not found: {line}" for line in expected if line not in found]
    if status != (1 if found else 0):
        faults.append(f"{game}: exit status {status}: {errors}")
    files = {pathlib.Path(line).resolve() for line in run(tool, *where, "--files")[1].splitlines()}
    # What stands below the other root is not the game's when both have it.
    missed = [path for path in definition_files(game, data) if path.resolve() not in files]
    missed = [path for path in missed if not (data != game and path.name == "application.def")]
    return faults + [f"{path}: was not read" for path in missed]


def check_json(tool):
    """The form for editors says the same as the lines."""
    faults = []
    with tempfile.TemporaryDirectory() as folder:
        game = pathlib.Path(folder)
        (game / "Dane").mkdir()
        (game / "Dane" / "application.def").write_bytes(b'OBJECT="\xb9\\\x01"\nDEF:GAME(TYPE=APPLICATON)\n')
        status, output, _ = run(tool, game, "--json")
        lines = [
            f"{f['file']}:{f['line']}: {f['kind']}: {f['text']}"
            + (f" (did you mean {f['suggestion']}?)" if f["suggestion"] else "")
            for f in json.loads(output)
        ]
        if status != 1 or len(lines) != 3 or lines != run(tool, game)[1].splitlines():
            faults.append(f"--json: status {status}: {output}")
    return faults


def check_bad_words(tool):
    for words in ([], ["--no-such-option"], ["/no/such/folder"], [ROOT], [ROOT / "demo", "--language", "XXX"]):
        status, output, errors = run(tool, *words)
        if status != 2 or output or "footlight-check: " not in errors:
            yield f"{words}: exit status {status}, output {output!r}, errors {errors!r}"


def painted_demo(folder, font_tool):
    """The demo with all the files that its definitions name."""
    shutil.copytree(ROOT / "demo", folder, ignore=shutil.ignore_patterns("*.img", "*.ann", "*.wav", "*.fnt", "*.ini"))
    subprocess.run([ROOT / "tools" / "make_demo.py", folder, "--font-tool", font_tool], check=True, stdout=subprocess.DEVNULL)
    return folder


def main():
    parser = argparse.ArgumentParser(description="Checks the definitions of the demo and of all test games.")
    parser.add_argument("--tool", required=True, type=pathlib.Path)
    parser.add_argument("--font-tool", required=True, type=pathlib.Path)
    options = parser.parse_args()
    tool = options.tool.resolve()
    faults = [*check_bad_words(tool), *check_json(tool)]
    games = [path.parent for path in sorted((ROOT / "tests" / "games").glob("*/expect.json"))]
    with tempfile.TemporaryDirectory() as folder:
        faults += check(tool, painted_demo(pathlib.Path(folder).resolve() / "demo", options.font_tool), {})
        for game in games:
            copy = pathlib.Path(folder).resolve() / game.name
            game_folder.copy(game, copy)
            faults += check(tool, copy, json.loads((game / "expect.json").read_text(encoding="utf-8")))
    for fault in faults:
        print(fault)
    print(f"check: {len(games)} games and the demo: {'as expected' if not faults else 'NOT as expected'}")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
