#!/usr/bin/env python3
"""Plays a game with all threads of a real window, the poller's, the timer's and the loudspeaker's, on a display and a
sound device that are not there: two scenes take turns, with music that streams, animations whose frames have sounds,
buttons that are pressed all the time, and a window that loses the focus now and then. Built with the thread sanitizer,
the host fails when two of its threads get in each other's way.

    threads_test.py --host build/tsan/footlight [--ticks N]
"""

import argparse
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
sys.path[:0] = [str(HERE), str(HERE.parent / "games")]
import animations  # noqa: E402
from sound_test import noise, write_wav  # noqa: E402

APPLICATION = """DEF:GAME(TYPE=APPLICATION|EPISODES=EP)
DEF:EP(TYPE=EPISODE|SCENES=A,B|STARTWITH=A)
DEF:A(TYPE=SCENE|PATH=A)
DEF:B(TYPE=SCENE|PATH=B)
"""

# Each scene counts in its own section of the INI file.
SCENE = """DEF:PRESSED(TYPE=INTEGER|VALUE=0|TOINI=TRUE)
DEF:ENTERED(TYPE=INTEGER|VALUE=0|TOINI=TRUE)
DEF:FRAMES(TYPE=INTEGER|VALUE=0|TOINI=TRUE)
DEF:BELL(TYPE=SOUND|FILENAME=bell.wav|ONFINISHED={{BELL^PLAY();}})
DEF:LONG(TYPE=SOUND|FILENAME=long.wav)
DEF:WALKER(TYPE=ANIMO|FILENAME=walker.ann|TOCANVAS=TRUE|VISIBLE=TRUE|PRIORITY=3|FPS=30)
WALKER:ONFINISHED={{WALKER^PLAY("GO");FRAMES^INC();}}
WALKER:ONFRAMECHANGED={{WALKER^MOVE(1,0);}}
DEF:TALKER(TYPE=ANIMO|FILENAME=talker.ann|TOCANVAS=TRUE|VISIBLE=TRUE|PRIORITY=4|FPS=25)
TALKER:ONFINISHED={{TALKER^PLAY("GO");}}
DEF:PAD(TYPE=BUTTON|RECT=0,0,64,48|ENABLE=TRUE|SNDONMOVE=BELL|SNDONCLICK=LONG|PRIORITY=5)
PAD:ONACTION={{PRESSED^INC();LONG^PLAY();}}
DEF:MICE(TYPE=MOUSE)
DEF:KEYS(TYPE=KEYBOARD)
KEYS:ONKEYDOWN={{EP^GOTO("{other}");}}
DEF:CLOCK(TYPE=TIMER|ELAPSE=40|ONTICK={{BELL^SETVOLUME(500);LONG^SETPAN(300);}})
OBJECT=__INIT__
__INIT__:TYPE=BEHAVIOUR
__INIT__:CODE={{ENTERED^INC();{scene}^STARTMUSIC("Wavs\\\\{music}.wav");BELL^PLAY();LONG^PLAY();WALKER^PLAY("GO");TALKER^PLAY("GO");}}
"""


def make_game(folder):
    data, sounds = folder / "Dane", folder / "Wavs"
    sounds.mkdir()
    for name, length in (("bell", 2000), ("long", 60000), ("first", 90000), ("second", 70000), ("step", 900)):
        write_wav(sounds / f"{name}.wav", noise(length, length))
    frames = [animations.frame(12 + i, 10, 4 * i, 20, 0x2222 * (i + 1), 200) for i in range(4)]
    steps = [animations.position(sound="step.wav"), *[animations.position()] * 2, animations.position(sound="bell.wav")]
    event = animations.event("GO", [0, 1, 2, 3], positions=steps)
    for scene, other, music in (("A", "B", "first"), ("B", "A", "second")):
        (data / scene).mkdir(parents=True)
        (data / scene / f"{scene}.cnv").write_text(SCENE.format(scene=scene, other=other, music=music))
        (data / scene / "walker.ann").write_bytes(animations.ann([event], frames))
        (data / scene / "talker.ann").write_bytes(animations.ann([event], frames, flags=0x400000))  # streams its sounds
    (data / "application.def").write_text(APPLICATION)


def events(ticks):
    """A press every 20 ticks, another scene every 140, 30 ticks without the focus every 300."""
    for tick in range(10, ticks - 40):
        if tick % 20 == 10:
            yield f"{tick} move {tick % 60} {tick % 40}"
            yield f"{tick} down left"
        if tick % 20 == 14:
            yield f"{tick} up left"
        if tick % 140 == 0:
            yield f"{tick} keydown 30"
        if tick % 140 == 4:
            yield f"{tick} keyup 30"
        if tick % 300 == 250:
            yield f"{tick} activate 0"
        if tick % 300 == 280:
            yield f"{tick} activate 1"


def main():
    parser = argparse.ArgumentParser(description="Plays a game with all threads of a real window.")
    parser.add_argument("--host", required=True, type=pathlib.Path)
    parser.add_argument("--ticks", type=int, default=1000)
    words = parser.parse_args()

    work = pathlib.Path(tempfile.mkdtemp(prefix="footlight-threads-"))
    try:
        make_game(work)
        (work / "input.txt").write_text("\n".join(events(words.ticks)) + "\n")
        environment = dict(os.environ, SDL_VIDEODRIVER="dummy", SDL_AUDIODRIVER="dummy")
        command = [words.host.resolve(), "-window", "-res", "64", "48", "--diagnose", "stop", "--ticks", str(words.ticks)]
        run = subprocess.run(
            [*command, "--input", "input.txt"], cwd=work, env=environment, stdin=subprocess.DEVNULL, capture_output=True, text=True,
            errors="replace", timeout=280,
        )  # fmt: skip
        told = (work / "footlight.ini").read_text()
        counts = {name: sum(map(int, re.findall(rf"{name}=(\d+)", told))) for name in ("ENTERED", "PRESSED", "FRAMES")}
        print(f"threads: status {run.returncode}, {counts}")
        if run.returncode != 0:
            print(run.stderr[-6000:])
        busy = counts["ENTERED"] > words.ticks // 200 and counts["PRESSED"] > words.ticks // 50 and counts["FRAMES"] > 10
        return 0 if run.returncode == 0 and busy else 1
    finally:
        shutil.rmtree(work)


if __name__ == "__main__":
    sys.exit(main())
