#!/usr/bin/env python3
"""Makes the games about canvases, patterns, stamps, scrolls and masks, one for each format of the display, and the
screens that they must give: a plain second drawing that shares nothing with the engine. Standard library only.

    python3 tests/games/surfaces.py
"""

import json
import pathlib

import pictures
import png

GAMES = pathlib.Path(__file__).resolve().parent
WIDTH, HEIGHT = 96, 64

SCRIPT = """# Everything that others are drawn on, or through. B also stands in the pattern, wider than its cells.
DEF:SCREEN(TYPE=CANVAS_OBSERVER)
DEF:BACK(TYPE=IMAGE|FILENAME=back.img)
DEF:A(TYPE=IMAGE|FILENAME=a.img|VISIBLE=TRUE)
DEF:B(TYPE=IMAGE|FILENAME=b.img|VISIBLE=TRUE)
DEF:C(TYPE=IMAGE|FILENAME=c.img|VISIBLE=TRUE)
DEF:T(TYPE=IMAGE|FILENAME=t.img|VISIBLE=TRUE)
DEF:M(TYPE=IMAGE|FILENAME=m.img|VISIBLE=TRUE)
DEF:S1(TYPE=IMAGE|FILENAME=s1.img|TOCANVAS=TRUE|VISIBLE=TRUE|PRIORITY=4)
DEF:S2(TYPE=IMAGE|FILENAME=s2.img|TOCANVAS=TRUE|VISIBLE=TRUE|PRIORITY=4)
DEF:S3(TYPE=IMAGE|FILENAME=s3.img|TOCANVAS=TRUE|VISIBLE=TRUE|PRIORITY=4)
DEF:SHEET(TYPE=CANVAS|WIDTH=40|HEIGHT=30|ALPHA=TRUE|BACKGROUND=TRUE|PRIORITY=1)
DEF:FLOOR(TYPE=PATTERN|WIDTH=34|HEIGHT=24|GRIDX=8|GRIDY=8|LAYERS=2|TOCANVAS=TRUE|VISIBLE=TRUE|PRIORITY=2)
DEF:ROLL(TYPE=SCROLL|VIEWPORT=8,40,40,60)
DEF:STAMPS(TYPE=GRBUFFER|SOURCE=B|DESTINY=BACKGROUND)
DEF:GLASS(TYPE=VIRTUALGRAPHICSOBJECT|SOURCE=A|MASK=M|TOCANVAS=TRUE|VISIBLE=TRUE|PRIORITY=3)
DEF:LENS(TYPE=VIRTUALGRAPHICSOBJECT|SOURCE=BACK|MASK=M|TOCANVAS=TRUE|VISIBLE=TRUE|PRIORITY=3)
DEF:LIST(TYPE=ARRAY)
DEF:LOG(TYPE=STRING)
DEF:FOUND(TYPE=STRING|VALUE=none|TOINI=TRUE)
DEF:CLOCK(TYPE=TIMER|ELAPSE=1)
CLOCK:ONTICK^1={SCREEN^SETBACKGROUND("BACK");SHEET^SETPOSITION(4,5);SHEET^ADD("B",2);SHEET^ADD("A");SHEET^DRAW("T",20,15);SHEET^DRAW("C",23,12);SHEET^ERASE("A",18,10);FLOOR^SETPOSITION(52,3);FLOOR^ADD("FIRST",1,1,"T",0);FLOOR^ADD("SECOND",0,1,"T",0);FLOOR^ADD("UPPER",1,0,"C",1,7);FLOOR^ADD("OLD",3,2,"T",0);FLOOR^ADD("NEW",3,2,"C",0);GLASS^SETPOSITION(58,36);LENS^SETPOSITION(76,30);ROLL^ADD("S1");ROLL^ADD("S2");ROLL^ADD("S3");ROLL^SCROLLRIGHT(6);LOG^ADD(STAMPS^CREATE(70,48));LOG^ADD(STAMPS^CREATE(80,4,2,1,7,6));LOG^ADD(STAMPS^CREATE(90,4));STAMPS^DRAW(0,TRUE);STAMPS^DRAW(1,TRUE);}
CLOCK:ONTICK^5={LOG^ADD(FLOOR^GETALIASAT(61,12,TRUE));LOG^ADD(FLOOR^GETALIASATCELL(3,2));LOG^ADD(FLOOR^GETGRAPHICSAT(53,12,TRUE,0));LOG^ADD(FLOOR^GETGRAPHICSAT(53,12,FALSE));FLOOR^GETALIASINFO("UPPER","LIST");LOG^ADD(FLOOR^GETCELLCORD(77,20,"LIST"));LOG^ADD(LIST^GET(6));LOG^ADD(LIST^GET(7));LOG^ADD(LIST^GET(8));LOG^ADD(STAMPS^FINDAT(84,6));SHEET^CAPTURE(FALSE);FLOOR^REMOVE("SECOND");FLOOR^REMOVE(1,0,1);ROLL^SCROLLDOWN(40);LOG^ADD(S1^ISVISIBLE());ROLL^SCROLLUP(37);ROLL^MOVE(2,-3);STAMPS^UNDO(0,TRUE);GLASS^SETMASK("C");LENS^MOVE(-5,2);LOG^ADD(LENS^GETWIDTH());@LOOP({STAMPS^CREATE(1,1,0,0,1,1);},0,1000,1);LOG^ADD(STAMPS^CREATE(1,1,0,0,1,1));STAMPS^FLUSHALL(FALSE);STAMPS^UNDO(0,TRUE);LOG^ADD(STAMPS^CREATE(1,1,0,0,1,1));FOUND^SET(LOG);}
"""


def to15(pixels):
    return [(p & 0x1F) | ((p & 0xFFC0) >> 1) for p in pixels]


def mix(s, t, a):
    return (((s - t) * a + (t << 8)) & 0xFFFF) >> 8


def table(p):
    return (p & 0xF800) << 8 | (p & 0x7E0) << 5 | (p & 0x1F) << 3


class Plane:
    """Pixels of a format, and an alpha plane or None."""

    def __init__(self, width, height, bpp, pixels=None, alpha=None, place=(0, 0)):
        self.width, self.height, self.bpp = width, height, bpp
        self.pixels = pixels or [0] * (width * height)
        self.alpha = alpha
        self.place = place

    def blend(self, s, t, a):
        if self.bpp == 32:
            t = [(t & 0xFF) >> 3, (t & 0xFF00) >> 11, (t & 0xFF0000) >> 19]
            s = [s & 31, (s & 0x7E0) >> 6, s >> 11]
            blue, green, red = (mix(x, y, a) & 31 for x, y in zip(s, t))
            return table(blue | green << 6 | red << 11)
        green_bits = self.bpp - 10
        green_mask = (1 << green_bits) - 1
        up = 5 + green_bits
        parts = lambda p: (p & 31, p >> 5 & green_mask, p >> up & 31)
        blue, green, red = (min(mix(x, y, a) + 1, m) for x, y, m in zip(parts(s), parts(t), (31, green_mask, 31)))
        return blue | green << 5 | red << up

    def draw(self, picture, x, y, clip=None):
        """Through the picture's alpha; a target with an alpha plane keeps it up to date."""
        left, top, right, bottom = clip or (0, 0, self.width, self.height)
        for j in range(picture.height):
            for i in range(picture.width):
                px, py = x + i, y + j
                if not (max(left, 0) <= px < min(right, self.width) and max(top, 0) <= py < min(bottom, self.height)):
                    continue
                s = picture.pixels[j * picture.width + i]
                a = 255 if picture.alpha is None else picture.alpha[j * picture.width + i]
                at = py * self.width + px
                if a == 0:
                    continue
                whole = table(s) if self.bpp == 32 else s
                if self.alpha is None:
                    self.pixels[at] = whole if a > 254 else self.blend(s, self.pixels[at], a)
                elif a > 254 or self.alpha[at] == 0:
                    self.pixels[at], self.alpha[at] = whole, a
                else:
                    self.pixels[at] = self.blend(s, self.pixels[at], a)
                    self.alpha[at] = min(255, self.alpha[at] + a)

    def erase(self, picture, x, y):
        for j in range(picture.height):
            for i in range(picture.width):
                if x + i < self.width and y + j < self.height:
                    at = (y + j) * self.width + x + i
                    self.alpha[at] = max(0, self.alpha[at] - picture.alpha[j * picture.width + i])

    def save(self, path):
        out = bytearray()
        for p in self.pixels:
            if self.bpp == 15:
                p = (p & 0x7C00) << 9 | (p & 0x3E0) << 6 | (p & 0x1F) << 3
            elif self.bpp == 16:
                p = table(p)
            out += bytes([p >> 16, p >> 8 & 0xFF, p & 0xFF])
        png.write(path, png.Picture(self.width, self.height, bytes(out)))


def weighed(a, b):
    return b if a == 255 else a if b == 255 else a * b >> 8


def masked(source, mask):
    width, height = min(source.width, mask.width), min(source.height, mask.height)
    pixels, alpha = [], []
    for y in range(height):
        for x in range(width):
            pixels.append(source.pixels[y * source.width + x])
            own = 255 if source.alpha is None else source.alpha[y * source.width + x]
            alpha.append(weighed(own, mask.alpha[y * mask.width + x]))
    return Plane(width, height, source.bpp, pixels, alpha)


# name: seed, width, height, alpha, place
PICTURES = {
    "back": (31, WIDTH, HEIGHT, False, (0, 0)),
    "a": (32, 14, 11, True, (3, 4)),
    "b": (33, 10, 8, False, (10, 8)),
    "c": (34, 12, 10, True, (0, 0)),
    "t": (35, 10, 8, False, (0, 0)),
    "m": (36, 12, 14, True, (0, 0)),
    "s1": (37, 12, 9, False, (2, 38)),
    "s2": (38, 12, 9, True, (29, 52)),
    "s3": (39, 12, 9, False, (50, 45)),
}


def shown(own, bpp):
    """The two screens."""
    composed = 15 if bpp == 15 else 16
    back = Plane(WIDTH, HEIGHT, bpp)
    back.draw(own["back"], 0, 0)
    clean = list(back.pixels)
    back.draw(own["b"], 70, 48)
    back.draw(own["b"], 78, 3, (80, 4, 85, 9))

    buffer = Plane(40, 30, composed, alpha=[0] * 1200)
    buffer.draw(own["t"], 20, 15)
    buffer.draw(own["c"], 23, 12)
    buffer.erase(own["a"], 18, 10)
    things = Plane(40, 30, composed, alpha=[0] * 1200)
    sheet = Plane(40, 30, composed, alpha=[0] * 1200)
    sheet.draw(buffer, 0, 0)
    for target in things, sheet:
        target.draw(own["a"], 3, 4)
        target.draw(own["b"], 10, 8)

    def frame(sheet, tiles, glass, lens, lens_place, viewport, scrolled):
        screen = Plane(WIDTH, HEIGHT, bpp, list(back.pixels))
        screen.draw(sheet, 4, 5)
        for name, column, row in tiles:
            screen.draw(own[name], 52 + 8 * column, 3 + 8 * row, (52, 3, 86, 27))
        screen.draw(glass, 58, 36)
        screen.draw(lens, *lens_place)
        for name, (dx, dy) in scrolled:
            x, y = PICTURES[name][4]
            screen.draw(own[name], x + dx, y + dy, viewport)
        return screen

    lens = masked(own["back"], own["m"])
    tiles = [("t", 1, 1), ("t", 0, 1), ("c", 3, 2), ("c", 1, 0)]
    rolled = [(name, (6, 0)) for name in ("s1", "s2", "s3")]
    first = frame(sheet, tiles, masked(own["a"], own["m"]), lens, (76, 30), (8, 40, 40, 60), rolled)
    buffer.draw(things, 0, 0)
    for y in range(48, 56):
        for x in range(70, 80):
            back.pixels[y * WIDTH + x] = clean[y * WIDTH + x]
    tiles = [("t", 1, 1), ("c", 3, 2)]
    # S3 lies outside and is hidden; what is hidden stays so until it is cut anew.
    rolled = [(name, (8, 0)) for name in ("s1", "s2")]
    after = Plane(40, 30, composed, alpha=[0] * 1200)
    after.draw(buffer, 0, 0)
    second = frame(after, tiles, masked(own["a"], own["c"]), lens, (71, 32), (10, 37, 42, 57), rolled)
    return first, second


def main():
    for bpp in 15, 16, 32:
        game = GAMES / f"surfaces_are_drawn_with_{bpp}_bits"
        folder = game / "Dane" / "MAIN"
        folder.mkdir(parents=True, exist_ok=True)
        own = {}
        for name, (seed, width, height, has_alpha, place) in PICTURES.items():
            drawing = pictures.drawing(seed, has_alpha=has_alpha, width=width, height=height)
            (folder / f"{name}.img").write_bytes(pictures.pik(drawing, pictures.NONE, *place))
            pixels = to15(drawing.pixels) if bpp == 15 else list(drawing.pixels)
            alpha = list(drawing.alpha) if has_alpha else None
            own[name] = Plane(width, height, 15 if bpp == 15 else 16, pixels, alpha)
        (folder / "MAIN.cnv").write_text(SCRIPT, newline="\n")
        first, second = shown(own, bpp)
        first.save(game / "first.png")
        second.save(game / "second.png")
        expect = {
            "args": ["-window", "-res", str(WIDTH), str(HEIGHT), "--bpp", str(bpp)],
            "ticks": 12,
            "ini": {"MAIN": {"FOUND": "01-1UPPERNEWTNULLTRUE8321FALSE12-10"}},
            "shots": {"4": "first.png", "10": "second.png"},
        }
        (game / "expect.json").write_text(json.dumps(expect, indent=2) + "\n", newline="\n")


if __name__ == "__main__":
    main()
