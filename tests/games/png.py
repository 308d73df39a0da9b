"""Pictures as PNG files: 8 bits a channel, RGB or RGBA, not interlaced. Standard library only."""

import dataclasses
import pathlib
import struct
import zlib

SIGNATURE = b"\x89PNG\r\n\x1a\n"


@dataclasses.dataclass
class Picture:
    """Rows of RGB bytes from the top, without padding."""

    width: int
    height: int
    pixels: bytes

    @property
    def size(self):
        return f"{self.width}x{self.height}"

    def at(self, x, y):
        start = 3 * (y * self.width + x)
        return tuple(self.pixels[start : start + 3])


def _chunks(data):
    place = len(SIGNATURE)
    while place + 8 <= len(data):
        length, kind = struct.unpack_from(">I4s", data, place)
        yield kind, data[place + 8 : place + 8 + length]
        place += length + 12


def _unfilter(raw, width, height, channels):
    """Undoes the filters of the rows."""
    stride = width * channels
    before = bytearray(stride)
    result = bytearray()
    for y in range(height):
        start = y * (stride + 1)
        kind, row = raw[start], bytearray(raw[start + 1 : start + 1 + stride])
        for i in range(stride if kind else 0):
            left = row[i - channels] if i >= channels else 0
            above = before[i]
            corner = before[i - channels] if i >= channels else 0
            if kind == 1:
                row[i] = (row[i] + left) & 255
            elif kind == 2:
                row[i] = (row[i] + above) & 255
            elif kind == 3:
                row[i] = (row[i] + (left + above) // 2) & 255
            elif kind == 4:
                guess = left + above - corner
                distances = (abs(guess - left), abs(guess - above), abs(guess - corner))
                row[i] = (row[i] + (left, above, corner)[distances.index(min(distances))]) & 255
        result += row
        before = row
    return bytes(result)


def read(path):
    """The picture of a file; an alpha channel is left out. ValueError for other kinds of files."""
    data = pathlib.Path(path).read_bytes()
    if not data.startswith(SIGNATURE):
        raise ValueError(f"{path}: no PNG picture")
    header, packed = None, b""
    for kind, content in _chunks(data):
        if kind == b"IHDR":
            header = struct.unpack(">IIBBBBB", content)
        elif kind == b"IDAT":
            packed += content
    width, height, depth, colour, _, _, interlace = header
    if depth != 8 or colour not in (2, 6) or interlace:
        raise ValueError(f"{path}: only plain 8-bit RGB and RGBA pictures are read")
    channels = 3 if colour == 2 else 4
    pixels = _unfilter(zlib.decompress(packed), width, height, channels)
    if channels == 4:
        pixels = bytes(b for i in range(0, len(pixels), 4) for b in pixels[i : i + 3])
    return Picture(width, height, pixels)


def write(path, picture):
    def chunk(kind, content):
        return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))

    stride = 3 * picture.width
    rows = b"".join(b"\0" + picture.pixels[y * stride : (y + 1) * stride] for y in range(picture.height))
    header = struct.pack(">IIBBBBB", picture.width, picture.height, 8, 2, 0, 0, 0)
    pathlib.Path(path).write_bytes(
        SIGNATURE + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b"")
    )


def difference(a, b):
    """Two pictures of one size: a picture with the differing pixels in red on a dim copy of the first, how many
    differ, and where the first one is."""
    pixels = bytearray(channel // 3 for channel in a.pixels)
    count, first = 0, None
    for i in range(0, len(a.pixels), 3):
        if a.pixels[i : i + 3] == b.pixels[i : i + 3]:
            continue
        pixels[i : i + 3] = b"\xff\0\0"
        count += 1
        first = first or (i // 3 % a.width, i // 3 // a.width)
    return Picture(a.width, a.height, bytes(pixels)), count, first
