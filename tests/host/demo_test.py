#!/usr/bin/env python3
"""Paints the demo and plays it through, unseen: it must make no mistake that the engine could report. The scenes of the
theatre must each show a picture of their own. The tale is played to its end, by a player who first tries the shut door
and the wrong rope; the end is told by the INI file.

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

SHOTS = {250: "overture", 700: "night", 1400: "voyage", 2100: "day", 2950: "overture again"}

# The tale: how many ticks to wait, and then what the player does.
DOOR, DRAWER, KEY, CAT = (680, 300), (350, 385), (350, 385), (470, 490)
GOLD, BLUE, RED = (500, 300), (390, 300), (610, 300)
ANYWHERE, EXIT, STAY, LEAVE = (400, 300), (768, 34), (494, 355), (306, 355)
TITLE, LOWER = (400, 195), (460, 265)
ENTER, ESCAPE, BACKSPACE, SHIFT = 28, 1, 14, 42
ANN = [[SHIFT, 30], [49], [49]]  # keys, held together
SPEECH = range(190, 280)  # the ticks in which he greets
TALE = [
    (60, "click", ANYWHERE),  # out of the theatre
    (40, "keys", *ANN, [ENTER]),
    (190, "click", EXIT),  # he greets; the mark in the corner hears while he speaks
    (20, "drag", TITLE, LOWER),
    (20, "click", (STAY[0] + LOWER[0] - TITLE[0], STAY[1] + LOWER[1] - TITLE[1])),
    (40, "click", ANYWHERE),  # skips a line
    (20, "click", ANYWHERE),
    (20, "click", DOOR),
    (330, "click", ANYWHERE),
    (20, "click", CAT),
    (20, "click", DRAWER),
    (220, "click", ANYWHERE),
    (20, "drag", KEY, (200, 500)),  # not the door: it lies in the drawer again
    (20, "drag", KEY, DOOR),
    (260, "click", DOOR),
    (120, "click", ANYWHERE),
    (20, "click", ANYWHERE),
    (20, "click", RED),  # the wrong rope
    (320, "click", ANYWHERE),
    (20, "click", GOLD),
    (180, "click", BLUE),
    (120, "click", RED),
    (700, "wait"),
    (0, "click", ANYWHERE),  # too early: the player's name is said to the end
    (500, "click", ANYWHERE),  # back to the theatre
    (60, "wait"),
]
# Once more: the name that was kept is rubbed out, and the question is answered with yes.
RETURN = [
    (60, "click", ANYWHERE),
    (40, "keys", [BACKSPACE], [BACKSPACE], [BACKSPACE], [ENTER]),
    (80, "keys", [ESCAPE]),
    (20, "click", LEAVE),
    (60, "wait"),
]


def press(keys, tick):
    """The lines of keys that go down one after the other, and up again in turn."""
    down = [f"{tick + i} keydown {key}" for i, key in enumerate(keys)]
    return down + [f"{tick + len(keys) + i} keyup {key}" for i, key in enumerate(reversed(keys))]


def events(steps):
    """The lines for --input, and how many ticks they take."""
    lines, tick = [], 0
    for wait, what, *details in steps:
        tick += wait
        if what == "keys":
            for keys in details:
                lines += press(keys, tick)
                tick += 2 * len(keys) + 1
        elif what != "wait":
            (x, y), (to_x, to_y) = details[0], details[-1]
            lines += [f"{tick} move {x} {y}", f"{tick + 2} down left"]
            if what == "drag":
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
        return 0 if theatre_plays(host, game, work) and tale_ends(host, game, work) else 1
    finally:
        shutil.rmtree(work)


if __name__ == "__main__":
    sys.exit(main())
