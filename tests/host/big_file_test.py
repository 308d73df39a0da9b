#!/usr/bin/env python3
"""Packs a small game with the host and with footlight-pack, and runs it from big files of all kinds.

    big_file_test.py --host build/debug/footlight --tool build/debug/footlight-pack
"""

import argparse
import os
import pathlib
import struct
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests" / "games"))
import run_game  # noqa: E402

DEFINITIONS = {
    "Dane/application.def": "OBJECT=GAME\nGAME:TYPE=APPLICATION\nGAME:SCENES=MAIN\n"
    "OBJECT=MAIN\nMAIN:TYPE=SCENE\nMAIN:PATH=MAIN\n",
    "Dane/MAIN/MAIN.cnv": "DEF:RAN(TYPE=STRING|VALUE=no|TOINI=TRUE)\nDEF:SAVED(TYPE=STRING|VALUE=no|TOINI=TRUE)\n"
    "OBJECT=MAIN\nMAIN:ONINIT={RAN^SET(\"yes\");SAVED^SET(SYSTEM^COPYFILE(\"note.txt\",\"copy.txt\"));}\n",
    "Dane/MAIN/note.txt": "a note",
}
failed = []


def judge(what, found, expected):
    if found != expected:
        failed.append(what)
        print(f"{what}: expected {expected!r}, found {found!r}")


class Place:
    """A folder with the game in it."""

    def __init__(self, host, folder, game=""):
        self.host, self.folder = host, folder
        for name, text in DEFINITIONS.items():
            path = folder / game / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text)

    def run(self, *words, cwd="."):
        done = subprocess.run([self.host, "--headless", *words], cwd=self.folder / cwd, stdin=subprocess.DEVNULL,
                              capture_output=True, timeout=60)
        return done.returncode, done.stdout.decode(), done.stderr.decode()

    def play(self, what, *words, cwd=".", ran="yes", saved="TRUE"):
        ini = self.folder / cwd / "footlight.ini"
        ini.unlink(missing_ok=True)
        judge(f"{what}: status", self.run("--ticks", "3", *words, cwd=cwd)[0], 0)
        values = run_game.read_ini(ini).get("main", {})
        judge(what, (values.get("ran"), values.get("saved")), (ran, saved))


def check_packing(place):
    status, output, errors = place.run("-bigfile", "--folder", "g", "--out", "game.big")
    judge("packing", (status, errors), (0, ""))
    for line in ("Number of folders: 2.", "Number of files: 3.", "TOC size: 181 bytes.", "File 3 of 3 saved."):
        judge(line, line in output, True)
    made = (place.folder / "game.big").read_bytes()
    judge("name", made[:17], struct.pack("<i", 8) + b"game.big" + struct.pack("<i", 1) + b"\\")
    judge("contents", made[181:], "".join(DEFINITIONS[name] for name in sorted(DEFINITIONS, key=str.lower)[1:]).encode()
          + DEFINITIONS["Dane/application.def"].encode())
    place.run("-bigfile", "--folder", "g", "--out", "named.big", "--name", "NAME")
    judge("named", (place.folder / "named.big").read_bytes()[:8], struct.pack("<i", 4) + b"NAME")
    for words in (["-bigfile"], ["-bigfile", "--folder", "g"], ["--folder", "g", "--out", "x.big"], ["--name", "x"],
                  ["-bigfile", "--folder", "none", "--out", "x.big"]):
        status, _, errors = place.run(*words)
        judge(" ".join(words), (status, bool(errors), (place.folder / "x.big").exists()), (1, True, False))
    judge("no place", place.run("-bigfile", "--folder", "g", "--out", "none/x.big")[0], 2)


def check_playing(place):
    alone = place.folder / "alone"
    alone.mkdir()
    for big in ("../game.big", str(place.folder / "game.big")):
        place.play(f"from {big} alone", "--big", big, cwd="alone")
    judge("saved", (alone / "Dane/MAIN/copy.txt").read_text(), "a note")
    place.play("with a data root that is not there", "--big", "../game.big", "-path", "nowhere", cwd="alone")
    (alone / "data").mkdir()
    place.play("with an empty data root", "--big", "../game.big", "-path", "data", cwd="alone")
    judge("nothing", place.run("--ticks", "3", "--big", "none.big")[0], 2)
    for name, content in (("none", None), ("junk", b"\xff" * 1000), ("empty", b""), ("cut", b"\4\0\0\0game\1\0\0\0\\")):
        if content is not None:
            (place.folder / "g" / f"{name}.big").write_bytes(content)
        place.play(f"{name}: from the disk", "--big", f"{name}.big", cwd="g")
    (place.folder / "sounds/Wavs").mkdir(parents=True)
    place.run("-bigfile", "--folder", "sounds", "--out", "sounds.big")
    place.play("a big file with something else", "--big", "../sounds.big", cwd="g")


def check_tool(place, tool):
    os.symlink(".", place.folder / "g/round")

    def run(*words):
        done = subprocess.run([tool, *words], cwd=place.folder, capture_output=True)
        return done.returncode, done.stdout.decode(), done.stderr.decode()

    status, _, errors = run("build", "g", "tool.big", "--name", "game.big")
    judge("tool", (status, "round: left out: it is a link" in errors), (1, True))
    status, output, _ = run("list", "tool.big")
    judge("list", (status, "         6  Dane/MAIN/note.txt\n" in output), (0, True))
    judge("extract", run("extract", "tool.big", "out")[0], 0)
    for name, text in DEFINITIONS.items():
        judge(name, (place.folder / "out" / name).read_text(), text)


def main():
    parser = argparse.ArgumentParser(description="Packs a small game and runs it from big files.")
    parser.add_argument("--host", required=True, type=pathlib.Path)
    parser.add_argument("--tool", required=True, type=pathlib.Path)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="footlight-big-") as folder:
        place = Place(options.host.resolve(), pathlib.Path(folder), "g")
        check_packing(place)
        check_playing(place)
        check_tool(place, options.tool.resolve())
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
