"""A small painter for the demo's drawings: float pixels with an alpha channel, smooth shapes, glows, and the writers of
IMG and ANN files. Standard library only.

Coordinates are pixels from the top left corner; colours are (red, green, blue) from 0 to 255. Shapes are drawn with
soft edges. A picture starts fully transparent.
"""

import array
import math
import struct

BAYER = [
    [0, 32, 8, 40, 2, 34, 10, 42], [48, 16, 56, 24, 50, 18, 58, 26],
    [12, 44, 4, 36, 14, 46, 6, 38], [60, 28, 52, 20, 62, 30, 54, 22],
    [3, 35, 11, 43, 1, 33, 9, 41], [51, 19, 59, 27, 49, 17, 57, 25],
    [15, 47, 7, 39, 13, 45, 5, 37], [63, 31, 55, 23, 61, 29, 53, 21],
]  # fmt: skip


def mix(a, b, t):
    """The colour that lies t of the way from a to b."""
    return tuple(x + (y - x) * t for x, y in zip(a, b))


def ramp(stops, t):
    """The colour at t of a gradient [(place, colour), ...] with ascending places."""
    for (start, a), (end, b) in zip(stops, stops[1:]):
        if t <= end:
            return mix(a, b, max(0.0, (t - start) / (end - start)))
    return stops[-1][1]


class Picture:
    def __init__(self, width, height):
        self.width, self.height = width, height
        self.red, self.green, self.blue, self.alpha = (array.array("f", bytes(4 * width * height)) for _ in range(4))

    # --- one pixel, one run of pixels

    def blend(self, i, colour, cover):
        """Lays a colour over pixel number i; `cover` from 0 to 1."""
        behind = self.alpha[i] * (1 - cover)
        total = cover + behind
        if total <= 0:
            return
        part = cover / total
        self.red[i] += (colour[0] - self.red[i]) * part
        self.green[i] += (colour[1] - self.green[i]) * part
        self.blue[i] += (colour[2] - self.blue[i]) * part
        self.alpha[i] = total

    def run(self, y, start, end, colour, cover=1.0):
        """Fills a row from `start` to `end`, places between pixels included."""
        if not 0 <= y < self.height or end <= start:
            return
        start, end = max(0.0, start), min(float(self.width), end)
        first, last = math.ceil(start), math.floor(end)
        row = y * self.width
        if first > last:
            if start < end:
                self.blend(row + last, colour, (end - start) * cover)
            return
        if start < first:
            self.blend(row + first - 1, colour, (first - start) * cover)
        if end > last and last < self.width:
            self.blend(row + last, colour, (end - last) * cover)
        if cover >= 1:
            count = last - first
            for plane, value in zip((self.red, self.green, self.blue, self.alpha), (*colour, 1.0)):
                plane[row + first : row + last] = array.array("f", [value]) * count
        else:
            for i in range(row + first, row + last):
                self.blend(i, colour, cover)

    # --- shapes

    def sky(self, top, bottom, stops):
        """Rows from `top` to `bottom` in the colours of a gradient."""
        for y in range(max(0, top), min(self.height, bottom)):
            self.run(y, 0, self.width, ramp(stops, (y - top) / max(1, bottom - top - 1)))

    def polygon(self, points, colour, cover=1.0, shade=None):
        """A filled polygon; `shade(y)` may give a colour for each row instead."""
        steps = 4
        low = max(0, math.floor(min(y for _, y in points)))
        high = min(self.height, math.ceil(max(y for _, y in points)))
        edges = list(zip(points, points[1:] + points[:1]))
        for y in range(low, high):
            paint = shade(y) if shade else colour
            spans = []
            for step in range(steps):
                at = y + (step + 0.5) / steps
                cuts = sorted(
                    x1 + (at - y1) * (x2 - x1) / (y2 - y1)
                    for (x1, y1), (x2, y2) in edges
                    if (y1 <= at) != (y2 <= at)
                )
                spans.append(list(zip(cuts[::2], cuts[1::2])))
            self._spans(y, spans, paint, cover)

    def _spans(self, y, spans, paint, cover):
        """Covers a row by the runs of its sub-rows; where all agree the row is filled at once."""
        if all(len(s) == 1 for s in spans):
            inner_start = math.ceil(max(s[0][0] for s in spans))
            inner_end = math.floor(min(s[0][1] for s in spans))
            if inner_start < inner_end:
                self.run(y, inner_start, inner_end, paint, cover)
                spans = [[(s[0][0], inner_start), (inner_end, s[0][1])] for s in spans]
        covers = {}
        for sub in spans:
            for start, end in sub:
                start, end = max(0.0, start), min(float(self.width), end)
                for x in range(math.floor(start), math.ceil(end)):
                    part = min(end, x + 1) - max(start, x)
                    if part > 0:
                        covers[x] = covers.get(x, 0.0) + part / len(spans)
        for x, part in covers.items():
            self.blend(y * self.width + x, paint, min(1.0, part) * cover)

    def ellipse(self, cx, cy, rx, ry, colour, cover=1.0, shade=None):
        count = max(24, int(rx + ry))
        turn = 2 * math.pi / count
        points = [(cx + rx * math.cos(i * turn), cy + ry * math.sin(i * turn)) for i in range(count)]
        self.polygon(points, colour, cover, shade)

    def box(self, left, top, right, bottom, colour, cover=1.0, shade=None):
        self.polygon([(left, top), (right, top), (right, bottom), (left, bottom)], colour, cover, shade)

    def line(self, x1, y1, x2, y2, width, colour, cover=1.0):
        length = math.hypot(x2 - x1, y2 - y1) or 1
        dx, dy = -(y2 - y1) / length * width / 2, (x2 - x1) / length * width / 2
        self.polygon([(x1 + dx, y1 + dy), (x2 + dx, y2 + dy), (x2 - dx, y2 - dy), (x1 - dx, y1 - dy)], colour, cover)

    def glow(self, cx, cy, radius, colour, strength=1.0, squash=1.0):
        """Light that fades out from a place; `squash` makes it lower than wide."""
        height = radius * squash
        for y in range(max(0, int(cy - height)), min(self.height, int(cy + height) + 1)):
            dy = ((y + 0.5 - cy) / height) ** 2
            for x in range(max(0, int(cx - radius)), min(self.width, int(cx + radius) + 1)):
                far = ((x + 0.5 - cx) / radius) ** 2 + dy
                if far < 1:
                    self.blend(y * self.width + x, colour, strength * (1 - far) ** 2)

    def each(self, change):
        """Puts every pixel through change(x, y, red, green, blue, alpha), which gives the four new values."""
        i = 0
        for y in range(self.height):
            for x in range(self.width):
                values = change(x, y, self.red[i], self.green[i], self.blue[i], self.alpha[i])
                self.red[i], self.green[i], self.blue[i], self.alpha[i] = values
                i += 1

    # --- the file

    def pixels565(self):
        """Rows of 5-6-5 pixels, dithered so that soft gradients stay soft."""
        words = array.array("H")
        for y in range(self.height):
            start, end = y * self.width, (y + 1) * self.width
            coarse = [(t + 0.5) / 8 for t in BAYER[y % 8]] * (self.width // 8 + 1)
            words.extend(
                min(31, int(max(0.0, r + t) / 8)) << 11
                | min(63, int(max(0.0, g + t / 2) / 4)) << 5
                | min(31, int(max(0.0, b + t) / 8))
                for r, g, b, t in zip(self.red[start:end], self.green[start:end], self.blue[start:end], coarse)
            )
        return words.tobytes()

    def alpha_bytes(self):
        return bytes(min(255, max(0, round(255 * a))) for a in self.alpha)

    def save(self, path, x=0, y=0, opaque=False):
        """Writes an IMG file, uncompressed, 16 bits a pixel; an opaque picture has no alpha plane."""
        colour = self.pixels565()
        alpha = b"" if opaque else self.alpha_bytes()
        header = struct.pack(
            "<4s9i", b"PIK\0", self.width, self.height, 16, len(colour), 0, 0, len(alpha), x, y
        )
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(header + colour + alpha)


# --- animations


def _text(value):
    data = value.encode("cp1250") + b"\0"
    return struct.pack("<i", len(data)) + data


def _event(name, frames, loop=None, fps=15, sounds=None):
    """`loop` is (first position, last position), for ever; `sounds` are files by position."""
    start, end = loop or (0, 0)
    sounds = sounds or {}
    head = struct.pack("<32sh4xhhhhiIB12x", name.encode(), len(frames), start, end, 0, 0, fps, 0, 255)
    records = b"".join(
        struct.pack("<IIhhiIIB5x", 0, 0, 0, 0, -1, int(i in sounds), 0, 255) + (_text(sounds[i]) if i in sounds else b"")
        for i in range(len(frames))
    )
    return head + struct.pack(f"<{len(frames)}h", *frames) + records


def save_animation(path, frames, events, fps=15):
    """Writes an ANN file: `frames` are (picture, x, y), `events` are the arguments of _event as dictionaries."""
    heads, planes = b"", b""
    for picture, x, y in frames:
        colour, alpha = picture.pixels565(), picture.alpha_bytes()
        heads += struct.pack("<hhhhhihiiii", picture.width, picture.height, x, y, 0, len(colour), 4, 0, 0, 0, len(alpha)).ljust(52, b"\0")
        planes += colour + alpha
    head = struct.pack("<4shhh13xiIBh10x", b"NVP", len(frames), 16, len(events), fps, 0, 255, 0)
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(head + bytes(8) + b"".join(_event(**event) for event in events) + heads + planes)
