"""The demo's sounds and music, computed: plucked strings, bells, noises. Standard library only.

A sound is a list of floats from -1 to 1 at RATE samples a second.
"""

import array
import math
import random
import wave

RATE = 22050


def silence(seconds):
    return [0.0] * int(RATE * seconds)


def lay(base, sound, at, volume=1.0):
    """Adds a sound to another one from a time on, as far as that one goes."""
    start = int(at * RATE)
    for i, value in enumerate(sound[: max(0, len(base) - start)]):
        base[start + i] += value * volume


def note(name):
    """The frequency of a note such as A4 or C#5."""
    step = {"C": -9, "D": -7, "E": -5, "F": -4, "G": -2, "A": 0, "B": 2}[name[0]]
    return 440.0 * 2 ** ((step + name.count("#") + 12 * (int(name[-1]) - 4)) / 12)


def pluck(frequency, seconds, seed=1, damping=0.996):
    """A string (Karplus and Strong, 1983): noise that runs in a loop and loses its edges."""
    chance = random.Random(seed)
    loop = [chance.uniform(-1, 1) for _ in range(max(2, round(RATE / frequency)))]
    out = []
    for i in range(int(RATE * seconds)):
        place = i % len(loop)
        out.append(loop[place])
        loop[place] = damping * 0.5 * (loop[place] + loop[(place + 1) % len(loop)])
    return out


def bell(frequency, seconds, brightness=1.0):
    parts = ((1, 1.0, 3), (2.76, 0.5, 5), (5.4, 0.25, 8), (8.93, 0.12, 12))
    return [
        sum(a * (brightness if n else 1) * math.exp(-d * i / RATE) * math.sin(2 * math.pi * frequency * r * i / RATE) for n, (r, a, d) in enumerate(parts)) * 0.5
        for i in range(int(RATE * seconds))
    ]


def sweep(start, end, seconds, shape):
    """A tone that glides; `shape(t)` gives its loudness at t from 0 to 1."""
    out, phase, count = [], 0.0, int(RATE * seconds)
    for i in range(count):
        t = i / count
        phase += 2 * math.pi * (start + (end - start) * t) / RATE
        out.append(math.sin(phase) * shape(t))
    return out


def rustle(seconds, softness, shape, seed):
    """Noise; the softer, the darker."""
    chance, last, out, count = random.Random(seed), 0.0, [], int(RATE * seconds)
    for i in range(count):
        last += (chance.uniform(-1, 1) - last) / softness
        out.append(last * shape(i / count))
    return out


# The first three formants of the letters that a voice sings, in hertz; all others are short.
VOWELS = {"a": (730, 1090, 2440), "e": (530, 1840, 2480), "i": (300, 2250, 3000), "o": (500, 880, 2400), "u": (320, 900, 2240), "y": (300, 2000, 2800)}
HUMS = {letter: (260, 1200, 2300) for letter in "lmnrwvbdgjz"}


def resonate(sound, frequency, width):
    """A resonator of two poles, of that width in hertz."""
    radius = math.exp(-math.pi * width / RATE)
    a, b = 2 * radius * math.cos(2 * math.pi * frequency / RATE), -radius * radius
    out, one, two = [], 0.0, 0.0
    for value in sound:
        one, two = value + a * one + b * two, one
        out.append(one * (1 - radius))
    return out


def voiced(formants, pitch, seconds, loudness):
    """Pulses of the throat, through the mouth."""
    out, phase = [], 0.0
    count = int(RATE * seconds)
    for i in range(count):
        phase += pitch * (1 + 0.02 * math.sin(31 * i / RATE)) / RATE
        out.append((1 - 2 * (phase % 1.0)) * math.sin(math.pi * (i + 0.5) / count) ** 0.5)
    parts = [resonate(out, frequency, 60 + 40 * n) for n, frequency in enumerate(formants)]
    return [loudness * (one + 0.6 * two + 0.25 * three) for one, two, three in zip(*parts)]


def speech(text, pitch=132):
    """Something like a voice that says the text: its vowels sung, its consonants hummed or hissed, its stops kept."""
    letters = text.lower()
    out = silence(0.05)
    for n, letter in enumerate(letters):
        tone = pitch * (1.14 - 0.3 * n / len(letters)) * (1 + 0.07 * math.sin(1.7 * n))
        if letter in VOWELS and letters[n - 1 : n] not in VOWELS:
            out += voiced(VOWELS[letter], tone, 0.105, 1.0)
        elif letter in VOWELS or letter in HUMS:
            out += voiced(VOWELS.get(letter) or HUMS[letter], tone, 0.05, 0.6)
        elif letter.isalpha():
            out += [0.25 * value for value in rustle(0.045, 1.4, lambda t: math.sin(math.pi * t), n)]
        else:
            out += silence({" ": 0.035, ",": 0.16, ".": 0.28, "!": 0.28, "?": 0.28}.get(letter, 0.02))
    return out + silence(0.25)


def say(path, text):
    save(path, speech(text), 0.6)


def save(path, sound, peak=0.5):
    """Writes a WAV file, mono, 16 bits, brought to a loudest sample of `peak`."""
    top = max(map(abs, sound)) or 1
    words = array.array("h", (int(32767 * peak * value / top) for value in sound))
    path.parent.mkdir(parents=True, exist_ok=True)
    with wave.open(str(path), "wb") as file:
        file.setnchannels(1)
        file.setsampwidth(2)
        file.setframerate(RATE)
        file.writeframes(words.tobytes())


# --- the demo's own


def fall(t):
    return math.exp(-5 * t)


def waltz(melody, bars, beat):
    """Three beats a bar: a bass, two chords, a melody of (note, beats)."""
    out = silence(len(bars) * 3 * beat)
    for bar, (bass, *chord) in enumerate(bars):
        at = bar * 3 * beat
        lay(out, pluck(note(bass), 3 * beat, bar), at, 0.7)
        for stroke in (1, 2):
            for n, name in enumerate(chord):
                lay(out, pluck(note(name), beat, 7 * bar + n, 0.99), at + stroke * beat, 0.28)
    at = 0.0
    for n, (name, beats) in enumerate(melody):
        if name:
            lay(out, bell(note(name), 1.2, 0.4), at, 0.55)
            lay(out, pluck(note(name), 1.0, n), at, 0.3)
        at += beats * beat
    return out


def workshop_music():
    bars = [("A2", "C4", "E4"), ("E2", "B3", "D4"), ("A2", "C4", "E4"), ("D3", "F4", "A4"), ("G2", "B3", "D4"), ("C3", "E4", "G4"), ("E2", "B3", "D4"), ("A2", "C4", "E4")]
    melody = [("E5", 2), ("D5", 1), ("B4", 2), ("C5", 1), ("A4", 3), ("A5", 2), ("F5", 1), ("G5", 2), ("D5", 1), ("E5", 3), ("D5", 1), ("C5", 1), ("B4", 1), ("A4", 3)]
    return waltz(melody, bars, 0.46)


def loft_music():
    bars = [("D2", "A3", "F4"), ("A2", "C#4", "E4"), ("G2", "D4", "G4"), ("A2", "C#4", "G4")]
    melody = [("F5", 3), ("E5", 2), ("C#5", 1), ("D5", 3), (None, 1), ("E5", 2)]
    return waltz(melody, bars, 0.62)


def finale_music():
    out = silence(5)
    for n, name in enumerate(("C5", "E5", "G5", "C6", "G5", "C6", "E6", "G6")):
        lay(out, bell(note(name), 2.2, 0.7), 0.24 * n)
    for name in ("C3", "G3", "E4", "C5"):
        lay(out, pluck(note(name), 3, 5), 2.0, 0.8)
    lay(out, rustle(2.6, 2, lambda t: math.sin(math.pi * t) * (0.6 + 0.4 * math.sin(t * 300)), 3), 2.2, 0.25)  # applause
    return out


SOUNDS = {
    "workshop.wav": workshop_music,
    "loft.wav": loft_music,
    "finale.wav": finale_music,
    "step.wav": lambda: rustle(0.09, 5, fall, 1),
    "drawer.wav": lambda: rustle(0.5, 9, lambda t: math.sin(math.pi * t) * (0.7 + 0.3 * math.sin(60 * t)), 2),
    "key.wav": lambda: bell(2100, 0.5) + bell(2600, 0.4),
    "door.wav": lambda: [a + b for a, b in zip(sweep(190, 90, 0.9, lambda t: 0.5 * math.sin(math.pi * t) * (math.sin(90 * t) > 0)), rustle(0.9, 14, fall, 4))],
    "meow.wav": lambda: sweep(420, 760, 0.22, lambda t: t) + sweep(760, 380, 0.42, lambda t: 1 - t),
    "rope.wav": lambda: rustle(0.3, 6, lambda t: math.sin(math.pi * t), 6) + bell(330, 0.5),
    "wrong.wav": lambda: sweep(180, 120, 0.16, fall) + sweep(140, 80, 0.3, fall),
}


def make(path):
    save(path, SOUNDS[path.name]())
