#!/usr/bin/env python3
"""Paints the demo and plays it through, unseen: it must make no mistake that the engine could report. The scenes of the
theatre must each show a picture of their own. The tale is played to its end, by a player who first tries the shut door
and the wrong rope; the end is told by the INI file. Then both are played once more from the demo's binary form alone.

    demo_test.py --host build/debug/footlight
"""

import argparse
import pathlib
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests" / "games"))
import png  # noqa: E402
import run_game  # noqa: E402

SHOTS = {250: "overture", 700: "night", 1400: "voyage", 2100: "day", 2950: "overture again"}

# The tale: how many ticks to wait, and then what the mouse does.
DOOR, DRAWER, KEY, CAT = (680, 300), (350, 385), (350, 385), (470, 490)
GOLD, BLUE, RED = (500, 300), (390, 300), (610, 300)
TALE = [
    (60, "click", (400, 300)),  # out of the theatre
    (40, "click", DOOR),
    (330, "click", CAT),
    (20, "click", DRAWER),
    (220, "drag", KEY, (200, 500)),  # not the door: it lies in the drawer again
    (20, "drag", KEY, DOOR),
    (260, "click", DOOR),
    (120, "click", RED),  # the wrong rope
    (300, "click", GOLD),
    (180, "click", BLUE),
    (120, "click", RED),
    (500, "click", (400, 300)),  # back to the theatre
    (60, "wait", (0, 0)),
]


def events(steps):
    """The lines for --input, and how many ticks they take."""
    lines, tick = [], 0
    for wait, what, *places in steps:
        tick += wait
        if what == "wait":
            continue
        lines += [f"{tick} move {places[0][0]} {places[0][1]}", f"{tick + 2} down left"]
        if what == "drag":
            (x, y), (to_x, to_y) = places
            lines += [f"{tick + 4 + i} move {x + (to_x - x) * i // 8} {y + (to_y - y) * i // 8}" for i in range(1, 9)]
            tick += 10
        tick += 4
        lines.append(f"{tick} up left")
    return "\n".join(lines) + "\n", tick


def run(host, game, arguments):
    command = [host, "-window", "--headless", "--diagnose", "stop", *arguments]
    return subprocess.run(command, cwd=game, stdin=subprocess.DEVNULL, timeout=250).returncode


def theatre_plays(host, game, work):
    shots = [word for tick in SHOTS for word in ("--shot", f"{tick}:{work / str(tick)}.png")]
    status = run(host, game, ["--ticks", str(max(SHOTS)), *shots])
    if status != 0:
        print(f"demo: the theatre ended with status {status}")
        return False
    # Low on the stage the scenes are curtain, dark sea, rosy sea and grass.
    seen = {name: png.read(work / f"{tick}.png").at(400, 470) for tick, name in SHOTS.items()}
    print(f"demo: {seen}")
    scenes = {seen[name] for name in ("overture", "night", "voyage", "day")}
    return len(scenes) == 4 and seen["overture"] == seen["overture again"]


def tale_ends(host, game, work):
    lines, ticks = events(TALE)
    (work / "tale.txt").write_text(lines)
    status = run(host, game, ["--ticks", str(ticks), "--input", work / "tale.txt"])
    ini = game / "footlight.ini"
    told = ini.read_text() if ini.is_file() else ""
    print(f"demo: the tale ended with status {status} and {told!r}")
    return status == 0 and "[FINALE]" in told and "ENDED=1" in told


def main():
    parser = argparse.ArgumentParser(description="Plays the demo through, unseen.")
    parser.add_argument("--host", required=True, type=pathlib.Path)
    host = parser.parse_args().host.resolve()

    work = pathlib.Path(tempfile.mkdtemp(prefix="footlight-demo-"))
    try:
        game = work / "demo"
        shutil.copytree(ROOT / "demo", game, ignore=shutil.ignore_patterns("*.img", "*.ann", "*.wav", "*.ini"))
        subprocess.run([ROOT / "tools" / "make_demo.py", game], check=True, stdout=subprocess.DEVNULL)
        if not (theatre_plays(host, game, work) and tale_ends(host, game, work)):
            return 1
        (game / "footlight.ini").unlink()
        run_game.to_binary(host, game, ["-window"])
        return 0 if theatre_plays(host, game, work) and tale_ends(host, game, work) else 1
    finally:
        shutil.rmtree(work)


if __name__ == "__main__":
    sys.exit(main())
