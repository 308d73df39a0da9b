#!/usr/bin/env python3
"""Reads what the program stores of a game with a decoder of its own, and stores a game with an encoder of its own for
the program to run.

    binary_form_test.py --host build/debug/footlight
"""

import argparse
import pathlib
import resource
import shutil
import signal
import struct
import subprocess
import sys
import tempfile

PATIENCE = 60  # seconds
FAULTS = []


def expect(found, wanted, what):
    if found != wanted:
        FAULTS.append(f"{what}: expected {wanted!r}, found {found!r}")


def run(host, folder, *words, **more):
    command = [str(host), "--headless", "--ticks", "4", "--ini", "footlight.ini", *words]
    return subprocess.run(
        command, cwd=folder, stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=PATIENCE, **more
    )


class Decoder:
    def __init__(self, data):
        self.data, self.at = data, 0

    def take(self, form):
        (value,) = struct.unpack_from("<" + form, self.data, self.at)
        self.at += struct.calcsize("<" + form)
        return value

    def i(self):
        return self.take("i")

    def b(self):
        return self.take("B")

    def s(self):
        length = self.i()
        self.at += length
        return self.data[self.at - length : self.at].decode("cp1250")

    def fields(self, letters):
        """i: a number, b: a flag, s: a text, I or S: a list of them with its count in front."""
        return [[getattr(self, x.lower())() for _ in range(self.i())] if x.isupper() else getattr(self, x)() for x in letters]

    def identity(self):
        return self.s(), [(self.s(), self.s(), [self.s() for _ in range(self.i())]) for _ in range(self.i())]


# What each type adds to name and bindings.
LAYOUT = {
    1: "bbii", 2: "bbss", 3: "bbbb", 4: "bbii", 10: "ssi", 11: "ssi", 12: "bbssi", 13: "ss",
    2000: "bbbsbbibb", 2001: "sssssssssbbi", 2004: "s", 2005: "sbb", 2006: "sssisbbs", 2007: "si",
    2008: "bbbsbbibb", 2009: "siiiiss", 2016: "I", 2017: "S", 3001: "b", 3002: "bb",
}  # fmt: skip


def decode_application(data):
    file = Decoder(data)
    identity, path, count, start = file.identity(), file.s(), file.i(), file.i()
    levels = []
    for _ in range(count):
        level = [file.identity(), file.s(), file.i(), file.i()]
        levels.append(level + [[(file.identity(), file.s()) for _ in range(level[2])]])
    expect(file.at, len(data), "application.bin: the end")
    return identity, path, start, levels


def decode_level(data):
    file = Decoder(data)
    head, count = [file.s() for _ in range(3)], file.i()
    objects = {}
    while file.at < len(data):
        number = file.i()
        name, bindings = file.identity()
        fonts = [(file.s(), file.s(), file.i()) for _ in range(file.i())] if number == 2002 else None
        objects[name] = (number, bindings, fonts or file.fields(LAYOUT.get(number, "")))
    return head, count, objects


TEXT_FORM = {
    "application.def": """DEF:HALL(TYPE=SCENE|PATH=HALL|BACKGROUND=back.img|MUSIC=tune.wav)
DEF:SIDE(TYPE=SCENE)
DEF:ACT(TYPE=EPISODE|SCENES=SIDE,HALL|STARTWITH=HALL)
DEF:LONE(TYPE=SCENE|PATH=LONE)
DEF:GAME(TYPE=APPLICATION|EPISODES=ACT|SCENES=LONE|STARTWITH=ACT)
""",
    "GAME.cnv": "DEF:M(TYPE=MOUSE|ONMOVE=ALL(x,2))\nDEF:ALL(TYPE=BEHAVIOUR|CODE={@IF(A,_,B,{C^INC();},{});})\n",
    "HALL/HALL.cnv": """OBJECT=HALL
HALL:ONINIT=CODE
DEF:N(TYPE=INTEGER|VALUE=-7|DEFAULT=3|TOINI=TRUE|ONCHANGED=CODE(1,b)|ONCHANGED^4={N^INC();})
DEF:S(TYPE=STRING|VALUE=word|NETNOTIFY=TRUE)
DEF:B(TYPE=BOOL|VALUE=TRUE|DEFAULT=FALSE)
DEF:D(TYPE=DOUBLE|VALUE=1.2345|DEFAULT=-0.0009)
DEF:IS(TYPE=CONDITION|OPERAND1=N|OPERATOR=LESS|OPERAND2="5"|ONRUNTIMESUCCESS=CODE)
DEF:ARE(TYPE=COMPLEXCONDITION|CONDITION1=IS|OPERATOR=OR|CONDITION2=IS)
DEF:SUM(TYPE=EXPRESSION|OPERAND1=N|OPERATOR=MUL|OPERAND2=2)
DEF:CODE(TYPE=BEHAVIOUR|CODE={N^SET(1);}|CONDITION=IS)
DEF:PICTURE(TYPE=IMAGE|FILENAME=no.img|TOCANVAS=TRUE|VISIBLE=TRUE|PRIORITY=5|FLUSHAFTERPLAYED=TRUE|PRELOAD=FALSE)
DEF:FIGURE(TYPE=ANIMO|FILENAME=no.ann|ASBUTTON=TRUE|MONITORCOLLISION=TRUE|PRIORITY=9)
DEF:PUSH(TYPE=BUTTON|RECT=1,2,3,4|GFXSTANDARD=PICTURE|SNDONMOVE=NOISE|ENABLE=TRUE|PRIORITY=8)
DEF:NOISE(TYPE=SOUND|FILENAME=no.wav|FLUSHAFTERPLAYED=TRUE)
DEF:TALE(TYPE=SEQUENCE|FILENAME=no.seq)
DEF:LETTERS(TYPE=FONT|DEF_TIN_BOLD_12=no.fnt|DEF_IRON_THIN_9=no.fnt)
DEF:WORDS(TYPE=TEXT|TEXT=ab|FONT=LETTERS|RECT=0,0,9,9|HJUSTIFY=CENTER|TOCANVAS=TRUE|PRIORITY=3)
DEF:CLOCK(TYPE=TIMER|ELAPSE=100|TICKS=3|ENABLED=FALSE)
DEF:BOX(TYPE=EDITBOX|RECT=1,2,30,40|TEXT=typed|FONT=LETTERS)
DEF:V(TYPE=VECTOR|SIZE=2|VALUE=0.5,-2)
DEF:WAY(TYPE=PATH|NODES=PICTURE,N)
DEF:LIST(TYPE=ARRAY)
DEF:QUEUE(TYPE=FIFO)
DEF:REST(TYPE=STRUCT|FIELDS=A<INTEGER>)
DEF:M(TYPE=MOUSE|ONCLICK=CODE)
""",
    "SIDE.cnv": "",
    "LONE/LONE.cnv": "DEF:N(TYPE=INTEGER|VALUE=1)\n",
}


def make_text_form(folder):
    for name, text in TEXT_FORM.items():
        path = folder / "Dane" / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)


def what_is_stored(host, folder):
    make_text_form(folder)
    expect(run(host, folder, "-2bin").returncode, 0, "-2bin")
    dane = folder / "Dane"
    identity, path, start, levels = decode_application((dane / "application.bin").read_bytes())
    expect((identity, path, start), (("GAME", []), "", 0), "the application")
    act, lone = levels
    expect(act[:4], [("ACT", []), "", 2, 1], "the episode")
    expect(act[4], [(("SIDE", []), ""), (("HALL", [("ONINIT", "CODE", [])]), "HALL")], "its scenes")
    expect(lone, [("LONE", []), "LONE", -1, -1, []], "the scene of no episode")
    head, count, objects = decode_level((dane / "GAME.bin").read_bytes())
    code = "@IF(A,_,B,{C^INC();},{});"
    wanted = {"MOUSE": (100, [("ONMOVE", "ALL", ["x", "2"])], []), "ALL": (13, [], [code, ""])}
    expect((head, objects), (["", "", ""], wanted), "GAME.bin")
    head, count, objects = decode_level((dane / "HALL" / "HALL.bin").read_bytes())
    expect(head, ["", "back.img", "tune.wav"], "HALL.bin: the head")
    inline = "beh_N_ONCHANGED^4"
    for name, number, bindings, fields in [
        ("N", 1, [("ONCHANGED", "CODE", ["1", "b"]), ("ONCHANGED^4", inline, [])], [1, 1, -7, 3]),
        ("S", 2, [], [0, 1, "word", "word"]),
        ("B", 3, [], [0, 0, 1, 0]),
        ("D", 4, [], [0, 0, 1234, 0]),
        ("IS", 10, [("ONRUNTIMESUCCESS", "CODE", [])], ["N", '"5"', 3]),
        ("ARE", 11, [], ["IS", "IS", 2]),
        ("SUM", 12, [], [0, 0, "N", "2", 3]),
        ("CODE", 13, [], ["N^SET(1);", "IS"]),
        (inline, 13, [], ["N^INC();", ""]),
        ("PICTURE", 2008, [], [0, 0, 0, "no.img", 1, 1, 5, 1, 0]),
        ("FIGURE", 2000, [], [1, 1, 0, "no.ann", 0, 0, 9, 0, 1]),
        ("PUSH", 2001, [], ["", "PICTURE", "", "", "", "NOISE", "", "", "1,2,3,4", 1, 0, 8]),
        ("NOISE", 2005, [], ["no.wav", 0, 1]),
        ("TALE", 2004, [], ["no.seq"]),
        ("LETTERS", 2002, [], [("TIN", "BOLD", 12), ("IRON", "THIN", 9)]),
        ("WORDS", 2006, [], ["", "CENTER", "0,0,9,9", 3, "LETTERS", 1, 0, "ab"]),
        ("CLOCK", 2007, [], ["100", 3]),
        ("BOX", 2009, [], ["LETTERS", 1, 2, 30, 40, "typed", ""]),
        ("V", 2016, [], [[500, -2000]]),
        ("WAY", 2017, [], [["PICTURE", "N"]]),
        ("LIST", 3001, [], [0]),
        ("QUEUE", 2018, [], []),
        ("REST", 3002, [], objects.get("REST", (0, 0, []))[2]),
        ("MOUSE", 100, [("ONCLICK", "CODE", [])], []),
    ]:
        expect(objects.get(name), (number, bindings, fields), f"HALL.bin: {name}")
    expect(list(objects)[-1], "REST", "HALL.bin: what cannot be read back comes last")
    expect(count >= len(objects), True, "HALL.bin: the count takes the levels above in")


# The other way round


def i(value):
    return struct.pack("<i", value)


def s(text):
    return i(len(text)) + text.encode("cp1250")


def identity(name, *bindings):
    written = s(name) + i(len(bindings))
    for signal_name, behaviour, *arguments in bindings:
        written += s(signal_name) + s(behaviour) + i(len(arguments)) + b"".join(map(s, arguments))
    return written


def integer(name, value, *bindings):
    return i(1) + identity(name, *bindings) + b"\1\0" + i(value) + i(value)


def behaviour(name, code):
    return i(13) + identity(name) + s(code) + s("")


def level_file(*objects, head=("", "", ""), count=None):
    return b"".join(map(s, head)) + i(len(objects) if count is None else count) + b"".join(objects)


# All objects of this scene write to the INI file. The count is too high, as it may be.
SCENE = level_file(
    behaviour("START", "{N^ADD($1);D^SET([D*1000]);WORD^SET(SUM);V^EXPAND(3);LEN^SET(V^GET(2));}"),
    behaviour("beh_N_ONCHANGED", "CHANGES^INC();"),
    integer("CHANGES", 0),
    integer("N", 5, ("ONCHANGED", "beh_N_ONCHANGED"), ("ONBRUTALCHANGED", "NOBODY")),
    i(4) + identity("D") + b"\1\0" + i(1234) + i(0),
    i(2) + identity("WORD") + b"\1\0" + s("") + s(""),
    i(2) + identity("LEN") + b"\1\0" + s("") + s(""),
    i(12) + identity("SUM") + b"\0\0" + s("N") + s("3") + i(3),
    i(2006) + identity("TEXT") + s("") + s("") + s("0,0,9,9") + i(7) + s("") + b"\1\1" + s("hello"),
    i(2016) + identity("V") + i(2) + i(500) + i(-1500),
    count=99,
)
APPLICATION = (
    identity("GAME") + s("") + i(1) + i(7)
    + identity("ACT") + s("") + i(2) + i(1)
    + identity("FIRST") + s("") + identity("SECOND", ("ONINIT", "START", "2")) + s("SUB")
)  # fmt: skip


def what_is_read(host, folder):
    dane = folder / "Dane"
    (dane / "SUB").mkdir(parents=True)
    (dane / "application.bin").write_bytes(APPLICATION)
    (dane / "SUB" / "SECOND.bin").write_bytes(SCENE)
    expect(run(host, folder).returncode, 0, "a game in its binary form alone")
    found = dict(line.split("=", 1) for line in (folder / "footlight.ini").read_text().splitlines() if "=" in line)
    for key, value in {"N": "7", "CHANGES": "1", "D": "1234.00000", "WORD": "21", "LEN": "-1.50000"}.items():
        expect(found.get(key), value, f"read: {key}")
    # What does not fit: one report with the place, and what stands before it works.
    for name, data, place in [
        ("cut short", SCENE[:-2], len(SCENE) - 8),
        ("an unknown number", SCENE + i(12345), len(SCENE)),
        ("a length below 0", SCENE + i(1) + i(-1), len(SCENE) + 8),
        ("a count above all", SCENE + i(2016) + identity("W") + i(2**31 - 1), len(SCENE) + 17),
    ]:
        (dane / "SUB" / "SECOND.bin").write_bytes(data)
        for has_text in (False, True):
            if has_text:
                (dane / "SUB" / "SECOND.cnv").write_text("")
            (folder / "footlight.ini").unlink()
            errors = run(host, folder, "--diagnose", "warn").stderr
            lines = [line for line in errors.splitlines() if "binary form" in line]
            expect(len(lines), 1, f"{name}: reports")
            expect(f"SECOND.bin: the binary form does not fit from byte {place} on" in "".join(lines), True, f"{name}: {lines}")
            expect("-forceCNV" in "".join(lines), has_text, f"{name}: the way out in {lines}")
            expect("CHANGES=1" in (folder / "footlight.ini").read_text(), True, f"{name}: the objects before it")
        (dane / "SUB" / "SECOND.cnv").unlink()
    for size in (0, 3, 11, 20):
        (dane / "application.bin").write_bytes(APPLICATION[:size])
        expect(run(host, folder).returncode, 2, f"a game of {size} bytes: the exit status")


def what_stays(host, folder):
    """Where a file cannot be written whole, the old form stays, and the exit status tells."""
    make_text_form(folder)
    run(host, folder, "-2bin")
    written = sorted(folder.rglob("*.bin"))
    old = {path: path.read_bytes() for path in written}
    (folder / "Dane" / "GAME.cnv").write_text("DEF:" + "X" * 500 + "(TYPE=INTEGER)\n")

    def limit(size):
        signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
        resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))

    done = run(host, folder, "-2bin", "-forceCNV", preexec_fn=lambda: limit(300))
    expect(done.returncode, 4, "no room: the exit status")
    for name in ("application.bin", "GAME.bin", "HALL/HALL.bin"):
        path = folder / "Dane" / name
        expect(path.read_bytes() == old[path], True, f"no room: {name} is the old one")
    expect([path.name for path in (folder / "Dane").iterdir() if "~" in path.name or ".tmp" in path.name], [], "no room: leftovers")
    # Stored again from the text it is the new one; the text is read where it is asked for.
    expect(run(host, folder, "-2bin", "-forceCNV").returncode, 0, "-2bin -forceCNV")
    expect(b"X" * 500 in (folder / "Dane" / "GAME.bin").read_bytes(), True, "-2bin -forceCNV: the new one")
    hall = folder / "Dane" / "HALL" / "HALL.cnv"
    hall.write_text("".join(line for line in hall.read_text().splitlines(True) if "STRUCT" not in line))
    run(host, folder, "-2bin", "-forceCNV")
    again = {path: path.read_bytes() for path in written}
    expect(run(host, folder, "-2bin").returncode, 0, "-2bin of the binary form")
    for path in written:
        expect(path.read_bytes() == again[path], True, f"stored from itself {path.name} is the same")


def main():
    parser = argparse.ArgumentParser(description="Reads and writes the binary form of games beside the program.")
    parser.add_argument("--host", required=True, type=pathlib.Path)
    options = parser.parse_args()
    for test in (what_is_stored, what_is_read, what_stays):
        folder = pathlib.Path(tempfile.mkdtemp(prefix="footlight-binary-"))
        try:
            test(options.host.resolve(), folder)
        finally:
            shutil.rmtree(folder)
    for fault in FAULTS:
        print(fault)
    return 1 if FAULTS else 0


if __name__ == "__main__":
    sys.exit(main())
