#!/usr/bin/env python3
"""Paints the demo and plays it through, unseen: it must make no mistake that the engine could report. The scenes of the
theatre must each show a picture of their own. The tale is played to its end, by a player who writes a name, drags a
question about, and tries the shut door and the wrong rope first; the end is told by the INI file. While the figure
speaks its mouth must move, its line be shown and its voice be heard. The theatre is played once more from the
demo's binary form alone; fonts are not stored there, so the tale is not.

    demo_test.py --host build/debug/footlight --font-tool build/debug/footlight-font
"""

import argparse
import pathlib
import shutil
import subprocess
import sys
import tempfile
import wave

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "tests" / "games"), str(ROOT / "tools")]
import make_demo  # noqa: E402
import png  # noqa: E402
import run_game  # noqa: E402
import synth  # noqa: E402

SHOTS = {250: "overture", 700: "night", 1400: "voyage", 2100: "day", 2950: "overture again"}

# The tale: how many ticks to wait, and then what the player does.
DOOR, DRAWER, KEY, CAT = (680, 300), (350, 385), (350, 385), (470, 490)
GOLD, BLUE, RED = (500, 300), (390, 300), (610, 300)
ANYWHERE, EXIT, STAY, LEAVE = (400, 300), (768, 34), (494, 355), (306, 355)
TITLE, LOWER = (400, 195), (460, 265)
ENTER, ESCAPE, BACKSPACE, SHIFT = 28, 1, 14, 42
ANN = [[SHIFT, 30], [49], [49]]  # keys, held together
SILENCE, SPEECH, THANKS = 130, range(170, 240, 7), 2620  # ticks: before he greets, while he does, in the finale
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
    (750, "click", ANYWHERE),  # back to the theatre
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


def play(host, game, work, steps, *arguments, until=None):
    lines, ticks = events(steps)
    (work / "input.txt").write_text(lines)
    status = run(host, game, ["--ticks", str(until or ticks), "--input", work / "input.txt", *arguments])
    ini = game / "footlight.ini"
    told = ini.read_text() if ini.is_file() else ""
    return status, told


def tale_ends(host, game, work):
    ticks = [SILENCE, *SPEECH, THANKS]
    status, told = play(host, game, work, TALE, *(word for tick in ticks for word in ("--shot", f"{tick}:{work / str(tick)}.png")))
    print(f"demo: the tale ended with status {status} and {told!r}")
    return status == 0 and "PLAYER=Ann" in told and "ENDED=1" in told


def shows_a_line(picture):
    """Whether letters stand at the edge of the floor."""
    return any(picture.at(x, y) > (230, 200, 120) for y in range(570, 594) for x in range(80, 720))


def line_is_seen(work):
    """Tells also whether the mouth moved; call it after tale_ends."""
    silence, *speech, thanks = (png.read(work / f"{tick}.png") for tick in (SILENCE, *SPEECH, THANKS))
    faces = {bytes(value for y in range(440, 456) for x in range(110, 131) for value in picture.at(x, y)) for picture in speech}
    shown = [shows_a_line(picture) for picture in (silence, *speech, thanks)]
    print(f"demo: {len(faces)} faces while a line is shown: {shown}")
    return len(faces) >= 3 and shown == [False] + [True] * (len(speech) + 1)


def record(host, game, work):
    """What is played up to the end of the greeting: what comes before he speaks, and the rest."""
    sound = work / "sound.wav"
    if play(host, game, work, TALE, "--record", sound, until=SPEECH.stop)[0] != 0:
        return None
    with wave.open(str(sound), "rb") as file:
        before = file.readframes(file.getframerate() * SILENCE * 16 // 1000)
        return before, file.readframes(file.getnframes())


def voice_is_heard(host, game, work):
    """Without a voice the same game plays the same sounds until he speaks."""
    spoken = record(host, game, work)
    for name, text in make_demo.lines(game):
        synth.save(game / "Wavs" / f"{name.lower()}.wav", [0.0] * len(synth.speech(text)))
    dumb = record(host, game, work)
    return None not in (spoken, dumb) and spoken[0] == dumb[0] and spoken[1] != dumb[1]


def tale_is_left(host, game, work):
    shot = work / "left.png"
    ticks = events(RETURN)[1]
    status, told = play(host, game, work, RETURN, "--shot", f"{ticks}:{shot}")
    curtain = png.read(shot).at(400, 300)
    print(f"demo: left with status {status} and {told!r} in front of {curtain}")
    return status == 0 and "PLAYER=friend" in told and curtain[0] > 3 * curtain[1]


def says_what_is_missing(work):
    maker = [ROOT / "tools" / "make_demo.py", work / "none", "--font-tool", work / "no-tool"]
    done = subprocess.run(maker, capture_output=True, text=True)
    return done.returncode == 1 and "footlight-font is missing" in done.stderr


CHECKS = [theatre_plays, tale_ends, tale_is_left, voice_is_heard]


def main():
    parser = argparse.ArgumentParser(description="Plays the demo through, unseen.")
    parser.add_argument("--host", required=True, type=pathlib.Path)
    parser.add_argument("--font-tool", required=True, type=pathlib.Path)
    options = parser.parse_args()
    host = options.host.resolve()

    work = pathlib.Path(tempfile.mkdtemp(prefix="footlight-demo-"))
    try:
        game = work / "demo"
        shutil.copytree(ROOT / "demo", game, ignore=shutil.ignore_patterns("*.img", "*.ann", "*.wav", "*.fnt", "*.ini"))
        subprocess.run([ROOT / "tools" / "make_demo.py", game, "--font-tool", options.font_tool], check=True, stdout=subprocess.DEVNULL)
        failed = [check.__name__ for check in CHECKS if not check(host, game, work)]
        failed += [check.__name__ for check in (line_is_seen, says_what_is_missing) if not check(work)]
        (game / "footlight.ini").unlink(missing_ok=True)
        run_game.to_binary(host, game, ["-window"])
        failed += ["theatre_plays from its binary form"] if not theatre_plays(host, game, work) else []
        print(f"demo: failed: {failed or 'nothing'}")
        return 1 if failed else 0
    finally:
        shutil.rmtree(work)


if __name__ == "__main__":
    sys.exit(main())
