#!/usr/bin/env python3
"""Shows a small game in a real window and on a real full screen, and compares what the glass shows with a screen shot
of the same game run unseen.

    window_test.py --host build/debug/footlight

The display is an X server in memory, started here. It keeps its screen in a file, which is read. The low bits of a
pixel are the display's affair: 5-6-5 pixels may reach a 24-bit screen with or without their low bits filled.
"""

import argparse
import os
import pathlib
import shutil
import struct
import subprocess
import sys
import tempfile
import time

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "games"))
import png  # noqa: E402

DEFINITION = """OBJECT=GAME
GAME:TYPE=APPLICATION
GAME:SCENES=MAIN
OBJECT=MAIN
MAIN:TYPE=SCENE
MAIN:PATH=MAIN
MAIN:BACKGROUND=pattern.img
"""
COUNTING = """DEF:COUNT(TYPE=INTEGER|VALUE=0|TOINI=TRUE)
DEF:CLOCK(TYPE=TIMER|ELAPSE=20|ONTICK={COUNT^INC();})
"""
SCREEN = (1600, 1200)  # twice the engine's screen in either direction
ENGINE = (800, 600)
MASK = (0xF8, 0xF8, 0xF8)  # what every depth has of a channel
PATIENCE = 40  # seconds


class Display:
    """An X server without a screen of glass, on a free number."""

    def __init__(self, folder):
        self.buffer = folder / "Xvfb_screen0"
        reader, writer = os.pipe()
        self.process = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writer), "-screen", "0", f"{SCREEN[0]}x{SCREEN[1]}x24", "-fbdir", str(folder),
             "-nolisten", "tcp", "-nocursor"],
            pass_fds=[writer], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
        )  # fmt: skip
        os.close(writer)
        with os.fdopen(reader) as answer:
            number = answer.readline().strip()
        if not number:
            raise RuntimeError("Xvfb did not start")
        self.name = f":{number}"

    def picture(self):
        """What the screen shows now."""
        data = self.buffer.read_bytes()
        header = struct.unpack_from(">25I", data)
        width, height, row_bytes, colours = header[4], header[5], header[12], header[19]
        start = header[0] + colours * 12
        order = "<" if header[7] == 0 else ">"
        pixels = bytearray()
        for y in range(height):
            row = struct.unpack_from(f"{order}{width}I", data, start + y * row_bytes)
            for pixel in row:
                pixels += bytes((pixel >> 16 & 255, pixel >> 8 & 255, pixel & 255))
        return png.Picture(width, height, bytes(pixels))

    def stop(self):
        self.process.terminate()
        self.process.wait()


def coarse(picture):
    """The picture without the low bits."""
    table = [bytes(value & mask for value in range(256)) for mask in MASK]
    pixels = bytearray(picture.pixels)
    for channel in range(3):
        pixels[channel::3] = pixels[channel::3].translate(table[channel])
    return png.Picture(picture.width, picture.height, bytes(pixels))


def part(picture, left, top, width, height, step=1):
    """Every step-th pixel of a rectangle."""
    rows = []
    for y in range(top, top + height, step):
        row = picture.pixels[3 * (y * picture.width + left) : 3 * (y * picture.width + left + width)]
        rows.append(b"".join(row[3 * x : 3 * x + 3] for x in range(0, width, step)) if step > 1 else row)
    return png.Picture((width + step - 1) // step, (height + step - 1) // step, b"".join(rows))


def make_game(folder):
    """One scene with a picture in which no two neighbours are alike."""
    width, height = ENGINE
    words = [(x * 7 + y * 13 + (x * y >> 4)) & 0xFFFF for y in range(height) for x in range(width)]
    header = struct.pack("<4s9i", b"PIK\0", width, height, 16, 2 * width * height, 0, 0, 0, 0, 0)
    (folder / "Dane" / "MAIN").mkdir(parents=True)
    (folder / "Dane" / "application.def").write_text(DEFINITION)
    (folder / "Dane" / "MAIN" / "pattern.img").write_bytes(header + struct.pack(f"<{len(words)}H", *words))


def run_unseen(host, game, file, depth):
    command = [str(host), "-window", "--headless", "--bpp", depth, "--ticks", "3", "--shot", f"3:{file}"]
    subprocess.run(command, cwd=game, stdin=subprocess.DEVNULL, check=True, timeout=PATIENCE)
    return coarse(png.read(file))


def run_seen(host, game, display, words, cut):
    """Runs the game until the glass shows a steady picture; gives the engine's part of it and the exit status."""
    environment = dict(os.environ, DISPLAY=display.name, SDL_VIDEODRIVER="x11")
    environment.pop("WAYLAND_DISPLAY", None)
    # The display's own libraries keep what they hold until the process ends.
    environment["LSAN_OPTIONS"] = "detect_leaks=0"
    program = subprocess.Popen([str(host), *words], cwd=game, env=environment, stdin=subprocess.DEVNULL)
    deadline = time.monotonic() + PATIENCE
    seen = None
    while program.poll() is None and time.monotonic() < deadline:
        time.sleep(0.3)
        before, seen = seen, coarse(cut(display.picture()))
        if before == seen and any(seen.pixels):
            break
    program.terminate()
    return seen, program.wait(PATIENCE)


def judge(name, expected, seen, out):
    if seen == expected:
        print(f"window: {name}: as expected")
        return True
    out.mkdir(parents=True, exist_ok=True)
    png.write(out / f"{name}-expected.png", expected)
    if seen is None:
        print(f"window: {name}: nothing was seen")
        return False
    png.write(out / f"{name}-seen.png", seen)
    _, count, first = png.difference(expected, seen)
    print(f"window: {name}: {count} pixels differ, first at {first} (see {out})")
    return False


def judge_loss(host, game, work):
    """The display goes away under a game that writes values all the time: it ends by itself, and they are there."""
    (game / "Dane" / "MAIN" / "MAIN.cnv").write_text(COUNTING)
    folder = work / "second"
    folder.mkdir()
    display = Display(folder)
    environment = dict(os.environ, DISPLAY=display.name, SDL_VIDEODRIVER="x11", LSAN_OPTIONS="detect_leaks=0")
    environment.pop("WAYLAND_DISPLAY", None)
    with open(game / "values.txt", "w", encoding="utf-8") as errors:
        program = subprocess.Popen([str(host), "-window"], cwd=game, env=environment, stdin=subprocess.DEVNULL, stderr=errors)
        deadline = time.monotonic() + PATIENCE
        while not (game / "footlight.ini").exists() and time.monotonic() < deadline:
            time.sleep(0.1)
        time.sleep(0.5)
        display.process.kill()
        display.process.wait()
        try:
            status = program.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            program.kill()
            status = "none: it ran on"
    text = (game / "values.txt").read_text() + (game / "footlight.ini").read_text()
    if status == 2 and "the display is gone" in text and "COUNT=" in text:
        print("window: lost: as expected")
        return True
    print(f"window: lost: status {status}: {text}")
    return False


def main():
    parser = argparse.ArgumentParser(description="Compares a window on a display in memory with a screen shot.")
    parser.add_argument("--host", required=True, type=pathlib.Path)
    host = parser.parse_args().host.resolve()

    work = pathlib.Path(tempfile.mkdtemp(prefix="footlight-window-"))
    out = HERE.parents[1] / "out" / "window"
    display = Display(work)
    good = True
    try:
        game = work / "game"
        make_game(game)
        left, top = (SCREEN[0] - ENGINE[0]) // 2, (SCREEN[1] - ENGINE[1]) // 2
        statuses = []
        for depth in ("15", "32", "16"):
            expected = run_unseen(host, game, work / "shot.png", depth)
            seen, status = run_seen(
                host, game, display, ["-window", "--bpp", depth], lambda p: part(p, left, top, *ENGINE)
            )  # fmt: skip
            good &= judge(f"window-{depth}", expected, seen, out)
            statuses.append(status)

        # Twice the size: every pixel of the engine is a square of four.
        for corner in (0, 1):
            seen, status = run_seen(
                host, game, display, [], lambda p, corner=corner: part(p, corner, corner, SCREEN[0] - corner, SCREEN[1] - corner, 2)
            )  # fmt: skip
            good &= judge(f"full-screen-{corner}", expected, seen, out)
            statuses.append(status)
        good &= judge_loss(host, game, work)
        if any(statuses):
            print(f"window: the program did not always end well when it was asked to: {statuses}")
            good = False
    finally:
        display.stop()
        shutil.rmtree(work)
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
