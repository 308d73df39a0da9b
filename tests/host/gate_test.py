#!/usr/bin/env python3
"""Attacks what the program writes and loads: a game makes libraries and asks for them, links and devices stand where the
program will write.

    gate_test.py --host build/debug/footlight
"""

import argparse
import os
import pathlib
import resource
import shutil
import signal
import stat
import struct
import subprocess
import sys
import tempfile

PATIENCE = 60  # seconds
FAULTS = []


def expect(holds, what):
    if not holds:
        FAULTS.append(what)


def run(host, game, *words, **more):
    command = [str(host), "--headless", "--ticks", "4", "--diagnose", "warn", *map(str, words)]
    return subprocess.run(
        command, cwd=game, stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=PATIENCE, **more
    )


def make_game(folder, scenes, application=""):
    """`scenes` maps names to definitions; each is a scene of its own."""
    data = folder / "Dane"
    data.mkdir(parents=True)
    for name, text in scenes.items():
        (data / f"{name}.cnv").write_text(text)
        application += f"DEF:{name}(TYPE=SCENE{'|DLLS=evil' if name == 'LATER' else ''})\n"
    (data / "application.def").write_text(f"DEF:GAME(TYPE=APPLICATION|SCENES={','.join(scenes)})\n" + application)
    return folder


# The first scene makes the library, the next one asks for it; only a module leaves a MODULEMARK.
THIEF = """OBJECT=FIRST
FIRST:ONINIT={SYSTEM^COPYFILE("$COMMON\\picture.img","$evil.so");SYSTEM^COPYFILE("$COMMON\\picture.img","$mods\\evil.so");GAME^GOTO("LATER");}
"""
LATER = """OBJECT=LATER
LATER:ONINIT={MARK^SET(MODULEMARK);}
DEF:MARK(TYPE=STRING|VALUE=none|TOINI=TRUE)
"""


def mark_of(game):
    """What the scene LATER saw: the module's 7, or the bare name."""
    text = (game / "footlight.ini").read_text()
    return text.split("MARK=")[1].split("\n")[0] if "MARK=" in text else None


def try_modules(host, work):
    module = host.parent / "modules" / "sample_module.so"
    game = make_game(work / "thief", {"FIRST": THIEF, "LATER": LATER})
    (game / "COMMON").mkdir()
    (game / "mods").mkdir()
    shutil.copyfile(module, game / "COMMON" / "picture.img")
    shutil.copy(host, game / "footlight")
    (work / "way").symlink_to(game / "mods")
    (work / "links").mkdir()
    (work / "links" / "evil.so").symlink_to(game / "evil.so")
    (work / "good").mkdir()
    shutil.copyfile(module, work / "good" / "evil.so")

    # The program's name, the words, and whether the module is loaded.
    rows = [
        (game / "footlight", [], False),  # a program that lies in the game's own folder
        (host, ["--modules", work / "links"], False),  # a link to what the game made
        (host, ["--modules", work / "good"], True),
    ]
    for program, words, loads in rows:
        (game / "footlight.ini").unlink(missing_ok=True)
        (game / "evil.so").unlink(missing_ok=True)
        done = run(program, game, *words)
        expect(done.returncode == 0, f"modules {words}: status {done.returncode}: {done.stderr}")
        expect((game / "evil.so").is_file(), f"modules {words}: the game did not make its library")
        mark = mark_of(game)
        expect(mark == ("7" if loads else "MODULEMARK"), f"modules {words}: the scene saw {mark}")
        expect(loads or "evil.dll" in done.stderr, f"modules {words}: no report: {done.stderr}")

    (game / "footlight.ini").unlink()
    for folder in (game, game / "mods", work / "way", "mods", ".", "../thief/mods", work / "absent", module):
        done = run(host, game, "--modules", folder)
        expect(done.returncode == 1 and f"--modules: {folder}: " in done.stderr, f"--modules {folder}: {done.stderr}")
        expect(not (game / "footlight.ini").exists(), f"--modules {folder}: the game ran")
    # The folder of -path is a place for writing too.
    other = work / "data"
    shutil.copytree(game / "Dane", other / "Dane")
    done = run(host, work / "good", "-path", other, "--modules", other)
    expect(done.returncode == 1 and "may write" in done.stderr, f"-path and --modules: {done.stderr}")


# Everything that a game writes: the page, the INI file, a picture, an array, a copy, coded text.
WRITER = """OBJECT=MAIN
MAIN:ONINIT={LIST^ADD(1);LIST^SAVE("list.arr");GAME^PRINT();SYSTEM^COPYFILE("$COMMON\\note.txt","$COMMON\\copy.txt");VALUE^SET(2);}
DEF:LIST(TYPE=ARRAY)
DEF:VALUE(TYPE=INTEGER|VALUE=1|TOINI=TRUE)
"""
WRITTEN = ["DocPrint.png", "footlight.ini", "Dane/list.arr", "COMMON/copy.txt"]


def plant(kind, path, outside):
    if kind == "link":
        path.symlink_to(outside)
    elif kind == "dangling link":
        path.symlink_to(outside.with_name("made"))
    elif kind == "device":
        path.symlink_to("/dev/full")
    elif kind == "pipe":
        os.mkfifo(path)
    elif kind == "folder":
        path.mkdir()


def fresh_writer(folder):
    shutil.rmtree(folder, ignore_errors=True)
    make_game(folder, {"MAIN": WRITER})
    (folder / "COMMON").mkdir()
    (folder / "COMMON" / "note.txt").write_text("note")
    return folder


def nature(path):
    return stat.S_IFMT(path.lstat().st_mode)


def try_what_games_write(host, work):
    """Whatever stands under a name that the game writes stays what it is, with a report, unless it is a plain file."""
    outside = work / "outside" / "kept.txt"
    outside.parent.mkdir()
    outside.write_text("kept")
    game = fresh_writer(work / "writer")
    done = run(host, game)
    expect(not done.stderr, f"the writer by itself: {done.stderr}")
    for name in WRITTEN:
        expect((game / name).is_file(), f"the writer by itself: no {name}")
    for name in WRITTEN:
        for kind in ("link", "dangling link", "device", "pipe", "folder"):
            game = fresh_writer(work / "writer")
            place = game / name
            plant(kind, place, outside)
            before = nature(place)
            done = run(host, game)
            case = f"{kind} at {name}"
            expect(done.returncode == 0, f"{case}: status {done.returncode}")
            expect(nature(place) == before, f"{case}: it was replaced")
            expect(place.stem in done.stderr or name.startswith("COMMON"), f"{case}: no report: {done.stderr}")
            expect([path.name for path in outside.parent.iterdir()] == ["kept.txt"], f"{case}: written outside")
            expect(outside.read_text() == "kept", f"{case}: written through")
            others = [other for other in WRITTEN if other != name]
            expect(all((game / other).is_file() for other in others), f"{case}: another file is missing")
    # Copies of definitions beside them, which -code and -decode ask for.
    game = fresh_writer(work / "writer")
    (game / "Dane" / "MAIN.cnv.coded").symlink_to(outside)
    done = run(host, game, "-code")
    expect((game / "Dane" / "application.def.coded").is_file(), f"-code: no copy: {done.stderr}")
    shutil.copyfile(game / "Dane" / "application.def.coded", game / "Dane" / "application.def")
    (game / "Dane" / "application.def.decoded").symlink_to(outside)
    run(host, game, "-decode")
    expect(outside.read_text() == "kept", "-code or -decode wrote through a link")
    # Names beside the targets mean nothing.
    game = fresh_writer(work / "writer")
    for name in WRITTEN:
        plant("link", game / (name + ".part"), outside)
        plant("link", game / (name + ".tmp"), outside)
    run(host, game)
    expect(all((game / name).is_file() for name in WRITTEN) and outside.read_text() == "kept", "links beside the targets")


def try_what_options_write(host, work):
    """The status and the message of each option whose file cannot be."""
    game = fresh_writer(work / "options")
    outside = work / "options.txt"
    outside.write_text("kept")
    (game / "link").symlink_to(outside)
    os.mkfifo(game / "pipe")
    before = sorted(path.name for path in game.iterdir())
    for option, status in (("--shot", 4), ("--record", 1), ("--record-input", 1)):
        for target in ("link", "pipe", "/dev/full", "/dev/null", "Dane", "none/file"):
            done = run(host, game, option, ("2:" if option == "--shot" else "") + target)
            case = f"{option} {target}"
            expect(done.returncode == status, f"{case}: status {done.returncode}")
            expect(f"footlight: {option}: {target}: " in done.stderr, f"{case}: {done.stderr}")
    expect(outside.read_text() == "kept", "an option wrote through a link")
    expect(stat.S_ISCHR(os.stat("/dev/full").st_mode), "an option replaced a device")
    expect(set(path.name for path in game.iterdir()) - set(before) <= set(WRITTEN), "an option left something behind")


# A picture, an array and a page that are larger than the room on the disk; the INI file is not.
SAVER = """OBJECT=MAIN
MAIN:ONINIT={SEEN^GETBPP();PICTURE^SAVE("saved.img");LIST^LOAD("old.arr");LIST^ADD(LONG);LIST^SAVE("list.arr");GAME^PRINT();VALUE^SET(2);}
DEF:SEEN(TYPE=CANVAS_OBSERVER)
DEF:PICTURE(TYPE=IMAGE|FILENAME=large.img)
DEF:LIST(TYPE=ARRAY)
DEF:LONG(TYPE=STRING|VALUE=%s)
DEF:VALUE(TYPE=INTEGER|VALUE=1|TOINI=TRUE)
"""


def try_a_full_disk(host, work):
    game = make_game(work / "full", {"MAIN": SAVER % ("x" * 5000)})
    header = struct.pack("<4s9i", b"PIK\0", 50, 50, 16, 5000, 0, 0, 0, 0, 0)
    (game / "Dane" / "large.img").write_bytes(header + bytes(5000))
    (game / "Dane" / "list.arr").write_text("old")

    def leave_little():
        signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
        resource.setrlimit(resource.RLIMIT_FSIZE, (3000, resource.RLIM_INFINITY))

    done = run(host, game, preexec_fn=leave_little)
    expect(done.returncode == 0, f"a full disk: status {done.returncode}")
    for name in ("saved.img", "list.arr", "DocPrint"):
        expect(name in done.stderr, f"a full disk: no report of {name}: {done.stderr}")
    expect("VALUE=2" in (game / "footlight.ini").read_text(), "a full disk: the INI file lost a value")
    expect((game / "Dane" / "list.arr").read_text() == "old", "a full disk: an old file went")
    left = [path.name for path in game.rglob("*") if path.name.startswith(".footlight")]
    expect(not left and not (game / "DocPrint.png").exists(), f"a full disk: {left} stayed")


def try_sizes(host, work):
    """A screen that cannot be gets the usual size."""
    game = fresh_writer(work / "sizes")
    for words in (["-1", "5000000000"], ["0"], ["1024", "0"], ["16385", "1"], ["16000", "16001"]):
        done = run(host, game, "-window", "-res", *words, "--shot", "2:shot.png")
        size = struct.unpack(">2I", (game / "shot.png").read_bytes()[16:24])
        expect(done.returncode == 0 and size == (800, 600) and "-res: " in done.stderr, f"-res {words}: {size} {done}")


def try_what_was_left(host, work):
    """Temporary files of processes that are no more go at the start, those of living ones stay."""
    game = fresh_writer(work / "left")
    ended = subprocess.Popen(["true"])
    ended.wait()
    living = game / f".footlight-{os.getpid()}-1.tmp"
    dead = [folder / f".footlight-{ended.pid}-7.tmp" for folder in (game, game / "Dane", game / "COMMON")]
    for path in (living, *dead):
        path.write_text("half")
    run(host, game)
    expect(living.exists(), "what was left: a living process lost its file")
    expect(not any(path.exists() for path in dead), "what was left: it is still there")


def main():
    parser = argparse.ArgumentParser(description="Attacks what the program writes and loads.")
    parser.add_argument("--host", required=True, type=pathlib.Path)
    host = parser.parse_args().host.resolve()
    work = pathlib.Path(tempfile.mkdtemp(prefix="footlight-gate-"))
    try:
        try_modules(host, work)
        try_what_games_write(host, work)
        try_what_options_write(host, work)
        try_a_full_disk(host, work)
        try_what_was_left(host, work)
        try_sizes(host, work)
    finally:
        shutil.rmtree(work)
    print("\n".join(f"gate: {fault}" for fault in FAULTS) or "gate: as expected")
    return 1 if FAULTS else 0


if __name__ == "__main__":
    sys.exit(main())
