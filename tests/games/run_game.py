#!/usr/bin/env python3
"""Runs one game by the host, headless, and judges what it leaves.

    run_game.py --host build/debug/footlight tests/games/NAME

The folder NAME holds a game ("Dane/MAIN/MAIN.cnv" and so on; see game_folder.py) and "expect.json":

    args             more words for the host, a list                         (default: none)
    modules          whether external modules are loaded, from the folder "modules" beside the host
                                                                             (default: false)
    ticks            how many ticks to run                                   (default: 60)
    input            a file of scripted events in the folder                 (default: none)
    ini              {"SECTION": {"KEY": "value" or null}}: exact values, null for "must not be there"; names of
                     sections and keys are compared without case
    files            {"relative\\path": content}: content is the exact text (code page 1250), {"bytes_hex": "..."},
                     or null for "must not be there"
    shots            {"TICK": "picture.png"}: the picture in the folder that the screen must equal after that tick
    exit             the exit status                                         (default: 0)
    stderr_contains  texts that standard error must hold, a list             (default: none)
    check            what the checker for authors finds in the definitions, a list of its lines without the
                     game's folder, null where it cannot work; judged by tests/check/check_games.py
                                                                             (default: nothing)

The game runs twice, the second time with --literal, and with --diagnose warn where it does not say otherwise: neither
what the engine remembers of statements nor what it reports may show. A third run plays the binary form of the game, without
the text that it was stored from; "text_only.json" lists the games that cannot, by the reason. It runs in a copy of the folder, so it may write.
Every difference is printed; the exit status is 1 when there is one. A wrong picture leaves itself and a picture of the
differences in out/games/NAME. With --keep the copy stays and its place is printed; with --accept the shots become the
new expectation.
"""

import argparse
import json
import pathlib
import shutil
import subprocess
import sys
import tempfile

import game_folder
import png

TIME_LIMIT = 100  # seconds


def read_ini(path):
    """Sections and keys in lower case; of two equal keys the first counts."""
    sections = {}
    current = None
    for line in path.read_bytes().decode("cp1250", "replace").splitlines():
        line = line.strip()
        if line.startswith("[") and "]" in line:
            current = sections.setdefault(line[1 : line.index("]")].strip().lower(), {})
        elif current is not None and "=" in line and not line.startswith(";"):
            key, value = line.split("=", 1)
            current.setdefault(key.strip().lower(), value.strip())
    return sections


def find_file(folder, relative):
    """The file of that name, its parts compared without case; None when there is none."""
    place = folder
    for part in relative.replace("\\", "/").split("/"):
        if not place.is_dir():
            return None
        matches = [child for child in place.iterdir() if child.name.lower() == part.lower()]
        if not matches:
            return None
        place = matches[0]
    return place


def judge_ini(folder, name, expected):
    path = folder / name
    actual = read_ini(path) if path.is_file() else {}
    if expected and not path.is_file():
        yield f"{name}: was not written"
    for section, keys in expected.items():
        for key, value in keys.items():
            found = actual.get(section.lower(), {}).get(key.lower())
            if found != value:
                yield f"{name}: [{section}] {key}: expected {value!r}, found {found!r}"


def judge_files(folder, expected):
    for relative, content in expected.items():
        path = find_file(folder, relative)
        if content is None:
            if path is not None:
                yield f"{relative}: must not be there"
            continue
        if path is None:
            yield f"{relative}: is missing"
            continue
        wanted = bytes.fromhex(content["bytes_hex"]) if isinstance(content, dict) else content.encode("cp1250")
        found = path.read_bytes()
        if found != wanted:
            yield f"{relative}: expected {wanted!r}, found {found!r}"


def judge_shots(game, shots, accept, out):
    """`shots` maps names of expected pictures to the pictures taken."""
    for name, taken in shots.items():
        if not taken.is_file():
            yield f"{name}: no picture was taken"
            continue
        if accept:
            shutil.copyfile(taken, game / name)
            continue
        if not (game / name).is_file():
            yield f"{name}: there is no such picture to compare with"
            continue
        expected, actual = png.read(game / name), png.read(taken)
        if expected == actual:
            continue
        out.mkdir(parents=True, exist_ok=True)
        shutil.copyfile(taken, out / name)
        if expected.size != actual.size:
            yield f"{name}: expected {expected.size}, found {actual.size} (see {out / name})"
            continue
        difference, count, first = png.difference(expected, actual)
        png.write(out / f"difference-{name}", difference)
        yield f"{name}: {count} pixels differ, first at {first} (see {out / ('difference-' + name)})"


def pack(host, folder, work):
    """Moves the game into a big file; only what the host reads by itself stays."""
    big = work / "game.big"
    command = [str(host), "--headless", "-bigfile", "--folder", str(folder), "--out", str(big)]
    subprocess.run(command, cwd=work, check=True, stdout=subprocess.DEVNULL, timeout=TIME_LIMIT)
    for child in list(folder.iterdir()):
        if child.is_dir():
            shutil.rmtree(child)
    return ["--big", str(big)]


def to_binary(host, folder, words):
    """Stores the binary form of the game and takes away the text that it stands for."""
    command = [str(host), "--headless", "-2bin", *words]
    subprocess.run(command, cwd=folder, check=True, stdout=subprocess.DEVNULL, timeout=TIME_LIMIT)
    for stored in list(folder.rglob("*.bin")):
        text = find_file(stored.parent, "application.def" if stored.name == "application.bin" else stored.stem + ".cnv")
        if text is not None:
            text.unlink()


def is_text_only(game):
    """Whether the binary form does not hold all that the game needs."""
    reasons = json.loads(pathlib.Path(__file__).with_name("text_only.json").read_text(encoding="utf-8"))
    return any(game.name in games for games in reasons.values())


def run(host, game, options, literal=False, binary=False):
    expect = json.loads((game / "expect.json").read_text(encoding="utf-8"))
    unknown = set(expect) - {"args", "ticks", "input", "ini", "files", "shots", "exit", "stderr_contains", "check",
                             "modules"}
    faults = [f"expect.json: '{name}' means nothing" for name in sorted(unknown)]

    work = pathlib.Path(tempfile.mkdtemp(prefix=f"footlight-{game.name}-"))
    folder = work / "game"
    game_folder.copy(game, folder)
    shots = {}
    command = [str(host), "--headless", "--ticks", str(expect.get("ticks", 60)), "--ini", "footlight.ini"]
    if expect.get("modules"):
        command += ["--modules", str(host.parent / "modules")]
    if "input" in expect:
        command += ["--input", expect["input"]]
    for tick, name in expect.get("shots", {}).items():
        shots[name] = work / name
        command += ["--shot", f"{tick}:{shots[name]}"]
    if options.packed:
        command += pack(host, folder, work)
    command += expect.get("args", [])
    if binary:
        modules = ["--modules", str(host.parent / "modules")] if expect.get("modules") else []
        to_binary(host, folder, modules + expect.get("args", []))
    way = game.name + (" (read literally)" if literal else " (in its binary form)" if binary else "")
    if literal:
        command += ["--literal"] if "--diagnose" in command else ["--literal", "--diagnose", "warn"]

    try:
        done = subprocess.run(command, cwd=folder, stdin=subprocess.DEVNULL, capture_output=True, timeout=TIME_LIMIT)
        errors = done.stderr.decode("utf-8", "replace")
        if done.returncode != expect.get("exit", 0):
            faults.append(f"exit status: expected {expect.get('exit', 0)}, found {done.returncode}")
        faults += [f"standard error lacks {text!r}" for text in expect.get("stderr_contains", []) if text not in errors]
    except subprocess.TimeoutExpired as expired:
        errors = (expired.stderr or b"").decode("utf-8", "replace")
        faults.append(f"still running after {TIME_LIMIT} seconds")

    faults += judge_ini(folder, "footlight.ini", expect.get("ini", {}))
    faults += judge_files(folder, expect.get("files", {}))
    out = pathlib.Path(__file__).resolve().parents[2] / "out" / "games" / game.name
    faults += judge_shots(game, shots, options.accept, out)

    if faults and errors:
        print(f"{way}: standard error:\n{errors}", end="")
    for fault in faults:
        print(f"{way}: {fault}")
    if options.keep:
        print(f"{way}: ran in {folder}: {' '.join(command)}")
    else:
        shutil.rmtree(work)
    return not faults


def main():
    parser = argparse.ArgumentParser(description="Runs one game by the host, headless, and judges what it leaves.")
    parser.add_argument("--host", required=True, type=pathlib.Path)
    parser.add_argument("--keep", action="store_true", help="keep the copy that the game ran in")
    parser.add_argument("--packed", action="store_true", help="run it from a big file alone, where it must leave the same")
    parser.add_argument("--binary", action="store_true", help="run it from its binary form alone")
    parser.add_argument("--accept", action="store_true", help="make the shots the new expectation")
    parser.add_argument("game", type=pathlib.Path)
    options = parser.parse_args()
    ways = [{}] if options.accept else [{"binary": True}] if options.binary else [{}, {"literal": True}]
    if len(ways) > 1 and not options.packed and not is_text_only(options.game):
        ways.append({"binary": True})
    good = all([run(options.host.resolve(), options.game.resolve(), options, **way) for way in ways])
    print(f"{options.game.name}: {'as expected' if good else 'NOT as expected'}")
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
