#!/usr/bin/env python3
"""Makes the pictures of the games about picture files, and the screens that they must give: a plain reference that
shares nothing with the engine. Writes into the games' folders; standard library only.

    python3 tests/games/pictures.py
"""

import dataclasses
import json
import pathlib
import struct

import png

GAMES = pathlib.Path(__file__).resolve().parent
NONE, LZO, LZO_RLE, RLE, JPEG = 0, 2, 3, 4, 5
CELL = 16

# --- packing


def runs(units):
    """(unit, count) of equal neighbours."""
    found = []
    for unit in units:
        if found and found[-1][0] == unit:
            found[-1][1] += 1
        else:
            found.append([unit, 1])
    return found


def rle(data, width):
    """Every run on its own: repeats from two on, literals of one."""
    out = bytearray()
    for unit, count in runs([data[i : i + width] for i in range(0, len(data), width)]):
        while count:
            part = min(count, 127)
            out += bytes([128 | part if part > 1 else 1]) + unit
            count -= part
    return bytes(out)


def extended(first, most, value):
    """A length in an LZO instruction: in its low bits, or in bytes behind it."""
    if value <= most:
        return bytes([first | value])
    zeros, rest = divmod(value - most - 1, 255)
    return bytes([first]) + bytes(zeros) + bytes([rest + 1])


def lzo_block(data):
    """Literals of four bytes and more, and matches at a distance of two bytes where the last pair repeats."""
    out, literals, at = bytearray(), bytearray(data[:4]), 4
    fresh = True

    def flush():
        nonlocal fresh
        if fresh and len(literals) <= 238:
            out.extend(bytes([17 + len(literals)]) + literals)
        else:
            out.extend(extended(0, 15, len(literals) - 3) + literals)
        literals.clear()
        fresh = False

    while at < len(data):
        length = 0
        while at + length < len(data) and data[at + length] == data[at + length - 2]:
            length += 1
        if length >= 6 and len(data) - at - length not in (1, 2, 3) and len(literals) >= 4:
            flush()
            out += extended(0x20, 31, length - 2) + struct.pack("<H", (2 - 1) << 2)
            at += length
            literals += data[at : at + 4]
            at += 4
        else:
            literals.append(data[at])
            at += 1
    if literals:
        flush()
    out += b"\x11\0\0"
    return struct.pack("<ii", len(data), len(out)) + bytes(out)


def code_table_block(data, codes_between_clears=40):
    """The older form, its table emptied every so many codes."""
    codes, table, after, width, since = [], {}, 257, 9, 0
    prefix = data[:1]
    code_of = lambda text: text[0] if len(text) == 1 else table[text]
    for byte in data[1:]:
        longer = prefix + bytes([byte])
        if longer in table:
            prefix = longer
            continue
        codes.append((code_of(prefix), width))
        table[longer], after, since = after, after + 1, since + 1
        if after - 1 == 1 << width:
            width += 1
        if since == codes_between_clears:
            codes.append((256, width))
            table, after, width, since = {}, 257, 9, 0
        prefix = bytes([byte])
    codes.append((code_of(prefix), width))
    bits = place = 0
    for code, size in codes:
        bits |= code << place
        place += size
    stream = bits.to_bytes((place + 7) // 8, "little")
    return struct.pack("<iii", len(data), len(stream), len(codes)) + stream


def jpeg(width, height, blocks, scans=0, restarts=0):
    """Blocks of 8 x 8 pixels, row by row, each of one (y, cb, cr): only their differences are coded. With `scans` in the
    progressive form, its one scan so many times; with `restarts` it claims marks that are not there."""
    table = bytes([0, 0, 0, 0, 0, 0, 0, 0, 12] + [0] * 8)[1:]  # twelve codes of eight bits: the sizes 0 to 11
    bits = ""
    before = [0, 0, 0]
    for block in blocks:
        for i, value in enumerate(block):
            level = (value - 128) * 8
            difference, before[i] = level - before[i], level
            size = abs(difference).bit_length()
            bits += f"{size:08b}"
            if size:
                bits += f"{difference if difference > 0 else difference + (1 << size) - 1:0{size}b}"
            bits += "" if scans else "0"  # the end of the block
    bits += "1" * (-len(bits) % 8)
    scan = bytes(int(bits[i : i + 8], 2) for i in range(0, len(bits), 8)).replace(b"\xff", b"\xff\0")

    def segment(kind, content):
        return bytes([0xFF, kind]) + struct.pack(">H", len(content) + 2) + content

    components = bytes([3, 1, 0x11, 0, 2, 0x11, 0, 3, 0x11, 0])
    return (
        b"\xff\xd8"
        + segment(0xDB, b"\0" + b"\1" * 64)
        + (segment(0xDD, struct.pack(">H", restarts)) if restarts else b"")
        + segment(0xC2 if scans else 0xC0, struct.pack(">BHH", 8, height, width) + components)
        + segment(0xC4, b"\0" + table + bytes(range(12)))
        + segment(0xC4, b"\x10" + bytes([1] + [0] * 15) + b"\0")
        + (segment(0xDA, bytes([3, 1, 0, 2, 0, 3, 0, 0, 0 if scans else 63, 0])) + scan) * max(1, scans)
        + b"\xff\xd9"
    )


# --- pictures


class Drawing:
    """Pixels of 16 or 15 bits and an alpha plane or None."""

    def __init__(self, width, height, bpp, pixels, alpha=None):
        self.width, self.height, self.bpp, self.pixels, self.alpha = width, height, bpp, pixels, alpha

    @property
    def colour(self):
        return struct.pack(f"<{len(self.pixels)}H", *self.pixels)

    @property
    def planes(self):
        return self.colour, bytes(self.alpha) if self.alpha else b""


def drawing(seed, bpp=16, has_alpha=False, width=13, height=11):
    """Stripes, flat parts and noise."""
    pixels, alpha, state = [], [], seed
    for y in range(height):
        for x in range(width):
            state = (state * 1103515245 + 12345) & 0x7FFFFFFF
            pixel = state >> 12 & 0xFFFF if y % 4 == 3 else seed * 2777 + (x // 5) * 1057 + (y // 4) * 8000
            pixels.append(pixel & (0x7FFF if bpp == 15 else 0xFFFF))
            alpha.append((0, 255, 128, 254, 1)[(x // 4 + y) % 5])
    return Drawing(width, height, bpp, pixels, alpha if has_alpha else None)


def jpeg_drawing(width, height, blocks, alpha=None):
    """What the blocks of `jpeg` are as pixels of 16 bits."""
    across = (width + 7) // 8
    pixels = []
    for y in range(height):
        for x in range(width):
            luma, cb, cr = blocks[y // 8 * across + x // 8]
            red = luma + 1.402 * (cr - 128)
            green = luma - 0.344136 * (cb - 128) - 0.714136 * (cr - 128)
            blue = luma + 1.772 * (cb - 128)
            red, green, blue = (min(255, max(0, round(c))) for c in (red, green, blue))
            pixels.append(red >> 3 << 11 | green >> 2 << 5 | blue >> 3)
    return Drawing(width, height, 16, pixels, alpha)


def pik(picture, form, x, y, packed=None, flag=None, bpp=None):
    colour, alpha = packed or picture.planes
    fields = (picture.width, picture.height, bpp or picture.bpp, len(colour), 0, form if flag is None else flag)
    return b"PIK\0" + struct.pack("<9i", *fields, len(alpha), x, y) + colour + alpha


def nvi(picture, form, x, y, packed=None):
    colour, alpha = packed or picture.planes
    fields = (picture.width, picture.height, 4, len(colour), len(alpha), x, y, form)
    return b"NVI\0" + struct.pack("<hhBiihhi", *fields) + bytes(12) + colour + alpha


def oldest(picture, planes):
    flags = (4 if picture.bpp == 16 else 2) | (0x400 if picture.alpha else 0) | 0xA0
    head = struct.pack("<hh6sHH", picture.width, picture.height, b"\x55" * 6, flags, 0x5555)
    return b"\x21" * 80 + head + b"".join(planes)


def each(packer, planes):
    return tuple(packer(plane) if plane else b"" for plane in planes)


def rle_planes(planes):
    return rle(planes[0], 2), rle(planes[1], 1) if planes[1] else b""


def to16(pixel):
    return (pixel & 0x1F) | (pixel & 0xFFC0) << 1


class Screen:
    def __init__(self, width, height):
        self.width, self.height = width, height
        self.pixels = [0] * (width * height)

    def draw(self, picture, left, top):
        """The lowest channel bits of 5-5-5 are dropped, alpha from 1 to 254 adds 1 to every channel."""
        count = len(picture.pixels) // 2 * 2
        for i, pixel in enumerate(picture.pixels):
            alpha = picture.alpha[i] if picture.alpha else 255
            if alpha == 0:
                continue
            if picture.bpp == 15 and i < count:
                pixel = to16(pixel)
            place = (top + i // picture.width) * self.width + left + i % picture.width
            under, mixed = self.pixels[place], 0
            for shift, most in ((11, 31), (5, 63), (0, 31)):
                s, t = pixel >> shift & most, under >> shift & most
                mixed |= min(most, (((s - t) * alpha + (t << 8) & 0xFFFF) >> 8) + 1) << shift
            self.pixels[place] = pixel if alpha == 255 else mixed

    def save(self, path):
        colours = bytearray()
        for p in self.pixels:
            colours += bytes((p >> 8 & 0xF8, p >> 3 & 0xFC, p << 3 & 0xF8))
        png.write(path, png.Picture(self.width, self.height, bytes(colours)))


# --- the screen and its background


def plain(path, width, height, pixels, place=(0, 0), alpha=b""):
    """A "PIK" file of plain 5-6-5 pixels."""
    data = struct.pack(f"<{width * height}H", *pixels)
    head = struct.pack("<4s9i", b"PIK", width, height, 16, len(data), 0, 0, len(alpha), *place)
    path.write_bytes(head + data + alpha)


def the_screen_is_scrolled_and_saved():
    """A background twice as wide as the screen, shown from column 5 and then from column 100, where it goes round; a
    patch of 8 x 4 is pasted into it, another lies on top."""
    game = GAMES / "the_background_scrolls_and_is_saved"
    folder = game / "Dane" / "MAIN"
    folder.mkdir(parents=True, exist_ok=True)
    wide, width, height = 128, 64, 48
    back = [[(x % 32) << 11 | (y & 63) << 5 | x // 32 for x in range(wide)] for y in range(height)]
    plain(folder / "back.img", wide, height, [p for row in back for p in row])
    plain(folder / "patch.img", 8, 4, [0xFFFF] * 32)
    plain(folder / "top.img", 4, 4, [0x07E0] * 16, place=(40, 30))

    def shown(start):
        return [[back[y][(x + start) % wide] for x in range(width)] for y in range(height)]

    def save(rows, name):
        colours = bytes(b for row in rows for p in row for b in (p >> 8 & 0xF8, p >> 3 & 0xFC, p << 3 & 0xF8))
        png.write(game / name, png.Picture(width, height, colours))

    save(shown(5), "moved.png")
    for y in range(4):
        back[6 + y][110:118] = [0xFFFF] * 8
    second = shown(100)
    for y in range(4):
        second[30 + y][40:44] = [0x07E0] * 4
    save(second, "placed.png")
    save(shown(100), "taken.png")
    # Columns 8 to 28 and lines 2 to 18, each second one.
    plain(game / "part.img", 10, 8, [second[2 + 2 * y][8 + 2 * x] for y in range(8) for x in range(10)])
    expectation = json.loads((game / "expect.json").read_text())
    expectation["files"] = {"Dane\\MAIN\\part.img": {"bytes_hex": (game / "part.img").read_bytes().hex()}}
    (game / "part.img").unlink()
    (game / "expect.json").write_text(json.dumps(expectation, indent=2) + "\n")


# --- the games


@dataclasses.dataclass
class Image:
    """An IMAGE of a scene: its file, what it must show (None: nothing), and where; moved there where the file does not
    say so."""

    name: str
    file: str
    content: bytes
    shown: Drawing
    x: int
    y: int
    is_moved: bool


def scene(game, images, more):
    """The images, a variable for the width of each, and more code."""
    text = ""
    for image in images:
        text += f"DEF:{image.name}(TYPE=IMAGE|FILENAME={image.file}|TOCANVAS=TRUE|VISIBLE=TRUE|PRIORITY=1)\n"
        text += f"DEF:W{image.name}(TYPE=INTEGER|VALUE=-1|TOINI=TRUE)\n"
    code = "".join(f"{image.name}^SETPOSITION({image.x},{image.y});" for image in images if image.is_moved)
    code += "".join(f"W{image.name}^SET({image.name}^GETWIDTH());" for image in images)
    text += f"OBJECT=__INIT__\n__INIT__:TYPE=BEHAVIOUR\n__INIT__:CODE={{{code}{more}}}\n"
    folder = game / "Dane" / "MAIN"
    folder.mkdir(parents=True, exist_ok=True)
    (folder / "MAIN.cnv").write_text(text, newline="\n")
    tree = "DEF:MAIN(TYPE=SCENE|PATH=MAIN|BACKGROUND=back.img)\nDEF:GAME(TYPE=APPLICATION|SCENES=MAIN)\n"
    (game / "Dane" / "application.def").write_text(tree, newline="\n")
    return folder


BLOCKS = [(180, 90, 170), (60, 200, 100), (128, 128, 128), (230, 120, 140)]


def forms():
    """(name, file ending, content as a function of the place, what it shows)."""
    d = drawing
    yield "PLAIN", "img", lambda p, x, y: pik(p, NONE, x, y), d(1, has_alpha=True)
    yield "PLAIN15", "img", lambda p, x, y: pik(p, NONE, x, y, bpp=2), d(2, bpp=15)
    yield "LZO", "img", lambda p, x, y: pik(p, LZO, x, y, each(lzo_block, p.planes)), d(3, has_alpha=True)
    yield "LZO15", "IMG", lambda p, x, y: pik(p, LZO, x, y, each(lzo_block, p.planes)), d(4, bpp=15)
    yield "UNFLAGGED", "img", lambda p, x, y: pik(p, LZO, x, y, each(lzo_block, p.planes), flag=0), d(5, has_alpha=True)
    yield "LZORLE", "img", lambda p, x, y: pik(p, LZO_RLE, x, y, each(lzo_block, rle_planes(p.planes))), d(6, has_alpha=True)
    yield "RLE", "img", lambda p, x, y: pik(p, RLE, x, y, rle_planes(p.planes), bpp=4), d(7, has_alpha=True)
    alpha = drawing(8, has_alpha=True, width=14, height=12).alpha
    made = jpeg(14, 12, BLOCKS)
    shown = jpeg_drawing(14, 12, BLOCKS, alpha)
    yield "JPEGIMG", "img", lambda p, x, y: pik(p, JPEG, x, y, (made, lzo_block(bytes(alpha)))), shown
    yield "JPEG", "jpg", lambda p, x, y: made, jpeg_drawing(14, 12, BLOCKS)
    yield "NVI", "img", lambda p, x, y: nvi(p, NONE, x, y), d(9, has_alpha=True)
    yield "NVICODES", "img", lambda p, x, y: nvi(p, LZO, x, y, each(code_table_block, p.planes)), d(10, has_alpha=True)
    yield "NVIRLE", "img", lambda p, x, y: nvi(p, RLE, x, y, rle_planes(p.planes)), d(11, has_alpha=True)
    yield "NVILZORLE", "img", lambda p, x, y: nvi(p, LZO_RLE, x, y, each(lzo_block, rle_planes(p.planes))), d(12)
    yield "NVIJPEG", "img", lambda p, x, y: nvi(p, JPEG, x, y, (made, b"")), jpeg_drawing(14, 12, BLOCKS)
    yield "OLDPLAIN", "img", lambda p, x, y: oldest(p, p.planes), d(13, has_alpha=True)
    yield "OLDLZO", "img", lambda p, x, y: oldest(p, (lzo_block(p.colour),)), d(14, bpp=15)


def write_game(name, screen, images, saved=()):
    """The images stand on a picture that fills the screen; those in `saved` are saved as they are on it."""
    game = GAMES / name
    back = drawing(20, width=screen.width, height=screen.height)
    folder = scene(game, images, "".join(f'{image}^SAVE("{image}.out");' for image, _ in saved))
    (folder / "back.img").write_bytes(pik(back, LZO, 0, 0, each(lzo_block, back.planes)))
    for image in images:
        if image.content is not None:
            (folder / image.file).write_bytes(image.content)
    screen.draw(back, 0, 0)
    for image in images:
        if image.shown:
            screen.draw(image.shown, image.x, image.y)
    screen.save(game / "shown.png")
    expect = {
        "args": ["-window", "-res", str(screen.width), str(screen.height)],
        "ticks": 4,
        "ini": {"MAIN": {"W" + image.name: str(image.shown.width if image.shown else 0) for image in images}},
        "shots": {"2": "shown.png"},
    }
    if saved:
        expect["files"] = {f"Dane\\MAIN\\{image}.out": {"bytes_hex": content.hex()} for image, content in saved}
    (game / "expect.json").write_text(json.dumps(expect, indent=2) + "\n", newline="\n")


def every_form():
    screen, images, saved = Screen(5 * CELL, 4 * CELL), [], []
    for number, (name, ending, make, shown) in enumerate(forms()):
        x, y = number % 5 * CELL + 1, number // 5 * CELL + 2
        has_place = ending != "jpg" and not name.startswith("OLD")
        images.append(Image(name, f"{name.lower()}.{ending}", make(shown, x, y), shown, x, y, not has_place))
        if shown.bpp == 16:
            saved.append((name, pik(shown, NONE, x, y)))
    write_game("every_form_of_picture_is_read", screen, images, saved)


def cut(picture, size):
    """The picture with only so many bytes of its colours; the rest is zero."""
    colour = picture.colour[:size].ljust(len(picture.colour), b"\0")
    pixels = list(struct.unpack(f"<{len(picture.pixels)}H", colour))
    return Drawing(picture.width, picture.height, 16, pixels, picture.alpha)


def fitted(picture, width, height):
    """What the picture and a picture of another size have in common; the rest is black."""
    pixels = [0] * (width * height)
    for y in range(min(height, picture.height)):
        for x in range(min(width, picture.width)):
            pixels[y * width + x] = picture.pixels[y * picture.width + x]
    return Drawing(width, height, 16, pixels)


def lying(block, at, number):
    return block[:at] + struct.pack("<i", number) + block[at + 4 :]


def damaged():
    """(name, content, what it shows or None for nothing)."""
    d = drawing(3)
    c, size = d.colour, len(d.colour)
    block, codes = lzo_block(c), code_table_block(c)
    as_lzo = lambda packed: pik(d, LZO, 0, 0, (packed, b""))
    as_rle = lambda packed: pik(d, RLE, 0, 0, (packed, b""))
    yield "LZOLESS", as_lzo(lzo_block(c[:100])), cut(d, 100)
    yield "LZOMORE", as_lzo(lzo_block(c + c)), d
    yield "LZOBIG", as_lzo(lying(block, 0, 0x7FFFFFFF)), d
    yield "LZOSMALL", as_lzo(lying(block, 0, 50)), cut(d, 50)
    yield "LZOPAST", as_lzo(lying(block, 4, 0x7FFFFFFF)), d
    yield "LZONONE", as_lzo(b"\0\0"), cut(d, 0)
    yield "RLELESS", as_rle(rle(c[:100], 2)), cut(d, 100)
    yield "RLEMORE", as_rle(rle(c + c, 2)), d
    half = Drawing(13, 11, 16, d.pixels[:50] + [0x2211, 0x33] + d.pixels[52:])
    yield "RLECUT", as_rle(rle(c[:100], 2) + b"\x05\x11\x22\x33"), cut(half, 104)
    yield "WRAPPED", pik(d, LZO_RLE, 0, 0, (lzo_block(rle(c[:80], 2)), b"")), cut(d, 80)
    yield "CODES", nvi(d, LZO, 0, 0, (code_table_block(c[:90]), b"")), cut(d, 90)
    yield "CODESBIG", nvi(d, LZO, 0, 0, (lying(lying(codes, 0, 0x7FFFFFFF), 8, 0x7FFFFFFF), b"")), d
    yield "NVISHORT", nvi(d, NONE, 0, 0)[:-60], cut(d, size - 60)
    made, shown = jpeg(14, 12, BLOCKS), jpeg_drawing(14, 12, BLOCKS)
    large, small = Drawing(15, 13, 16, [0] * 195), Drawing(9, 5, 16, [0] * 45)
    yield "JPEGSMALL", pik(large, JPEG, 0, 0, (made, b"")), fitted(shown, 15, 13)
    yield "JPEGLARGE", pik(small, JPEG, 0, 0, (made, b"")), fitted(shown, 9, 5)
    flat = BLOCKS[:1] * 4  # of one colour: decoders smooth what came without fine scans
    many = jpeg(14, 12, flat, scans=256)
    yield "JPEGSCANS", pik(large, JPEG, 0, 0, (many, b"")), fitted(jpeg_drawing(14, 12, flat), 15, 13)
    yield "JPEGBUSY", pik(large, JPEG, 0, 0, (jpeg(14, 12, BLOCKS, scans=257), b"")), None
    yield "JPEGFAULTS", pik(large, JPEG, 0, 0, (jpeg(9600, 8, BLOCKS * 300, restarts=1), b"")), None
    yield "JPEGNONE", pik(large, JPEG, 0, 0, (b"no such data", b"")), None
    yield "JPEGLIES", lying(pik(large, JPEG, 0, 0, (made, b"")), 16, -5), None
    whole = pik(d, NONE, 0, 0)
    yield "WIDE", lying(lying(whole, 4, 65536), 8, 65536), None
    yield "FLAT", lying(whole, 8, 0), None
    yield "ALPHA", lying(whole, 28, size + 1), None
    yield "ALPHALESS", lying(whole, 28, -1), None
    yield "ALPHAODD", pik(d, NONE, 0, 0, (c, b"\x80" * 20)), None
    yield "UNKNOWN", lying(whole, 24, 7), None
    yield "MINUS", nvi(Drawing(-1, -1, 16, []), NONE, 0, 0), None
    yield "HEAD", whole[:39], None
    yield "EMPTY", b"", None
    yield "MISSING", None, None


def damaged_pictures():
    images = []
    for number, (name, content, shown) in enumerate(damaged()):
        x, y = number % 8 * CELL + 1, number // 8 * CELL + 1
        images.append(Image(name, f"{name.lower()}.img", content, shown, x, y, True))
    bad = jpeg(14, 12, BLOCKS)
    images.append(Image("BADJPEG", "bad.jpg", b"\xff\xd8\xff" + bad[20:], None, 0, 0, True))
    write_game("damaged_pictures_end_in_zeros", Screen(8 * CELL, 4 * CELL), images)


if __name__ == "__main__":
    every_form()
    damaged_pictures()
    the_screen_is_scrolled_and_saved()
