"""The drawings of the demo's tale: a workshop, the loft above the stage, and who is in them."""

import math
import random

from painter import Picture, mix, ramp, save_animation

WIDTH, HEIGHT = 800, 600
FLOOR = 440
GOLD, BRASS = (214, 168, 74), (150, 108, 44)
BLUE, RED = (70, 110, 190), (190, 52, 52)


def planks(picture, top, bottom, colour, step, seed):
    """A wall of upright boards."""
    chance = random.Random(seed)
    for x in range(0, WIDTH, step):
        tone = chance.uniform(0.82, 1.06)
        picture.box(x, top, x + step, bottom, colour, shade=lambda y, tone=tone: tuple(c * tone * (1.1 - 0.35 * (y - top) / (bottom - top)) for c in colour))
        picture.box(x, top, x + 1.6, bottom, (30, 20, 14), 0.6)
        for _ in range(3):
            y = chance.uniform(top, bottom - 30)
            picture.ellipse(x + chance.uniform(8, step - 6), y, 2.5, 6, (40, 24, 16), 0.4)


def boards(picture, top):
    """The floor, towards the eye."""
    picture.box(0, top, WIDTH, HEIGHT, (0, 0, 0), shade=lambda y: ramp([(0, (74, 46, 28)), (1, (150, 98, 58))], (y - top) / (HEIGHT - top)))
    for i in range(-14, 15):
        picture.line(400 + i * 44, top, 400 + i * 100, HEIGHT, 1.4, (40, 24, 14), 0.5)
    picture.box(0, top, WIDTH, top + 4, (30, 20, 14), 0.7)


def lamp(picture, x, y):
    picture.line(x, 0, x, y - 20, 2, (30, 22, 18))
    picture.glow(x, y + 8, 210, (255, 210, 130), 0.34)
    picture.polygon([(x - 26, y), (x + 26, y), (x + 12, y - 22), (x - 12, y - 22)], BRASS)
    picture.ellipse(x, y + 2, 12, 9, (255, 246, 210))


def workshop(folder):
    picture = Picture(WIDTH, HEIGHT)
    planks(picture, 0, FLOOR, (128, 88, 58), 50, 3)
    boards(picture, FLOOR)
    picture.box(90, 90, 230, 250, (70, 44, 28))
    for y in range(98, 242):
        picture.run(y, 98, 222, mix((18, 24, 70), (70, 70, 130), (y - 98) / 144))
    picture.glow(180, 140, 46, (220, 226, 255), 0.6)
    picture.ellipse(180, 140, 17, 17, (246, 242, 222))
    for x, y in ((120, 120), (140, 200), (204, 190), (128, 168), (208, 118)):
        picture.ellipse(x, y, 1, 1, (255, 255, 240))
    picture.box(157, 98, 163, 242, (70, 44, 28))
    picture.box(98, 167, 222, 173, (70, 44, 28))
    picture.box(300, 170, 560, 182, (80, 50, 30))  # a shelf with things from old plays
    for x, colour, tall in ((318, RED, 46), (346, BLUE, 60), (372, GOLD, 38), (500, (90, 140, 90), 52)):
        picture.box(x, 170 - tall, x + 22, 170, colour, shade=lambda y, c=colour: mix(c, (20, 16, 16), 0.25 + 0.2 * math.sin(y * 0.4)))
    picture.ellipse(440, 142, 26, 28, (230, 214, 180))
    for x in (431, 449):
        picture.ellipse(x, 138, 5, 4, (40, 26, 20))
    picture.ellipse(440, 156, 9, 4, (150, 40, 40))
    picture.box(280, 300, 420, 460, (110, 68, 38), shade=lambda y: mix((140, 90, 50), (86, 52, 30), (y - 300) / 160))  # the chest
    picture.box(270, 292, 430, 304, (150, 100, 58))
    picture.box(290, 312, 410, 352, (96, 58, 32))
    picture.box(290, 414, 410, 452, (96, 58, 32))
    for y in (332, 432):
        picture.ellipse(350, y, 6, 6, GOLD)
    picture.ellipse(500, 520, 70, 22, (150, 50, 70))  # a cushion
    picture.ellipse(500, 514, 62, 17, (176, 70, 88))
    picture.box(616, 168, 744, FLOOR, (60, 38, 24))  # the frame of the door
    lamp(picture, 400, 76)
    picture.save(folder / "workshop.img", opaque=True)


def drawer(folder):
    frames = []
    for step in range(6):
        picture = Picture(136, 96)
        out = step * 6
        if out:
            picture.polygon([(8, 4), (128, 4), (132, 4 + out), (4, 4 + out)], (50, 30, 18))
        picture.box(8 - out / 8, 4 + out, 128 + out / 8, 44 + out, (0, 0, 0), shade=lambda y, out=out: mix((150, 96, 54), (104, 62, 34), (y - 4 - out) / 40))
        picture.ellipse(68, 24 + out, 7, 7, GOLD)
        picture.ellipse(66, 22 + out, 2.4, 2.4, (255, 226, 150))
        frames.append((picture, 282, 358))
    save_animation(folder / "drawer.ann", frames, [
        {"name": "SHUT", "frames": [0]},
        {"name": "OPEN", "frames": list(range(6)), "sounds": {0: "drawer.wav"}},
    ])


def key(folder):
    picture = Picture(60, 26)
    picture.ellipse(14, 13, 12, 12, BRASS)
    picture.ellipse(13, 12, 10.5, 10.5, GOLD)
    picture.ellipse(14, 13, 5, 5, (90, 60, 30))
    picture.box(24, 10.5, 56, 15.5, GOLD)
    for x in (44, 51):
        picture.box(x, 15, x + 4, 23, GOLD)
    picture.save(folder / "key.img", 320, 372)


def door(folder):
    """Shut with a lock, then open a little at a time."""
    frames = []
    for step in range(7):
        picture = Picture(120, FLOOR - 176)
        h = picture.height
        picture.box(0, 0, 120, h, (0, 0, 0), shade=lambda y: ramp([(0, (30, 40, 80)), (1, (120, 96, 90))], y / h))
        wide = 120 * math.cos(math.radians(step * 12.5))
        drop = 10 * math.sin(math.radians(step * 12.5))
        picture.polygon([(0, 0), (wide, drop), (wide, h), (0, h)], (0, 0, 0), shade=lambda y: mix((126, 78, 46), (88, 52, 30), y / h))
        for part in (0.12, 0.56):
            picture.polygon([(wide * part, 30 + drop * part), (wide * (part + 0.32), 30 + drop), (wide * (part + 0.32), 210), (wide * part, 210)], (104, 62, 36))
        if step == 0:
            picture.ellipse(104, 132, 9, 10, (60, 60, 70))
            picture.box(95, 136, 113, 156, GOLD)
            picture.box(102, 142, 106, 150, (50, 34, 20))
        frames.append((picture, 620, 176))
    save_animation(folder / "door.ann", frames, [
        {"name": "SHUT", "frames": [0]},
        {"name": "OPEN", "frames": list(range(7)), "fps": 10, "sounds": {0: "key.wav", 1: "door.wav"}},
    ])


def cat(folder):
    frames = []
    for awake, tail in ((0, 0), (0, 3), (1, 6), (2, 9), (1, 4)):
        picture = Picture(130, 84)
        fur, dark = (80, 76, 84), (52, 48, 58)
        for i in range(16):
            picture.ellipse(108 + i * 0.6, 62 - i * (0.8 + tail * 0.12), 5, 5, dark)
        picture.ellipse(66, 60, 46, 20, fur)
        head = 44 - awake * 6
        for x in (18, 44):
            picture.polygon([(x - 8, head - 6), (x, head - 28), (x + 8, head - 6)], dark)
        picture.ellipse(31, head + 4, 23, 19, fur)
        for x in (22, 40):
            if awake:
                picture.ellipse(x, head + 1, 4.5, 5, (190, 220, 90))
                picture.ellipse(x, head + 1, 1.4, 4.4, (10, 14, 10))
            else:
                picture.line(x - 4, head + 2, x + 4, head + 3, 1.6, (20, 16, 20))
        picture.polygon([(28, head + 8), (34, head + 8), (31, head + 11)], (220, 130, 140))
        if awake == 2:
            picture.ellipse(31, head + 15, 5, 4, (120, 30, 40))
        frames.append((picture, 436, 440))
    save_animation(folder / "cat.ann", frames, [
        {"name": "SLEEP", "frames": [0, 0, 0, 1, 1], "loop": (0, 4), "fps": 3},
        {"name": "MEOW", "frames": [2, 3, 3, 4, 2, 3, 4, 2], "fps": 7, "sounds": {1: "meow.wav"}},
    ])


# --- the lamplighter


def limb(picture, x, y, angle, length, width, colour):
    end = (x + length * math.sin(angle), y + length * math.cos(angle))
    picture.line(x, y, *end, width, colour)
    picture.ellipse(*end, width / 2, width / 2, colour)
    return end


def person(swing=0.0, turn=1, face=0.0, arms=0.0, blink=False, mouth=None):
    """Looks to the right with turn 1, to the left with -1, forth with 0; `face` shakes the head; `mouth` is how wide and
    how high it is open."""
    picture = Picture(90, 150)
    coat, trousers, skin = (54, 84, 130), (70, 56, 50), (236, 190, 150)
    bob = 2 * abs(math.sin(swing))
    hip, neck = (45, 98 - bob), (45, 54 - bob)
    side = turn or 1
    for phase, tone, apart in ((math.pi, 0.8, -7), (0, 1, 7)):
        angle = 0.5 * math.sin(swing + phase) * side
        knee = limb(picture, hip[0] + (0 if turn else apart), hip[1], angle, 23, 12, tuple(c * tone for c in trousers))
        foot = limb(picture, *knee, angle - 0.25 * side * max(0, math.cos(swing + phase)), 20, 10, tuple(c * tone for c in trousers))
        picture.ellipse(foot[0] + 4 * turn, foot[1] + 3, 9, 5, (40, 28, 24))
    limb(picture, 45, neck[1] + 8, -0.55 * math.sin(swing) * side - arms, 34, 9, tuple(c * 0.75 for c in coat))
    picture.polygon([(31, neck[1]), (59, neck[1]), (62, hip[1] + 12), (28, hip[1] + 12)], coat)
    picture.line(45, neck[1] + 4, 45, hip[1] + 10, 1.5, (30, 46, 76))
    hand = limb(picture, 45, neck[1] + 8, 0.55 * math.sin(swing) * side + 0.35 * side + arms, 34, 9, coat)
    picture.glow(hand[0], hand[1] + 14, 18, (255, 214, 130), 0.6)
    picture.box(hand[0] - 5, hand[1] + 5, hand[0] + 5, hand[1] + 20, BRASS)
    picture.box(hand[0] - 3, hand[1] + 8, hand[0] + 3, hand[1] + 17, (255, 244, 200))
    head = neck[1] - 17
    look = turn * 5 + face
    picture.ellipse(45, head, 17, 18, skin)
    picture.ellipse(45, head - 11, 19, 10, (120, 40, 44))
    picture.ellipse(45 + look * 1.6, head - 6, 15, 3.4, (96, 30, 34))
    for x in (-6, 6):
        if not blink:
            picture.ellipse(45 + x + look, head + 1, 2, 2.6, (40, 30, 30))
        else:
            picture.line(43 + x + look, head + 1, 47 + x + look, head + 1, 1.2, (40, 30, 30))
    picture.ellipse(45 + look * 1.3, head + 6, 2.5, 2, (216, 160, 124))
    if mouth:
        wide, high = mouth
        picture.ellipse(45 + look, head + 11.5, wide + 1, high + 1, (150, 70, 60))
        picture.ellipse(45 + look, head + 11.5, wide, high, (84, 22, 26))
        picture.ellipse(45 + look, head + 11.5 + high * 0.5, wide * 0.6, high * 0.4, (206, 92, 92))
    else:
        picture.line(41 + look, head + 11, 49 + look, head + 11, 1.4, (150, 70, 60))
    return picture


MOUTHS = {"a": (4.5, 4.5), "e": (5.5, 2.2), "o": (3, 3.6), "m": None}


def speaking():
    """The pictures of the speaking figure, and its events: a sequence draws those of SAY by lot while a voice is heard."""
    poses = [("m", 0, 0), ("e", 0, 0), ("a", 0, 0), ("o", 0, 0), ("a", 0.45, 1), ("e", 0.45, 1), ("m", 0.45, -1), ("o", 0.2, -1), ("m", 0.2, 0)]
    pictures = [person(turn=0, face=face, arms=arms, mouth=MOUTHS[mouth]) for mouth, arms, face in poses]
    rows = {"START": [8, 6], "1": [0, 2, 1, 0], "2": [3, 1, 2, 0], "3": [4, 5, 4, 6], "4": [7, 1, 7, 0, 2], "5": [2, 3, 0], "END": [6, 8, 0]}
    return pictures, rows


def figure(folder):
    turns = [2 * math.pi * i / 8 for i in range(8)]
    pictures = [person(turn=0), person(turn=0, blink=True)]
    pictures += [person(swing, 1) for swing in turns] + [person(swing, -1) for swing in turns]
    pictures += [person(turn=0, face=face) for face in (-6, 6)] + [person(turn=0, arms=arms) for arms in (1.2, 2.2, 2.8)]
    first = len(pictures)
    speech, rows = speaking()
    pictures += speech
    steps = {0: "step.wav", 4: "step.wav"}
    save_animation(folder / "figure.ann", [(picture, 0, 0) for picture in pictures], [
        {"name": "STAND", "frames": [0] * 11 + [1], "loop": (0, 11), "fps": 5},
        {"name": "WALKR", "frames": list(range(2, 10)), "loop": (0, 7), "sounds": steps},
        {"name": "WALKL", "frames": list(range(10, 18)), "loop": (0, 7), "sounds": steps},
        {"name": "NO", "frames": [18, 0, 19, 0, 18, 0, 19, 0], "sounds": {0: "wrong.wav"}},
        {"name": "CHEER", "frames": [20, 21, 22, 21, 22, 21, 20, 0]},
        *({"name": f"SAY_{name}", "frames": [first + n for n in row], "fps": 11} for name, row in rows.items()),
    ])


# --- what is written on


def ledge(folder):
    """The edge of the floor, where the lines of the figure stand."""
    picture = Picture(WIDTH, 48)
    picture.box(0, 0, WIDTH, 48, (0, 0, 0), shade=lambda y: ramp([(0, (58, 20, 30)), (1, (24, 8, 16))], y / 48))
    for y in (0, 44):
        picture.box(0, y, WIDTH, y + 4, GOLD, shade=lambda row, y=y: mix((255, 226, 150), (112, 76, 28), (row - y) / 4))
    for x in (24, WIDTH - 24):
        picture.ellipse(x, 24, 8, 8, (112, 76, 28))
        picture.ellipse(x, 23.5, 6, 6, GOLD)
        picture.ellipse(x - 2, 21.5, 2, 2, (255, 246, 214))
    picture.save(folder / "ledge.img", 0, HEIGHT - 48, opaque=True)


def plate(folder, name, x, y, lit):
    """A button of brass, at a place of the screen."""
    picture = Picture(150, 46)
    light = 1.12 if lit else 0.94
    face = [(0, (250, 214, 130)), (0.5, (214, 168, 74)), (1, (150, 108, 44))]
    picture.box(0, 0, 150, 46, (66, 40, 20))
    picture.box(2, 2, 148, 44, (0, 0, 0), shade=lambda y: tuple(min(255, c * light) for c in ramp(face, (y - 2) / 42)))
    picture.box(5, 5, 145, 6.4, (255, 250, 220), 0.6)
    for rivet in ((9, 9), (141, 9), (9, 37), (141, 37)):
        picture.ellipse(*rivet, 2.2, 2.2, (84, 54, 24))
    picture.save(folder / f"{name}{'lit' if lit else ''}.img", x, y, opaque=True)


def exit_mark(folder, name, lit):
    """The way out: a round knob with a cross."""
    picture = Picture(44, 44)
    light = 1.15 if lit else 0.95
    picture.ellipse(22, 22, 21, 21, (50, 30, 18))
    picture.ellipse(22, 22, 19, 19, (0, 0, 0), shade=lambda y: tuple(min(255, c * light) for c in mix((240, 200, 112), BRASS, y / 44)))
    for ends in ((15, 15, 29, 29), (29, 15, 15, 29)):
        picture.line(*ends, 4, (92, 24, 28))
    picture.save(folder / f"{name}.img", 746, 12)


def board(folder):
    """The sheet of a question; its upper strip is there to be dragged."""
    picture = Picture(400, 210)
    picture.box(0, 0, 400, 210, (84, 54, 24))
    picture.box(2, 2, 398, 208, GOLD)
    picture.box(5, 5, 395, 205, (0, 0, 0), shade=lambda y: mix((250, 240, 214), (228, 208, 168), y / 210))
    picture.box(5, 5, 395, 34, (0, 0, 0), shade=lambda y: mix((164, 40, 48), (112, 22, 34), (y - 5) / 29))
    picture.box(5, 34, 395, 36, GOLD)
    for x in (16, 22, 28, 372, 378, 384):
        picture.line(x, 12, x, 28, 2, (230, 160, 110), 0.7)
    picture.save(folder / "board.img", 200, 180, opaque=True)


def shade(folder):
    """Darkens what a question covers."""
    picture = Picture(WIDTH, HEIGHT)
    picture.box(0, 0, WIDTH, HEIGHT, (10, 6, 20), 0.5)
    picture.save(folder / "shade.img")


def ticket(folder):
    picture = Picture(580, 320)
    picture.box(8, 10, 580, 320, (0, 0, 0), 0.35)
    picture.box(0, 0, 572, 312, (0, 0, 0), shade=lambda y: mix((252, 242, 216), (232, 212, 172), y / 312))
    for inset, tone in ((12, (150, 50, 52)), (17, (200, 150, 80))):
        for box in ((inset, inset, 572 - inset, inset + 2), (inset, 310 - inset, 572 - inset, 312 - inset), (inset, inset, inset + 2, 312 - inset), (570 - inset, inset, 572 - inset, 312 - inset)):
            picture.box(*box, tone)
    for y in range(24, 300, 12):
        picture.box(476, y, 478, y + 6, (150, 110, 80), 0.8)
    for y in range(0, 312, 24):  # torn off a roll
        for x in (0, 572):
            picture.ellipse(x, y + 12, 5, 5, (120, 18, 28))
    for n, size in ((0, 30), (1, 22), (2, 14)):
        picture.ellipse(520, 150, size, size, (150, 50, 52) if n != 1 else (250, 236, 206))
    for k in range(8):
        turn = math.pi * k / 4
        picture.line(520 + 34 * math.cos(turn), 150 + 34 * math.sin(turn), 520 + 44 * math.cos(turn), 150 + 44 * math.sin(turn), 3, (200, 150, 80))
    picture.box(60, 194, 440, 196, (110, 70, 50))
    picture.save(folder / "ticket.img", 110, 116)


def caret(folder):
    picture = Picture(3, 28)
    picture.box(0, 0, 3, 28, (150, 40, 48))
    picture.save(folder / "caret.img", opaque=True)


# --- the loft


def loft(folder):
    picture = Picture(WIDTH, HEIGHT)
    planks(picture, 0, FLOOR, (78, 70, 84), 64, 9)
    boards(picture, FLOOR)
    for x in range(-60, WIDTH, 200):
        picture.polygon([(x, 0), (x + 36, 0), (x + 150, 150), (x + 114, 150)], (58, 42, 34))
    picture.box(0, 140, WIDTH, 164, (70, 50, 38), shade=lambda y: mix((96, 70, 52), (48, 34, 28), (y - 140) / 24))
    picture.box(60, 230, 220, 360, (226, 208, 168))  # the plan on the wall
    for i, colour in enumerate((GOLD, BLUE, RED)):
        picture.ellipse(90 + i * 50, 296, 17, 17, colour)
        if i < 2:
            picture.polygon([(110 + i * 50, 290), (110 + i * 50, 302), (120 + i * 50, 296)], (90, 70, 50))
    for x, y in ((64, 234), (216, 234), (64, 356), (216, 356)):
        picture.ellipse(x, y, 3, 3, (120, 40, 40))
    for x in (390, 500, 610):
        picture.ellipse(x, 152, 16, 16, (50, 46, 50))
        picture.ellipse(x, 152, 6, 6, (110, 104, 104))
    lamp(picture, 300, 96)
    picture.save(folder / "loft.img", opaque=True)


def rope(folder, name, colour, x):
    frames = []
    for step in range(5):
        picture = Picture(50, 250)
        end = 150 + step * 12
        picture.line(25, 0, 25, end, 5, (196, 168, 120))
        for y in range(4, end, 9):
            picture.line(23, y, 27, y + 4, 1.2, (130, 100, 60))
        picture.ellipse(25, end + 18, 19, 22, tuple(c * 0.6 for c in colour))
        picture.ellipse(24, end + 16, 16, 19, colour)
        picture.ellipse(18, end + 8, 4, 5, mix(colour, (255, 255, 255), 0.6))
        frames.append((picture, x - 25, 152))
    save_animation(folder / f"{name}.ann", frames, [
        {"name": "UP", "frames": [0]},
        {"name": "PULL", "frames": [0, 1, 2, 3, 4], "sounds": {0: "rope.wav"}},
        {"name": "BACK", "frames": [4, 2, 0], "sounds": {0: "wrong.wav"}},
    ])


# --- the stage in its light


def stage(folder):
    picture = Picture(WIDTH, HEIGHT)
    picture.sky(0, 400, [(0, (14, 16, 52)), (0.6, (56, 52, 116)), (1, (150, 96, 130))])
    chance = random.Random(12)
    for _ in range(120):
        picture.ellipse(chance.uniform(60, 740), chance.uniform(60, 330), 0.9, 0.9, (255, 255, 240), chance.uniform(0.3, 0.9))
    picture.polygon([(60, 400), (60, 330), (160, 300), (240, 340), (340, 280), (460, 350), (560, 300), (740, 350), (740, 400)], (36, 32, 76))
    picture.box(0, 400, WIDTH, HEIGHT, (0, 0, 0), shade=lambda y: ramp([(0, (96, 60, 36)), (1, (170, 112, 64))], (y - 400) / 200))
    for i in range(-14, 15):
        picture.line(400 + i * 44, 400, 400 + i * 90, HEIGHT, 1.4, (50, 30, 18), 0.5)
    for x, colour in ((400, GOLD), (240, BLUE), (560, RED)):
        picture.polygon([(x - 8, 60), (x + 8, 60), (x + 90, 480), (x - 90, 480)], mix(colour, (255, 255, 255), 0.4), 0.22)
        picture.glow(x, 472, 130, mix(colour, (255, 255, 255), 0.5), 0.5, 0.3)
    picture.save(folder / "stage.img", opaque=True)


def tasks(root):
    yield (stage, root / "COMMON" / "STAGE")
    tale, workroom, above = root / "COMMON" / "TALE", root / "Dane" / "WORKSHOP", root / "Dane" / "LOFT"
    yield (figure, tale)
    yield from ((thing, tale) for thing in (ledge, board, shade, ticket, caret))
    plates = (("come", 285, 354), ("leave", 231, 332), ("stay", 419, 332))
    yield from ((plate, tale, *row, lit) for row in plates for lit in (False, True))
    yield from ((exit_mark, tale, *row) for row in (("exit", False), ("exitlit", True)))
    yield from ((paint, workroom) for paint in (workshop, drawer, key, door, cat))
    yield (loft, above)
    yield from ((rope, above, *row) for row in (("blue", BLUE, 390), ("gold", GOLD, 500), ("red", RED, 610)))
