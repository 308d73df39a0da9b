#!/usr/bin/env python3
"""Makes the font files of the games about texts, and the screens that they must give: a plain reference that shares
nothing with the engine. Writes into the games' folders; standard library only.

    python3 tests/games/fonts.py
"""

import pathlib
import re
import struct

import png

GAMES = pathlib.Path(__file__).resolve().parent
WIDTH, HEIGHT = 200, 120

# Rows from the top: "#" is opaque, "+" half, "." clear.
SHAPES = {
    "a": "...../...../.###./....#/.####/#...#/.####/...../.....",
    "b": "#..../#..../####./#...#/#...#/#...#/####./...../.....",
    "c": "...../...../.####/#..../#..../#..../.####/...../.....",
    "d": "....#/....#/.####/#...#/#...#/#...#/.####/...../.....",
    "e": "...../...../.###./#...#/#####/#..../.####/...../.....",
    "f": "..+##/..#../.###./..#../..#../..#../..#../...../.....",
    "i": "..#../...../..#../..#../..#../..#../..#../...../.....",
    "l": ".##../..#../..#../..#../..#../..#../.###./...../.....",
    "n": "...../...../####./#...#/#...#/#...#/#...#/...../.....",
    "o": "...../...../.###./#...#/#...#/#...#/.###./...../.....",
    "p": "...../...../####./#...#/#...#/#...#/####./#..../#....",
    "r": "...../...../#.##./##..+/#..../#..../#..../...../.....",
    "s": "...../...../.####/#..../.###./....#/####./...../.....",
    "t": ".#.../.#.../####./.#.../.#.../.#..+/..##./...../.....",
    "u": "...../...../#...#/#...#/#...#/#...#/.####/...../.....",
    "V": "#...#/#...#/#+.+#/.#.#./.#.#./.+#+./..#../...../.....",
    "A": "..#../.+#+./.#.#./.#.#./#####/#...#/#...#/...../.....",
    "<": "...../..+#./.+#+./+#+../.+#+./..+#./...../...../.....",
    ">": "...../.#+../.+#+./..+#+/.+#+./.#+../...../...../.....",
    "|": "..#../..#../..#../..#../..#../..#../..#../..#../..#..",
    ".": "...../...../...../...../...../...../.##../...../.....",
    "3": "####./....#/....#/.###./....#/....#/####./...../.....",
    "1": "..#../.##../..#../..#../..#../..#../.###./...../.....",
    "4": "...#./..##./.#.#./#..#./#####/...#./...#./...../.....",
}


class Font:
    """Its cells are 8 wide; `weight` draws each pixel that many times side by side."""

    def __init__(self, colour, weight=1, kerning=()):
        self.letters = "".join(SHAPES)
        self.colour, self.cell, self.height, self.alpha = colour, 8, 9, {}
        for letter, shape in SHAPES.items():
            rows = [[{"#": 255, "+": 128, ".": 0}[c] for c in row] for row in shape.split("/")]
            wide = [[max(([0] * 4 + row + [0] * 4)[x + 3 - i] for i in range(weight)) for x in range(8)] for row in rows]
            self.alpha[letter] = wide
        self.kerning = dict(kerning)

    def columns(self, letter):
        """(first, behind the last) column that is not clear."""
        used = [x for x in range(self.cell) if any(row[x] for row in self.alpha[letter])]
        return used[0], used[-1] + 1

    def file(self):
        n = len(self.letters)
        head = struct.pack("<4s4i", b"FNT", n * self.cell, self.height, 16, n) + self.letters.encode()
        head += bytes(self.kerning.get(a + b, 0) & 255 for a in self.letters for b in self.letters)
        head += bytes(self.columns(c)[0] for c in self.letters)
        head += bytes(self.cell - self.columns(c)[1] for c in self.letters)
        alpha = bytes(a for y in range(self.height) for c in self.letters for a in self.alpha[c][y])
        return head + struct.pack("<H", self.colour) * len(alpha) + alpha

    def advance(self, before, letter):
        """(letter of the strip or None, kerning, what it takes)."""
        if letter == " ":
            return None, 0, self.advance("", "l")[2]
        if letter == "~":
            return None, 0, 3
        glyph = {"@": "<", "$": ">"}.get(letter, letter)
        before = {"@": "<", "$": ">"}.get(before, before)
        if glyph not in self.alpha:
            return None, 0, 2
        first, last = self.columns(glyph)
        kerning = self.kerning.get(before + glyph, 0)
        return glyph, kerning, last - first - kerning + 2

    def length(self, text):
        return sum(self.advance(text[i - 1] if i else "", c)[2] for i, c in enumerate(text))


class Screen:
    def __init__(self):
        self.pixels = [0] * (WIDTH * HEIGHT)

    def fill(self, rect, colour):
        for y in range(rect[1], rect[3]):
            for x in range(rect[0], rect[2]):
                self.pixels[y * WIDTH + x] = colour

    def put(self, x, y, colour, alpha, opacity):
        if not (0 <= x < WIDTH and 0 <= y < HEIGHT):
            return
        more = 1 if opacity == 255 else 0
        if opacity != 255:
            alpha = alpha * opacity >> 8
        if alpha == 0:
            return
        mixed = 0
        for shift, bits in ((11, 5), (5, 6), (0, 5)):
            most = (1 << bits) - 1
            s, t = colour >> shift & most, self.pixels[y * WIDTH + x] >> shift & most
            mixed |= min(most, (((s - t) * alpha + t * 256) >> 8) + more) << shift
        self.pixels[y * WIDTH + x] = colour if alpha == 255 else mixed

    def letter(self, font, glyph, x, y, colour, clip, opacity):
        first, last = font.columns(glyph)
        for row in range(font.height):
            for column in range(first, last):
                at = (x + column - first, y + row)
                if clip is None or clip[0] <= at[0] < clip[2] and clip[1] <= at[1] < clip[3]:
                    self.put(*at, colour, font.alpha[glyph][row][column], opacity)

    def save(self, path):
        colours = bytes(b for p in self.pixels for b in (p >> 8 & 0xF8, p >> 3 & 0xFC, p << 3 & 0xF8))
        png.write(path, png.Picture(WIDTH, HEIGHT, colours))


STYLES = {"B": "BOLD", "I": "ITALIC"}


def pieces(text, fonts):
    """("text", letters, font, colour) and ("end",) of a marked-up text; colour None is the text's own."""
    style, colour = "STANDARD", None
    for part in re.findall(r"<[^<>]*>|<[^<>]*|[^<>|]+|\|", text):
        code = part[1:-1] if part[0] == "<" and part[-1] == ">" else None
        if part == "|":
            yield ("end",)
        elif code is None:
            yield "text", part, fonts[style], colour
        elif code in STYLES:
            other = "STANDARD" if style == STYLES[code] else STYLES[code]
            style = other if other in fonts else style
        elif code.startswith("COLOR"):
            numbers = [int(n) for n in code[5:].split(",")] if code[5:] else []
            colour = packed(*numbers) if len(numbers) == 3 else numbers[0] if numbers else None


def packed(red, green, blue):
    return red >> 3 << 11 | green >> 2 << 5 | blue >> 3


def lines(text, fonts, width):
    """Of each line its (letters, font, colour, x) and its length; None for an empty one."""
    found, line, x, blank = [], [], 0, False
    for kind, *rest in list(pieces(text, fonts)) + [("close",)]:
        if kind == "text":
            letters, font, colour = rest
            for word in re.findall(r" +|[^ ]+", letters):
                if word[0] == " ":
                    blank = True
                    continue
                gap = font.length(" ") if blank and line else 0
                if line and x + gap + font.length(word) > width:
                    found, line, x, gap = found + [(line, x)], [], 0, 0
                x += gap
                line = line + [(word, font, colour, x)]
                x, blank = x + font.length(word), False
        elif line or kind == "end":
            found, line, x, blank = found + [(line, x) if line else None], [], 0, False
    return found


def place(text, fonts, rect, h="LEFT", v="TOP", width=None):
    """Every word with its place on the screen, and the text's box; wrapped into another width where one is given."""
    found = lines(text, fonts, width or rect[2] - rect[0])
    tall = fonts["STANDARD"].height
    heights = [0 if line is None and i and found[i - 1] is None else tall for i, line in enumerate(found)]
    height = sum(heights) - 2 * (len(found) - 1)

    def aligned(low, high, size, way):
        return {"LEFT": low, "TOP": low, "RIGHT": high - size, "BOTTOM": high - size}.get(way, int((high - low - size) / 2) + low)

    y, words = aligned(rect[1], rect[3], height, v), []
    width = max(line[1] for line in found if line)
    box = (aligned(rect[0], rect[2], width, h), y, width, height)
    for line, tall in zip(found, heights):
        if line:
            left = aligned(rect[0], rect[2], line[1], h)
            words += [(word, font, colour, left + x, y) for word, font, colour, x in line[0]]
        y += tall - 2
    return words, box


def show(screen, words, colour=0, clip=None, opacity=255):
    for word, font, own, x, y in words:
        for i, letter in enumerate(word):
            glyph, kerning, advance = font.advance(word[i - 1] if i else "", letter)
            if glyph:
                screen.letter(font, glyph, x - kerning, y, colour if own is None else own, clip, opacity)
            x += advance


KERNING = (("VA", 2), ("AV", 2), ("ln", 5), ("fi", 4), ("<A", 3), ("bc", -2))
FONTS = {"STANDARD": Font(0x1234, 1, KERNING), "BOLD": Font(0x1234, 2)}


def write_fonts(game):
    folder = GAMES / game / "Dane" / "MAIN"
    folder.mkdir(parents=True, exist_ok=True)
    for style, font in FONTS.items():
        (folder / f"{style.lower()}.fnt").write_bytes(font.file())
    return folder


def plate(path, width, height, colour, at=(0, 0)):
    data = struct.pack("<H", colour) * (width * height)
    path.write_bytes(struct.pack("<4s9i", b"PIK", width, height, 16, len(data), 0, 0, 0, *at) + data)


DEFINITIONS = """DEF:BACK(TYPE=IMAGE|FILENAME=back.img|TOCANVAS=TRUE|VISIBLE=TRUE|PRIORITY=1)
DEF:LETTERS(TYPE=FONT|DEF_PLAIN_STANDARD_9=standard.fnt|DEF_PLAIN_BOLD_9=bold.fnt)
"""


def stand_in_nine_ways():
    """The same words in nine rectangles: each begins in black, one is clipped, one is dim."""
    game = "texts_stand_in_nine_ways"
    folder = write_fonts(game)
    plate(folder / "back.img", WIDTH, HEIGHT, 0xBDF7)
    screen, text, code = Screen(), DEFINITIONS, ""
    screen.fill((0, 0, WIDTH, HEIGHT), 0xBDF7)
    say = "all <B>bold<B> lines of VA^VA letters in<COLOR 255,0,0> a rose tone fit"
    for i, v in enumerate(("TOP", "CENTER", "BOTTOM")):
        for j, h in enumerate(("LEFT", "CENTER", "RIGHT")):
            rect = (3 + 66 * j, 1 + 40 * i, 65 + 66 * j, 39 + 40 * i)
            name = f"T{i}{j}"
            text += f"OBJECT={name}\n{name}:TYPE=TEXT\n{name}:TEXT={say}\n{name}:FONT=LETTERS\n{name}:VISIBLE=TRUE\n"
            text += f"{name}:TOCANVAS=TRUE\n{name}:PRIORITY=2\n{name}:HJUSTIFY={h}\n{name}:VJUSTIFY={v}\n"
            text += f"{name}:RECT={','.join(map(str, rect))}\n"
            words, box = place(say, FONTS, rect, h, v)
            clip, opacity = None, 255
            if name == "T11":
                code += f"{name}^SETCLIPPING(5,4,50,22);"
                clip = (box[0] + 5, box[1] + 4, box[0] + 50, box[1] + 22)
            if name == "T21":
                code += f"{name}^SETOPACITY(150);"
                opacity = 150
            show(screen, words, 0, clip, opacity)
    text += f"OBJECT=__INIT__\n__INIT__:TYPE=BEHAVIOUR\n__INIT__:CODE={{{code}}}\n"
    (folder / "MAIN.cnv").write_text(text, newline="\n")
    screen.save(GAMES / game / "shown.png")


def text_object(name, text, rect, more=""):
    """The lines of a TEXT that is shown."""
    lines = f"TYPE=TEXT|TEXT={text}|FONT=LETTERS|RECT={','.join(map(str, rect))}|TOCANVAS=TRUE|VISIBLE=TRUE|PRIORITY=2|{more}"
    return f"OBJECT={name}\n" + "".join(f"{name}:{line}\n" for line in lines.strip("|").split("|"))


def change_their_look():
    """Texts that are changed before the first frame, and again after it; the second screen shows no trace of the first, and
    the third none of the text whose FONT has ended."""
    game = "texts_change_their_look"
    folder = write_fonts(game)
    plate(folder / "back.img", WIDTH, HEIGHT, 0xBDF7)
    plate(folder / "sign.img", 60, 22, 0x07FF)
    (folder / "poem.txt").write_bytes(b"ode\r\n\r\nto <B>rose<B>s\n")
    text = DEFINITIONS.replace("VISIBLE=TRUE|PRIORITY=1)", "VISIBLE=TRUE|PRIORITY=1)\n") + (
        "DEF:SIGN(TYPE=IMAGE|FILENAME=sign.img|TOCANVAS=TRUE|VISIBLE=TRUE|PRIORITY=1)\n"
        "DEF:HEAVY(TYPE=FONT|DEF_PLAIN_STANDARD_9=bold.fnt)\n"
        "DEF:SAY(TYPE=STRING|VALUE=a <COLOR31>dot<COLOR> on it)\n"
        "DEF:LENT(TYPE=FONT|DEF_PLAIN_STANDARD_9=standard.fnt)\n"
    )
    first, second = Screen(), Screen()
    heavy, whole = {"STANDARD": FONTS["BOLD"]}, (0, 0, WIDTH, HEIGHT)
    early, late = "", ""
    for screen in (first, second):
        screen.fill(whole, 0xBDF7)

    def both(words_first, words_second, *look):
        show(first, words_first, *look[:1])
        show(second, words_second, *look[1:])

    # A colour of its own; the text that comes then keeps it, and goes back to its rectangle. The font has it from then on.
    text += text_object("OWN", "red tones", (2, 2, 90, 12))
    early += "OWN^SETCOLOR(255,0,0);"
    late += 'OWN^SETPOSITION(20,50);OWN^SETTEXT(SAY);'
    both(place("red tones", FONTS, (2, 2, 90, 12))[0], place("a <COLOR31>dot<COLOR> on it", FONTS, (2, 2, 90, 12))[0], 0xF800, 0xF800)
    # The colour that the FONT gives to its texts, and another FONT.
    text += text_object("FONTS", "all of it", (100, 2, 190, 12))
    early += "LENT^SETCOLOR(0,255,0);"
    late += 'FONTS^SETFONT("LENT");'
    both(*[place("all of it", FONTS, (100, 2, 190, 12))[0]] * 2, 0, 0x07E0)
    text += text_object("OTHER", "fine lines", (2, 14, 90, 24))
    late += 'OTHER^SETFONT("HEAVY");'
    both(place("fine lines", FONTS, (2, 14, 90, 24))[0], place("fine lines", heavy, (2, 14, 90, 24))[0], 0, 0)
    # Words.
    text += text_object("WORDS", "ere an oar", (100, 14, 190, 24), "HYPERTEXT=TRUE")
    early += "WORDS^SETWORDCOLOR(1,0,0,255);"
    late += "WORDS^SETWORDCOLOR(1,255,255,255);WORDS^SETWORDCOLOR(2,255,0,0);"
    words = place("ere an oar", FONTS, (100, 14, 190, 24))[0]
    colored = lambda colors: [(word, font, color, x, y) for (word, font, _, x, y), color in zip(words, colors)]
    both(colored([None, 31, None]), colored([None, 0xFFFF, 0xF800]), 0, 0)
    # Moved, clipped and dimmed.
    text += text_object("MOVED", "leap", (2, 40, 40, 50))
    late += "MOVED^MOVE(50,5);MOVED^SETOPACITY(100);"
    show(first, place("leap", FONTS, (2, 40, 40, 50))[0])
    show(second, place("leap", FONTS, (52, 45, 90, 55))[0], opacity=100)
    text += text_object("PUT", "atone", (2, 104, 60, 114))
    late += "PUT^SETPOSITION(70,107);"
    show(first, place("atone", FONTS, (2, 104, 60, 114))[0])
    show(second, place("atone", FONTS, (70, 107, 130, 119))[0])
    text += text_object("CUT", "pure slate", (100, 40, 190, 50))
    early += "CUT^SETCLIPPING(10,2,30,7);"
    late += "CUT^CLEARCLIPPING();CUT^INVALIDATE();"
    cut = place("pure slate", FONTS, (100, 40, 190, 50))[0]
    show(first, cut, clip=(110, 42, 130, 47))
    show(second, cut)
    # A file, in another rectangle.
    text += text_object("FILE", "", (2, 60, 60, 118), "HJUSTIFY=RIGHT")
    early += 'FILE^LOAD("poem.txt");'
    late += "FILE^SETRECT(60,55,140,110);"
    poem = "ode||to <B>rose<B>s"
    moved = place(poem, FONTS, (60, 55, 140, 110), "RIGHT", width=58)[0]
    both(place(poem, FONTS, (2, 60, 60, 118), "RIGHT")[0], moved, 0xF800, 0xF800)
    # Shown and hidden; a FONT that ends.
    text += text_object("GONE", "bliss", (2, 26, 90, 36)) + text_object("LATE", "sole", (100, 26, 190, 36))
    early += "LATE^HIDE();"
    late += "GONE^HIDE();LATE^SHOW();"
    show(first, place("bliss", FONTS, (2, 26, 90, 36))[0])
    show(second, place("sole", FONTS, (100, 26, 190, 36))[0])
    text += text_object("ORPHAN", "no <B>font<B>", (145, 60, 199, 80)).replace("LETTERS", "SHORT")
    text += "DEF:SHORT(TYPE=FONT|DEF_PLAIN_STANDARD_9=standard.fnt|DEF_PLAIN_BOLD_9=bold.fnt)\n"
    last = 'MAIN^REMOVE("SHORT");'
    # On another picture, cut by it.
    text += text_object("PART", "AVAVA clue", (4, 12, 99, 22)).replace("TOCANVAS=TRUE", "TOCANVAS=FALSE")
    early += 'SIGN^SETPOSITION(138,90);PART^DRAWONTO("SIGN",1);'
    late += 'PART^SETTEXT("AA");SIGN^INVALIDATE();'
    sign = (138, 90, 198, 112)
    for screen, say, color in ((first, "AVAVA clue", 0), (second, "AA", 0xF800)):
        screen.fill(sign, 0x07FF)
        show(screen, place(say, FONTS, (142, 102, 240, 112))[0], color, clip=sign)
    text += f"OBJECT=__INIT__\n__INIT__:TYPE=BEHAVIOUR\n__INIT__:CODE={{{early}@RUNONTIMER(60,1,\"LATER\");}}\n"
    text += f"OBJECT=LATER\nLATER:TYPE=BEHAVIOUR\nLATER:CODE={{{late}@RUNONTIMER(60,1,{{{last}}});}}\n"
    (folder / "MAIN.cnv").write_text(text, newline="\n")
    second.save(GAMES / game / "third.png")
    for screen in (first, second):
        show(screen, place("no <B>font<B>", FONTS, (145, 60, 199, 80))[0])
    first.save(GAMES / game / "first.png")
    second.save(GAMES / game / "second.png")


def answer_their_methods():
    folder = write_fonts("texts_answer_their_methods")
    plate(folder / "sign.img", 60, 22, 0x07FF, (138, 90))


if __name__ == "__main__":
    stand_in_nine_ways()
    change_their_look()
    answer_their_methods()
