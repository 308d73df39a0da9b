#!/usr/bin/env python3
"""Paints the drawings of the demo game into demo, computes its sounds and the voice of its lines, and makes its letters
with footlight-font. Needs Python, that program and the package fonts-dejavu-core; takes some seconds.

    make_demo.py [FOLDER]           works in FOLDER instead
    make_demo.py --font-tool FILE   footlight-font, if it is not below build
"""

import argparse
import math
import multiprocessing
import pathlib
import random
import re
import subprocess
import sys

import demo_tale
import synth
from painter import Picture, mix, ramp

WIDTH, HEIGHT = 800, 600
STAGE_TOP, STAGE_FLOOR = 50, 527
GOLD, DARK_GOLD, PALE_GOLD = (214, 168, 74), (112, 76, 28), (255, 226, 150)
LAMP = (255, 214, 130)


def hills(picture, base, waves, top, bottom, seed):
    """A range of hills over the whole width: `waves` are (height, length), coloured from top to bottom. The ends of
    the picture meet when every length divides its width."""
    width = picture.width
    chance = random.Random(seed)
    phases = [chance.uniform(0, 2 * math.pi) for _ in waves]

    def height(x):
        return base - sum(h * math.sin(2 * math.pi * x / length + p) for (h, length), p in zip(waves, phases))

    points = [(x, height(x)) for x in range(-4, width + 8, 4)]
    high = min(y for _, y in points)
    picture.polygon(
        points + [(width + 4, HEIGHT), (-4, HEIGHT)],
        top,
        shade=lambda y: mix(top, bottom, min(1.0, max(0.0, (y - high) / 130))),
    )
    return height


def puff(picture, colour, shadow, cover, seed):
    """A cloud that fills the picture: a flat foot and round heads."""
    chance = random.Random(seed)
    w, h = picture.width, picture.height
    heads = [(w * (0.18 + 0.64 * i / 6), chance.uniform(0.14, 0.24) * h + 0.14 * h * math.sin(math.pi * i / 6)) for i in range(7)]
    foot = h * 0.78
    shape = Picture(w, h)
    for cx, r in heads:
        shape.ellipse(cx, foot - r * 0.9, r * 1.25, r, (255, 255, 255))
    shape.ellipse(w / 2, foot - 6, w * 0.42, h * 0.13, (255, 255, 255))

    def tint(x, y, red, green, blue, alpha):
        return (*mix(colour, shadow, min(1.0, max(0.0, (y / h - 0.3) * 1.7))), alpha * cover)

    shape.each(tint)
    picture.red, picture.green, picture.blue, picture.alpha = shape.red, shape.green, shape.blue, shape.alpha


# --- the theatre


def curtain(folder, mirrored):
    picture = Picture(420, STAGE_FLOOR - STAGE_TOP)
    w, h = picture.width, picture.height
    folds = []
    for x in range(w):
        at = w - 1 - x if mirrored else x
        wave = math.sin(at * 0.155) * 0.5 + math.sin(at * 0.41 + 1.3) * 0.16 + math.sin(at * 0.071) * 0.18
        folds.append(0.62 + 0.38 * wave)

    def cloth(x, y, *_):
        sway = int(4 * math.sin(y * 0.011) * (y / h))
        light = folds[min(w - 1, max(0, x + sway))] * (0.62 + 0.5 * (y / h) ** 2)
        if y > h - 34:
            fringe = 0.75 + 0.25 * math.sin(x * 1.6)
            return (*(c * light * fringe * 1.05 for c in GOLD), 1.0) if y < h - 28 or y > h - 24 else (70, 40, 16, 1.0)
        return 196 * light, 26 * light + 6 * light * light, 34 * light, 1.0

    picture.each(cloth)
    picture.save(folder / f"curtain{'r' if mirrored else 'l'}.img", 380 if mirrored else 0, STAGE_TOP, opaque=True)


def valance(folder):
    picture = Picture(WIDTH, 120)
    for i in range(8):
        cx = 50 + i * 100
        for ring, shade in ((58, 0.55), (50, 0.72), (40, 0.6), (28, 0.82), (14, 0.66)):
            picture.ellipse(cx, 46, ring, ring * 1.05, (190 * shade, 24 * shade, 32 * shade))
        for k in range(15):
            turn = math.pi * (k + 0.5) / 15
            picture.ellipse(cx + 56 * math.cos(turn), 48 + 59 * math.sin(turn), 4.2, 5.6, GOLD)
            picture.ellipse(cx + 56 * math.cos(turn) - 1, 46.5 + 59 * math.sin(turn), 1.6, 2.2, PALE_GOLD)
    picture.box(0, 0, WIDTH, 52, (60, 34, 20), shade=lambda y: ramp([(0, (38, 22, 16)), (0.6, (96, 58, 30)), (1, (52, 30, 18))], y / 52))
    for y, height in ((6, 5), (42, 6)):
        picture.box(0, y, WIDTH, y + height, GOLD, shade=lambda row, y=y, height=height: mix(PALE_GOLD, DARK_GOLD, (row - y) / height))
    for x in range(20, WIDTH, 40):
        picture.ellipse(x, 26, 7, 7, DARK_GOLD)
        picture.ellipse(x - 0.6, 25.2, 5.4, 5.4, GOLD)
        picture.ellipse(x - 2, 23.6, 1.8, 1.8, PALE_GOLD)
    picture.save(folder / "valance.img")


def pillar(folder, mirrored):
    picture = Picture(66, HEIGHT)

    def stone(x, y, *_):
        at = x if not mirrored else 65 - x
        light = 0.45 + 0.5 * math.sin(math.pi * (at + 8) / 76) + 0.07 * math.sin(at * 1.05)
        light *= 0.72 + 0.4 * (y / HEIGHT) ** 2
        edge = at > 59
        colour = GOLD if edge else (118, 66, 40)
        return (*(c * light * (0.9 if edge else 0.85) for c in colour), 1.0)

    picture.each(stone)
    for y in (140, 150, 440, 450):
        picture.box(0, y, 66, y + 5, GOLD, shade=lambda row, y=y: mix(PALE_GOLD, DARK_GOLD, (row - y) / 5))
    cx = 32
    for dy, r in ((295, 19), (295, 13), (295, 6)):
        picture.ellipse(cx, dy, r, r * 1.5, GOLD if r != 13 else (126, 36, 34))
    picture.save(folder / f"pillar{'r' if mirrored else 'l'}.img", WIDTH - 66 if mirrored else 0, opaque=True)


def front(folder):
    """The edge of the stage with its footlights."""
    picture = Picture(WIDTH, 130)
    floor = 54
    for i in range(11):
        picture.glow(40 + i * 72, floor, 78, (255, 190, 96), 0.42, 0.66)
    boards = [(0, (132, 82, 44)), (0.35, (96, 56, 30)), (1, (40, 22, 14))]
    picture.box(0, floor, WIDTH, 130, (80, 50, 30), shade=lambda y: ramp(boards, (y - floor) / 76))
    for x in range(-2, 30):
        picture.line(400 + (x - 14) * 46, floor, 400 + (x - 14) * 66, 130, 1.4, (30, 16, 10), 0.55)
    picture.box(0, floor, WIDTH, floor + 3, PALE_GOLD, 0.75)
    for i in range(11):
        cx = 40 + i * 72
        picture.glow(cx, floor + 6, 26, LAMP, 0.8, 0.8)
        picture.ellipse(cx, floor + 20, 21, 17, DARK_GOLD)
        picture.ellipse(cx, floor + 18, 18, 14, GOLD)
        for k in range(-2, 3):
            picture.line(cx + k * 7, floor + 5, cx + k * 3.4, floor + 32, 1.4, DARK_GOLD)
        picture.ellipse(cx, floor + 6, 17, 6.5, (255, 244, 206))
        picture.box(cx - 22, floor + 26, cx + 22, floor + 40, (70, 40, 22))
    picture.save(folder / "front.img", 0, 470)


LETTERS = {
    "F": "11111 10000 10000 11110 10000 10000 10000", "O": "01110 10001 10001 10001 10001 10001 01110",
    "T": "11111 00100 00100 00100 00100 00100 00100", "L": "10000 10000 10000 10000 10000 10000 11111",
    "I": "01110 00100 00100 00100 00100 00100 01110", "G": "01110 10001 10000 10111 10001 10001 01110",
    "H": "10001 10001 10001 11111 10001 10001 10001", "C": "01110 10001 10000 10000 10000 10001 01110",
    "K": "10001 10010 10100 11000 10100 10010 10001", "P": "11110 10001 10001 11110 10000 10000 10000",
    "A": "01110 10001 10001 11111 10001 10001 10001", "Y": "10001 10001 01010 00100 00100 00100 00100",
    "E": "11111 10000 10000 11110 10000 10000 11111", "N": "10001 11001 10101 10011 10001 10001 10001",
    "D": "11110 10001 10001 10001 10001 10001 11110", " ": "00000 00000 00000 00000 00000 00000 00000",
}  # fmt: skip


def sign(folder, phase):
    """The name in lamps; in each of the three phases another third of them shines."""
    pitch, margin = 12, 34
    bulbs = []
    for number, letter in enumerate("FOOTLIGHT"):
        for row, dots in enumerate(LETTERS[letter].split()):
            bulbs += [(number * 6 + column, row) for column, dot in enumerate(dots) if dot == "1"]
    picture = Picture(2 * margin + 53 * pitch, 2 * margin + 7 * pitch)
    w, h = picture.width, picture.height
    for inset, colour in ((0, DARK_GOLD), (3, GOLD), (8, DARK_GOLD), (10, (34, 12, 20))):
        picture.box(inset, inset, w - inset, h - inset, colour)
    border = [(18 + i * (w - 36) / 52, y) for i in range(53) for y in (18, h - 18)]
    border += [(x, 18 + i * (h - 36) / 8) for i in range(1, 8) for x in (18, w - 18)]
    for number, (x, y) in enumerate(border):
        on = number // 2 % 3 == phase
        if on:
            picture.glow(x, y, 8, LAMP, 0.8)
        picture.ellipse(x, y, 2.4, 2.4, (255, 246, 214) if on else (130, 92, 44))
    for column, row in bulbs:
        x, y = margin + pitch / 2 + column * pitch - pitch / 2 + 6, margin + pitch / 2 + row * pitch
        on = (column + row) % 3 != phase
        picture.glow(x, y, 11, (255, 176, 84), 0.75 if on else 0.25)
        picture.ellipse(x, y, 4.6, 4.6, (255, 222, 150) if on else (176, 118, 56))
        picture.ellipse(x - 1, y - 1, 2.2, 2.2, (255, 252, 236) if on else (226, 176, 100))
    picture.save(folder / f"sign{phase}.img", 48, -170, opaque=True)


def words(folder, name, text, pitch):
    """A line of small lights, in the middle of the stage."""
    width = (6 * len(text) - 1) * pitch
    picture = Picture(width + 20, 7 * pitch + 20)
    for number, letter in enumerate(text):
        for row, dots in enumerate(LETTERS[letter].split()):
            for column, dot in enumerate(dots):
                if dot == "1":
                    x, y = 10 + (6 * number + column + 0.5) * pitch, 10 + (row + 0.5) * pitch
                    picture.glow(x, y, pitch, (255, 170, 60), 0.4)
                    picture.ellipse(x, y, pitch * 0.42, pitch * 0.42, PALE_GOLD)
    picture.save(folder / f"{name}.img", (WIDTH - picture.width) // 2, 425)


# --- night on the lake


def night(folder):
    picture = Picture(WIDTH, HEIGHT)
    horizon = 372
    picture.sky(0, horizon, [(0, (10, 12, 42)), (0.45, (24, 32, 84)), (0.8, (66, 66, 128)), (1, (138, 104, 140))])
    chance = random.Random(7)
    for _ in range(230):
        x, y = chance.uniform(60, 740), chance.uniform(56, 330) * chance.uniform(0.5, 1) + 20
        size = chance.choice((0.6, 0.6, 0.8, 1.1))
        picture.ellipse(x, y, size, size, (255, 255, 240), chance.uniform(0.35, 1.0) * (1 - y / 460))
    for radius, strength in ((230, 0.28), (120, 0.4), (70, 0.5)):
        picture.glow(566, 158, radius, (196, 206, 240), strength)
    picture.ellipse(566, 158, 44, 44, (246, 242, 222))
    for dx, dy, r in ((-14, -10, 9), (12, 6, 12), (-4, 20, 6), (18, -18, 5), (-24, 10, 5)):
        picture.ellipse(566 + dx, 158 + dy, r, r * 0.92, (214, 210, 200), 0.55)
    hills(picture, 352, ((22, 420), (10, 150)), (62, 60, 112), (82, 76, 130), 3)
    hills(picture, 372, ((18, 300), (8, 90)), (34, 36, 78), (52, 52, 100), 5)
    for y in range(horizon, HEIGHT):
        deep = (y - horizon) / (HEIGHT - horizon)
        picture.run(y, 0, WIDTH, ramp([(0, (112, 92, 140)), (0.12, (58, 62, 116)), (0.6, (22, 28, 68)), (1, (10, 14, 40))], deep))
    for _ in range(420):
        y = chance.uniform(horizon + 2, 540)
        deep = (y - horizon) / 170
        x = chance.gauss(566, 10 + 52 * deep) if chance.random() < 0.6 else chance.uniform(60, 740)
        near = math.exp(-(((x - 566) / (24 + 60 * deep)) ** 2))
        length = chance.uniform(4, 12) * (0.6 + 1.8 * deep)
        picture.box(x - length, y, x + length, y + 0.8 + deep, mix((120, 128, 176), (255, 248, 220), near), 0.16 + 0.5 * near)
    # the point with the lighthouse
    picture.polygon([(60, 398), (96, 376), (150, 362), (206, 368), (262, 392), (286, 400), (60, 402)], (20, 22, 50))
    picture.polygon([(158, 366), (184, 366), (179, 262), (163, 262)], (206, 204, 214), shade=lambda y: (206, 204, 214) if (y - 262) // 26 % 2 else (150, 54, 62))
    picture.box(160, 256, 182, 263, (40, 36, 56))
    picture.box(163, 240, 179, 256, (255, 230, 150))
    picture.polygon([(159, 241), (183, 241), (171, 226)], (120, 40, 50))
    for x in range(64, 740, 7):
        if abs(x - 400) < 190:
            continue
        sway, tall = chance.uniform(-10, 10), chance.uniform(20, 64)
        picture.line(x, 530, x + sway, 530 - tall, 2.2, (8, 12, 26))
    picture.save(folder / "night.img", opaque=True)


def boat(folder):
    picture = Picture(150, 170)
    picture.polygon([(72, 10), (72, 112), (16, 112), (40, 60)], (236, 226, 206), shade=lambda y: mix((246, 240, 226), (186, 168, 176), y / 130))
    picture.polygon([(78, 22), (78, 112), (130, 112), (112, 76)], (220, 150, 120), shade=lambda y: mix((216, 96, 84), (150, 56, 74), y / 130))
    picture.line(75, 4, 75, 122, 4, (74, 46, 34))
    picture.polygon([(6, 120), (144, 120), (122, 146), (30, 146)], (110, 60, 40), shade=lambda y: mix((150, 88, 54), (70, 38, 34), (y - 120) / 26))
    picture.line(4, 121, 146, 121, 3, GOLD)
    picture.glow(120, 112, 22, LAMP, 0.75)
    picture.ellipse(120, 112, 4, 5, (255, 244, 200))
    for i in range(9):
        y = 148 + i * 2.4
        picture.box(30 + i * 3 + (i % 2) * 7, y, 124 - i * 3 - (i % 3) * 5, y + 1.3, (210, 190, 170), 0.34 - i * 0.03)
    picture.save(folder / "boat.img")


def beam(folder):
    picture = Picture(420, 150)
    for i in range(40):
        half = 2 + i * 1.5
        x = 8 + i * 10
        picture.polygon([(x, 75 - half), (x + 10, 75 - half - 1.5), (x + 10, 75 + half + 1.5), (x, 75 + half)], (255, 236, 170), 0.42 * (1 - i / 40) ** 1.6)
    picture.glow(9, 75, 30, (255, 244, 200), 0.95)
    picture.save(folder / "beam.img", 162, 173)


def star(folder):
    picture = Picture(120, 64)
    for i in range(50):
        picture.ellipse(8 + i * 2, 6 + i, 0.5 + i / 40, 0.5 + i / 40, (220, 226, 255), (i / 50) ** 2 * 0.5)
    picture.glow(108, 56, 7, (255, 255, 240), 0.9)
    picture.save(folder / "star.img")


def night_cloud(folder, number, width, height):
    picture = Picture(width, height)
    puff(picture, (120, 122, 168), (54, 56, 104), 0.72, 20 + number)
    picture.save(folder / f"cloud{number}.img")


# --- a voyage along the coast


def coast(folder):
    """Wider than the screen, and its ends meet: the scene moves along it without end."""
    picture = Picture(1200, HEIGHT)
    horizon = 352
    picture.sky(0, horizon, [(0, (70, 62, 126)), (0.5, (212, 122, 128)), (0.85, (252, 190, 130)), (1, (255, 220, 160))])
    hills(picture, 318, ((26, 400), (14, 150)), (150, 100, 140), (196, 140, 150), 31)
    hills(picture, 346, ((20, 300), (8, 120)), (104, 72, 120), (140, 96, 126), 32)
    for y in range(horizon, HEIGHT):
        deep = (y - horizon) / (HEIGHT - horizon)
        picture.run(y, 0, 1200, ramp([(0, (226, 158, 140)), (0.15, (150, 104, 140)), (0.6, (64, 56, 112)), (1, (26, 28, 74))], deep))
    chance = random.Random(34)
    for _ in range(300):
        y = chance.uniform(horizon + 2, 540)
        x, length = chance.uniform(20, 1180), chance.uniform(4, 14) * (0.6 + (y - horizon) / 90)
        picture.box(max(0, x - length), y, min(1200, x + length), y + 1 + (y - horizon) / 140, (255, 214, 170), 0.3)
    for x, size in ((150, 1.0), (520, 0.7), (610, 1.2), (980, 0.9)):
        picture.polygon([(x - 60 * size, 372), (x - 22 * size, 330 - 30 * size), (x + 8 * size, 340), (x + 58 * size, 372)], (52, 42, 84))
        picture.box(x - 74 * size, 370, x + 76 * size, 374, (40, 34, 74), 0.6)
    picture.save(folder / "coast.img", opaque=True)


def gull(folder):
    """Flies to the right; the scene turns it round."""
    picture = Picture(84, 40)
    for start, end, bend in (((40, 22), (6, 8), 10), ((40, 22), (78, 12), 12)):
        for i in range(24):
            t = i / 24
            x = start[0] + (end[0] - start[0]) * t
            y = start[1] + (end[1] - start[1]) * t - bend * math.sin(math.pi * t)
            picture.ellipse(x, y, 3.4 * (1 - t) + 1, 2.6 * (1 - t) + 0.8, (246, 244, 240))
    picture.ellipse(42, 23, 13, 4.6, (250, 248, 244))
    picture.ellipse(55, 20, 5, 4, (255, 255, 252))
    picture.polygon([(59, 19), (68, 22), (59, 23)], (236, 160, 60))
    picture.ellipse(56, 19, 0.9, 0.9, (30, 30, 40))
    picture.save(folder / "gull.img")


def mist(folder, number, width, height):
    picture = Picture(width, height)
    puff(picture, (255, 236, 220), (196, 160, 190), 0.6, 60 + number)
    picture.save(folder / f"mist{number}.img")


# --- a day in the hills


def day(folder):
    picture = Picture(WIDTH, HEIGHT)
    picture.sky(0, 420, [(0, (64, 142, 214)), (0.5, (138, 196, 232)), (0.85, (232, 232, 214)), (1, (250, 226, 188))])
    for radius, strength in ((210, 0.34), (110, 0.5), (60, 0.7)):
        picture.glow(196, 150, radius, (255, 244, 200), strength)
    picture.ellipse(196, 150, 36, 36, (255, 250, 224))
    hills(picture, 322, ((34, 360), (16, 130)), (150, 176, 206), (196, 206, 212), 11)
    hills(picture, 366, ((26, 480), (8, 150)), (126, 172, 150), (162, 196, 150), 12)
    hills(picture, 404, ((26, 560), (6, 190)), (104, 164, 92), (150, 194, 98), 13)
    ground = hills(picture, 452, ((26, 700), (8, 260)), (84, 150, 70), (56, 112, 52), 18)
    chance = random.Random(5)
    for _ in range(26):
        x = chance.uniform(70, 730)
        y = ground(x) - chance.uniform(34, 60) + 24
        size = chance.uniform(5, 10)
        picture.box(x - 1, y, x + 1, y + size + 3, (74, 52, 36))
        picture.ellipse(x, y - size * 0.4, size, size * 1.25, mix((52, 108, 56), (88, 146, 66), chance.random()))
        picture.ellipse(x - size * 0.3, y - size * 0.8, size * 0.5, size * 0.6, (132, 182, 88), 0.5)
    # the path and the mill
    picture.polygon([(330, 560), (420, 560), (512, 486), (560, 454), (576, 446), (556, 446), (500, 476)], (226, 204, 150))
    picture.polygon([(566, 452), (634, 452), (620, 318), (580, 318)], (238, 228, 206), shade=lambda y: mix((246, 238, 220), (206, 186, 160), (y - 318) / 134))
    picture.polygon([(604, 452), (634, 452), (620, 318), (604, 318)], (120, 96, 90), 0.22)
    picture.polygon([(572, 322), (628, 322), (616, 292), (600, 280), (584, 292)], (158, 66, 52))
    picture.box(592, 424, 608, 452, (96, 58, 40))
    picture.ellipse(600, 366, 7, 9, (92, 110, 130))
    for _ in range(900):
        x, y = chance.uniform(64, 736), chance.uniform(470, 545)
        if y < ground(x) + 12 or (abs(x - (470 - (y - 500) * 1.6)) < 60):
            continue
        tall = chance.uniform(4, 10)
        picture.line(x, y, x + chance.uniform(-2, 2), y - tall, 1.2, mix((40, 96, 44), (138, 190, 84), chance.random()), 0.7)
        if chance.random() < 0.09:
            petal = chance.choice(((250, 236, 120), (246, 246, 246), (236, 120, 130), (190, 140, 220)))
            picture.ellipse(x, y - tall, 2.4, 2.2, petal)
    picture.save(folder / "day.img", opaque=True)


def balloon(folder):
    picture = Picture(130, 190)
    cx, cy, rx, ry = 65, 68, 58, 62
    for i, colour in enumerate(((214, 70, 62), (250, 206, 96), (236, 240, 236), (70, 140, 190), (214, 70, 62))):
        width = rx * (1 - i * 0.23)
        picture.ellipse(cx, cy, width, ry, colour)
    picture.polygon([(24, 112), (106, 112), (80, 140), (50, 140)], (176, 58, 54), shade=lambda y: mix((196, 64, 58), (140, 42, 46), (y - 112) / 28))
    for x in (52, 60, 70, 78):
        picture.line(x, 138, 56 + (x - 52) * 0.7, 160, 1.2, (80, 56, 40))
    picture.box(54, 158, 76, 178, (150, 100, 56), shade=lambda y: (170, 118, 66) if y % 4 < 2 else (132, 86, 48))
    picture.box(52, 156, 78, 160, (110, 70, 40))

    def light(x, y, red, green, blue, alpha):
        shine = 1.12 - 0.5 * max(0.0, (x - 30) / 100) if y < 142 else 1.0
        return min(255, red * shine), min(255, green * shine), min(255, blue * shine), alpha

    picture.each(light)
    picture.glow(44, 44, 26, (255, 255, 255), 0.35, 1.3)
    picture.each(lambda x, y, r, g, b, a: (r, g, b, a if a > 0.02 else 0.0))
    picture.save(folder / "balloon.img")


def sails(folder, number):
    picture = Picture(170, 170)
    for arm in range(4):
        turn = math.radians(number * 15 + arm * 90)
        c, s = math.cos(turn), math.sin(turn)

        def place(along, across, c=c, s=s):
            return 85 + along * c - across * s, 85 + along * s + across * c

        picture.polygon([place(18, 2), place(80, 2), place(80, 20), place(22, 15)], (250, 244, 228), 0.92)
        for along in range(22, 82, 10):
            picture.line(*place(along, 0), *place(along, 18), 1.2, (140, 104, 72))
        picture.line(*place(0, 0), *place(82, 0), 4, (104, 66, 42))
    picture.ellipse(85, 85, 6, 6, (74, 48, 34))
    picture.save(folder / f"sails{number}.img", 515, 225)


def day_cloud(folder, number, width, height):
    picture = Picture(width, height)
    puff(picture, (255, 255, 255), (206, 218, 232), 0.94, 40 + number)
    picture.save(folder / f"cloud{number}.img")


def tasks(root):
    stage, lake, land = root / "COMMON" / "STAGE", root / "Dane" / "NIGHT", root / "Dane" / "DAY"
    sea = root / "Dane" / "VOYAGE"
    yield from ((curtain, stage, side) for side in (False, True))
    yield from ((pillar, stage, side) for side in (False, True))
    yield from ((sign, stage, phase) for phase in range(3))
    yield from ((valance, stage), (front, stage))
    yield from ((words, stage, "call", "CLICK TO PLAY", 5), (words, stage, "end", "THE END", 12))
    yield from ((night, lake), (boat, lake), (beam, lake), (star, lake))
    yield from ((night_cloud, lake, 0, 230, 84), (night_cloud, lake, 1, 170, 64))
    yield from ((coast, sea), (gull, sea), (boat, sea), (mist, sea, 0, 380, 120), (mist, sea, 1, 300, 100))
    yield from ((day, land), (balloon, land))
    yield from ((sails, land, number) for number in range(6))
    yield from ((day_cloud, land, 0, 220, 96), (day_cloud, land, 1, 160, 70))
    yield from demo_tale.tasks(root)
    yield from ((synth.make, root / "Wavs" / name) for name in synth.SOUNDS)
    yield from ((synth.say, root / "Wavs" / f"{name.lower()}.wav", text) for name, text in lines(root))


def lines(root):
    """The name of each line of the figure, and what it says, as the definitions have it."""
    for path in sorted(root.rglob("*.cnv")):
        yield from re.findall(r"DEF:LINE_(\w+)\(TYPE=STRING\|VALUE=([^|)]*)\)", path.read_text("cp1250"))


def paint(task):
    task[0](*task[1:])


# --- letters

FONTS = pathlib.Path("/usr/share/fonts/truetype/dejavu")
LETTERING = (("line", "DejaVuSerif.ttf", 22), ("bold", "DejaVuSerif-Bold.ttf", 22), ("title", "DejaVuSerif-Bold.ttf", 34))


def find_font_tool():
    """The newest footlight-font of the builds in this tree."""
    built = pathlib.Path(__file__).resolve().parent.parent.glob("build/*/footlight-font")
    return max(built, key=lambda path: path.stat().st_mtime, default=None)


def make_letters(tool, folder):
    """Gives what is missing as a sentence, or nothing."""
    tool = tool or find_font_tool()
    if tool is None or not tool.is_file():
        return "footlight-font is missing: build it with cmake --build --preset release --target footlight_font_tool"
    folder.mkdir(parents=True, exist_ok=True)
    for name, font, size in LETTERING:
        if not (FONTS / font).is_file():
            return f"{FONTS / font} is missing: install the package fonts-dejavu-core"
        made = subprocess.run([tool, "make", FONTS / font, folder / f"{name}.fnt", "--size", str(size), "--no-kerning"], stdout=subprocess.DEVNULL)
        if made.returncode != 0:
            return f"{tool} could not make {name}.fnt"
    return None


def main():
    parser = argparse.ArgumentParser(description="Makes the demo's pictures, sounds and letters.")
    parser.add_argument("folder", nargs="?", type=pathlib.Path, default=pathlib.Path(__file__).resolve().parent.parent / "demo")
    parser.add_argument("--font-tool", type=pathlib.Path, help="the program footlight-font (default: the newest one below build)")
    options = parser.parse_args()
    fault = make_letters(options.font_tool, options.folder / "COMMON" / "TALE")
    if fault:
        print(f"make_demo: {fault}", file=sys.stderr)
        return 1
    work = list(tasks(options.folder))
    with multiprocessing.Pool() as pool:
        pool.map(paint, work, chunksize=1)
    print(f"Demo: {len(work) + len(LETTERING)} files in {options.folder}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
