#!/usr/bin/env python3
"""Makes the animation files of the games about animations. Standard library only.

    python3 tests/games/animations.py
"""

import pathlib
import struct

import png

GAMES = pathlib.Path(__file__).resolve().parent


def text(value, zero=False):
    data = value.encode("cp1250") + (b"\0" if zero else b"")
    return struct.pack("<i", len(data)) + data


def position(name="", x=0, y=0, opacity=255, sound=""):
    head = struct.pack("<IIhhiIIB5x", bool(name), 0, x, y, -1, bool(sound), 0, opacity)
    return head + b"".join(text(word, True) for word in (name, sound) if word)


def event(name, frames, loop=(0, 0, 0), flags=0, opacity=255, positions=None, fps=15):
    head = struct.pack("<32sh4xhhhhiIB12x", name.encode(), len(frames), *loop, 0, fps, flags, opacity)
    records = positions or [position() for _ in frames]
    return head + struct.pack(f"<{len(frames)}h", *frames) + b"".join(records)


def frame(width, height, x, y, colour, alpha=None):
    pixels = struct.pack("<H", colour) * (width * height)
    plane = bytes([alpha]) * (width * height) if alpha is not None else b""
    head = struct.pack("<hhhhhihiiii", width, height, x, y, 0, len(pixels), 4 if plane else 0, 0, 0, 0, len(plane))
    return head.ljust(52, b"\0"), pixels + plane


def ann(events, frames, flags=0, fps=15, opacity=255):
    head = struct.pack("<4shhh13xiIBh10x", b"NVP", len(frames), 16, len(events), fps, flags, opacity, 0)
    return head + text("") + text("") + b"".join(events) + b"".join(h for h, _ in frames) + b"".join(d for _, d in frames)


def play_by_their_events():
    frames = [frame(8 + i, 6, 10 * i, 5, 0x1111 * i, 200) for i in range(4)]
    events = [
        event("EMPTY", []),
        event("WALK", [0, 1, 2], positions=[position("A", 1, 2), position(), position("C")]),
        event("LOOP", [3, 2, 1, 0], loop=(1, 2, 2)),
        event("BOUNCE", [0, 1, 2, 3], loop=(1, 2, 0), flags=0x20000),
    ]
    for game in ("animations_play_by_their_events", "animations_answer_their_methods"):
        (GAMES / game / "Dane" / "MAIN" / "figure.ann").write_bytes(ann(events, frames))


def answer_their_methods():
    folder = GAMES / "animations_answer_their_methods" / "Dane" / "MAIN"
    (folder / "patch.ann").write_bytes(ann([event("E", [0])], [frame(4, 3, 0, 0, 0x1234, 90)]))


# Each object plays a file of its own, named like the object: the events and the animation's flags.
COURSES = {
    "LOOP": ([event("E", [3, 2, 1, 0, 3], loop=(1, 2, 2))], 0),
    "AGAIN": ([event("E", [3, 2, 1, 0, 3], loop=(1, 2, 2))], 0),
    "ONCE": ([event("E", [0, 1], loop=(0, 0, 9))], 0),
    "BOUNCE": ([event("E", [0, 1, 2, 3], loop=(1, 2, 0), flags=0x20000)], 0),
    "HIDES": ([event("E", [0, 1], flags=0x100)], 0),
    "FIRM": ([event("E", [0, 1, 2], flags=0x40000), event("F", [3])], 0),
    "GOESON": ([event("E", [0, 1]), event("F", [2]), event("G", [])], 0x800000),
    "SOUNDLESS": ([event("E", [0, 1, 2, 3, 0], loop=(1, 2, 0), flags=0x100000)], 0),
    "SHORT": ([event("E", [1], loop=(0, 1, 0))], 0),
    "BEYOND": ([event("E", [0, 1], loop=(0, 9, 2))], 0),
    "BACK": ([event("E", [0, 1, 2])], 0),
    "REVERSE": ([event("E", [1, 2, 3])], 0),
    "LATER": ([event("E", [0, 1])], 0),
    "FLUSHED": ([event("E", [0, 1]), event("F", [2])], 0),
    "CHANCE": ([event("E", [0]), event("F", [1])], 0),
    "DIM": ([event("E", [0, 1], opacity=100, positions=[position(), position(opacity=50)])], 0),
}


def take_their_course():
    frames = [frame(8 + i, 6, 10 * i, 5, 0x1111 * i, 200) for i in range(4)]
    folder = GAMES / "animations_take_their_course" / "Dane" / "MAIN"
    for name, (events, flags) in COURSES.items():
        (folder / f"{name.lower()}.ann").write_bytes(ann(events, frames, flags=flags))


def are_backgrounds():
    game = GAMES / "animations_are_backgrounds"
    for name, colour in (("first", 0xF81F), ("second", 0x07E8)):
        frames = [frame(64, 48, 0, 0, colour), frame(8, 6, 0, 0, 0x1111)]
        (game / "Dane" / "MAIN" / f"{name}.ann").write_bytes(ann([event("E", [0, 1])], frames))
        pixel = bytes((colour >> 8 & 0xF8, colour >> 3 & 0xFC, colour << 3 & 0xF8))
        png.write(game / f"{name}.png", png.Picture(64, 48, pixel * (64 * 48)))


def behave_as_buttons():
    events = [event("ONNOEVENT", [0]), event("ONFOCUSON", [1]), event("ONFOCUSOFF", [2]), event("ONCLICK", [3, 3, 3])]
    frames = [frame(10, 10, 0, 0, 0x1111 * (i + 1)) for i in range(4)]
    folder = GAMES / "animations_behave_as_buttons" / "Dane" / "MAIN"
    for name in ("lamp", "bell", "deaf", "late"):
        (folder / f"{name}.ann").write_bytes(ann(events, frames))


def speak():
    names = ("START", "END", "1", "2", "SAY_1", "SAY_2", "SAY_STOP")
    folder = GAMES / "sequences_hand_over" / "Dane"
    frames = [frame(8, 6, 10 * i, 5, 0x1111 * (i + 1)) for i in range(2)]
    for name in ("MAIN/figure.ann", "COMMON/herald.ann"):
        (folder / name).write_bytes(ann([event(name, [0, 1]) for name in names], frames))


if __name__ == "__main__":
    play_by_their_events()
    answer_their_methods()
    take_their_course()
    behave_as_buttons()
    are_backgrounds()
    speak()
