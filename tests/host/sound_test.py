#!/usr/bin/env python3
"""Plays sounds, unseen, and compares what was recorded with the samples that must come out, worked out here by plain
formulas. Then once more, and out of a big file alone: every run is the same to the byte.

    sound_test.py --host build/release/footlight
"""

import argparse
import array
import pathlib
import random
import re
import shutil
import subprocess
import sys
import tempfile
import wave

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "games"))
import animations  # noqa: E402
import game_folder  # noqa: E402

RATE = 44100
STEP = 16  # milliseconds a tick
TICKS = 180
CHATTERS = range(144, 176, 4)

SCENE = """# Sounds in all forms, one after the other; the loud ones at once.
DEF:LOG(TYPE=STRING)
DEF:HEARD(TYPE=STRING|VALUE=none|TOINI=TRUE)
DEF:LOOPS(TYPE=INTEGER|VALUE=0|TOINI=TRUE)
OBJECT=MAIN
MAIN:ONMUSICLOOPED={LOOPS^INC();}
DEF:PLAIN(TYPE=SOUND|FILENAME=plain.wav|ONSTARTED={LOG^ADD("s");}|ONFINISHED={LOG^ADD("f");})
DEF:SAME(TYPE=SOUND|FILENAME=PLAIN.WAV|ONFINISHED={LOG^ADD("F");})
DEF:SOFT(TYPE=SOUND|FILENAME=soft.wav|PRELOAD=TRUE)
DEF:LEFT(TYPE=SOUND|FILENAME=plain2.wav|PRELOAD=TRUE)
DEF:LOUD0(TYPE=SOUND|FILENAME=loud0.wav|PRELOAD=TRUE|FLUSHAFTERPLAYED=TRUE)
DEF:LOUD1(TYPE=SOUND|FILENAME=loud1.wav|PRELOAD=TRUE)
DEF:LONG(TYPE=SOUND|FILENAME=long.wav|ONRESUMED={LOG^ADD("r");}|ONSTARTED={LOG^ADD("l");}|ONFINISHED={LOG^ADD("L");})
DEF:PACKED(TYPE=SOUND|FILENAME=packed.wav)
DEF:NONE(TYPE=SOUND|FILENAME=none.wav|ONSTARTED={LOG^ADD("!");})
DEF:CLOCK(TYPE=TIMER|ELAPSE=10)
CLOCK:ONTICK^2={PLAIN^PLAY();NONE^PLAY();LOG^ADD(PLAIN^ISPLAYING());LOG^ADD(NONE^ISPLAYING());}
DEF:FRAMES(TYPE=STRING|VALUE=h|TOINI=TRUE)
DEF:TALKER(TYPE=ANIMO|FILENAME=talker.ann|TOCANVAS=TRUE|VISIBLE=TRUE|FPS=60)
TALKER:ONFRAMECHANGED={FRAMES^ADD(TALKER^GETCFRAMEINEVENT());}
TALKER:ONFINISHED={FRAMES^ADD("f");}
CLOCK:ONTICK^6={TALKER^PLAY("TALK");}
CLOCK:ONTICK^12={SOFT^SETVOLUME(400);SOFT^SETPAN(800);SOFT^PLAY();}
CLOCK:ONTICK^22={LEFT^SETPAN(0);LEFT^SETFREQ(22050);LEFT^PLAY();}
CLOCK:ONTICK^32={LOUD0^PLAY();LOUD1^PLAY();}
CLOCK:ONTICK^42={LONG^PLAY();}
CLOCK:ONTICK^44={LONG^PAUSE();LOG^ADD(LONG^ISPLAYING());}
CLOCK:ONTICK^46={LONG^RESUME();}
CLOCK:ONTICK^48={LONG^STOP(FALSE);LONG^PLAY();}
CLOCK:ONTICK^49={LONG^STOP();}
CLOCK:ONTICK^52={PACKED^PLAY();}
CLOCK:ONTICK^56={LEFT^CLONE();LEFT_1^PLAY();LOG^ADD(LEFT_1^ISPLAYING());}
CLOCK:ONTICK^62={MAIN^STARTMUSIC("Wavs\\\\music.wav");}
CLOCK:ONTICK^140={MAIN^STOPMUSIC();HEARD^SET(LOG);}
DEF:CHATTER(TYPE=ANIMO|FILENAME=chatter.ann|TOCANVAS=TRUE|VISIBLE=TRUE)
CLOCK:ONTICK^141={CHATTER^SETVOLUME(400);}
""" + "".join(f'CLOCK:ONTICK^{tick}={{CHATTER^PLAY("TALK");}}\n' for tick in CHATTERS)


def noise(seed, count, most=32767):
    chance = random.Random(seed)
    return [chance.randint(-most, most) for _ in range(count)]


def write_wav(path, samples, rate=RATE, channels=1, bits=16, before=b"", size=None):
    """Samples of 16 bits; `before` are chunks in front of the format, `size` is what the file says of its data."""
    data = array.array("h", samples).tobytes() if bits == 16 else bytes((s >> 8) + 128 for s in samples)
    if bits == 24:
        data = b"".join((s << 8 & 0xFFFFFF).to_bytes(3, "little") for s in samples)
    block = channels * bits // 8
    fmt = b"fmt \x10\0\0\0" + b"".join(v.to_bytes(n, "little") for v, n in ((1, 2), (channels, 2), (rate, 4), (rate * block, 4), (block, 2), (bits, 2)))
    body = b"WAVE" + before + fmt + b"data" + (len(data) if size is None else size).to_bytes(4, "little") + data
    path.write_bytes(b"RIFF" + len(body).to_bytes(4, "little") + body)


def write_packed(path):
    """A wave in an ADPCM of one block, all of whose steps are zero: the sample that the block begins with, held or
    nearly so. Only its presence is judged, not its samples: they are the decoding library's."""
    coefficients = ((256, 0), (512, -256), (0, 0), (192, 64), (240, 0), (460, -208), (392, -232))
    block = bytes([0]) + (16).to_bytes(2, "little") + (9000).to_bytes(2, "little") * 2 + bytes(505)
    per_block = 2 + 2 * 505
    extra = per_block.to_bytes(2, "little") + len(coefficients).to_bytes(2, "little")
    extra += b"".join(v.to_bytes(2, "little", signed=True) for pair in coefficients for v in pair)
    fmt = b"".join(v.to_bytes(n, "little") for v, n in ((2, 2), (1, 2), (RATE, 4), (RATE * len(block) // per_block, 4), (len(block), 2), (4, 2), (len(extra), 2))) + extra
    body = b"WAVEfmt " + len(fmt).to_bytes(4, "little") + fmt + b"data" + len(block).to_bytes(4, "little") + block
    path.write_bytes(b"RIFF" + len(body).to_bytes(4, "little") + body)


# --- what must come out, as pairs (left, right)


def gain(volume):
    return round(16384 * 10 ** (volume / 2000))


def scaled(sample, factor):
    return sample * factor >> 14


def stretched(samples):
    """At half the speed: each sample, and the middle to the next; the last one twice."""
    out = []
    for here, there in zip(samples, samples[1:] + samples[-1:]):
        out += [here, here + ((there - here) * 16384 >> 15)]
    return out


def clipped(value):
    return max(-32768, min(32767, value))


class Sounds:
    """The files and, for the tick of the script that starts each, what is heard from there on."""

    def __init__(self, folder):
        plain, soft = noise(1, 900), noise(2, 800)
        left, loud0, loud1 = noise(3, 500), noise(4, 700), noise(5, 700)
        music, talk = noise(7, 3000), noise(8, 2470)  # the talk 56 milliseconds
        soft8 = [s >> 8 << 8 for s in soft]
        write_wav(folder / "plain.wav", plain, before=b"LIST\x04\0\0\0abcd")
        write_wav(folder / "soft.wav", soft8, rate=22050, channels=2, bits=8)
        write_wav(folder / "plain2.wav", left, bits=24)
        write_wav(folder / "loud0.wav", loud0)
        write_wav(folder / "loud1.wav", loud1)
        write_wav(folder / "long.wav", [0] * RATE)
        write_wav(folder / "talk.wav", talk)
        chatter = [noise(9, 300), noise(10, 300)]
        for i, samples in enumerate(chatter):
            write_wav(folder / f"chatter{i}.wav", samples)
        write_packed(folder / "packed.wav")
        write_wav(folder / "music.wav", music, size=0)
        (folder / "none.wav").write_bytes(b"RIFF\xff\xff\xff\xffWAVEfmt \xff\xff\xff\xff")
        half, panned, side = gain(-1600), gain(-1600 - 800), gain(-800)
        soft_left, soft_right = stretched(soft8[0::2]), stretched(soft8[1::2])
        self.chatter = [[scaled(s, half) for s in samples] for samples in chatter]
        slow = stretched(left)
        self.expected = {
            2: [(s, s) for s in plain],
            6: [(s, s) for s in talk],
            12: [(scaled(a, panned), scaled(b, half)) for a, b in zip(soft_left, soft_right)],
            22: [(s, scaled(s, side)) for s in slow],
            32: [(clipped(a + b),) * 2 for a, b in zip(loud0, loud1)],
            56: [(s, s) for s in left],
            62: [(music[i % 3000],) * 2 for i in range(RATE)],
        }


def read(path):
    with wave.open(str(path)) as file:
        assert (file.getnchannels(), file.getsampwidth(), file.getframerate()) == (2, 2, RATE)
        samples = array.array("h", file.readframes(file.getnframes()))
    return list(zip(samples[0::2], samples[1::2]))


def frame_at(tick):
    return tick * STEP * RATE // 1000


def judge(recorded, expected):
    if len(recorded) != frame_at(TICKS):
        yield f"{len(recorded)} frames were recorded instead of {frame_at(TICKS)}"
    for tick, frames in expected.items():
        window = range(frame_at(tick - 1), frame_at(tick + 3))
        start = next((i for i in window if recorded[i] != (0, 0)), None)
        if start is None or start not in [frame_at(t) for t in range(tick - 1, tick + 4)]:
            yield f"tick {tick}: begins at frame {start}, at no tick"
        elif recorded[start : start + len(frames)] != frames:
            wrong = next(i for i, frame in enumerate(frames) if recorded[start + i] != frame)
            yield f"tick {tick}: sample {wrong} is {recorded[start + wrong]} instead of {frames[wrong]}"
    packed = [left for left, _ in recorded[frame_at(52) : frame_at(52) + 900]]
    if not all(8000 < sample < 10000 for sample in packed):
        yield f"the packed sound goes from {min(packed)} to {max(packed)}"


def judge_chatter(recorded, variants):
    """One of the two sounds at a time, and each of them now and then, at the volume that the animation was given."""
    choices = []
    for tick in CHATTERS:
        heard = [left for left, _ in recorded[frame_at(tick) : frame_at(tick + 1)]]
        choices += [i for i, samples in enumerate(variants) if heard[: len(samples)] == samples]
    if len(choices) != len(CHATTERS) or len(set(choices)) != len(variants):
        yield f"of the sounds of one frame come {choices}"


def judge_ini(text):
    heard = re.search(r"HEARD=(.*)", text)
    # Started and playing, the missing one not; each of two objects hears the shared end; the long one starts, is
    # paused, goes on, ends silently, starts again, ends with a word. A clone plays a sound of its own, with settings
    # of its own.
    wanted = "sTRUEFALSEfFlFALSErlLTRUE"
    if heard is None or heard.group(1).strip() != wanted:
        yield f"HEARD is {heard and heard.group(1)!r} instead of {wanted!r}"
    # While the sound of the first frame plays the loop goes on, and then to the last frame, which comes once more
    # behind the end.
    if "FRAMES=h012124f4" not in text:
        yield f"FRAMES is {re.search('FRAMES=.*', text)}"
    # The ring took 52,920 frames ahead; of 78 ticks 24 periods of 50 milliseconds are refilled, 2,205 frames each.
    loops = re.search(r"LOOPS=(\d+)", text)
    if loops is None or int(loops.group(1)) != (52920 + 24 * 2205) // 3000 - 52920 // 3000:
        yield f"LOOPS is {loops and loops.group(1)}"


def write_animations(folder):
    """A loop that lasts as long as the sound of the frame before it, and one frame with two sounds to choose from."""
    frames = [animations.frame(8, 6, 10, 5, 0x1111)]
    steps = [animations.position(sound="talk.wav"), *[animations.position()] * 4]
    event = animations.event("TALK", [0] * 5, loop=(1, 2, 0), flags=0x100000, positions=steps)
    (folder / "talker.ann").write_bytes(animations.ann([event], frames))
    steps = [animations.position(sound="chatter0.wav;chatter1.wav")]
    event = animations.event("TALK", [0], flags=0x80000, positions=steps)  # the sound survives the end
    (folder / "chatter.ann").write_bytes(animations.ann([event], frames))


def run(host, game, sound, *more):
    command = [host, "-window", "-res", "64", "48", "--headless", "--ticks", str(TICKS), "--record", sound, *more]
    subprocess.run(command, cwd=game, stdin=subprocess.DEVNULL, timeout=100, check=True)


def main():
    parser = argparse.ArgumentParser(description="Compares recorded sound with what must come out.")
    parser.add_argument("--host", required=True, type=pathlib.Path)
    host = parser.parse_args().host.resolve()
    work = pathlib.Path(tempfile.mkdtemp(prefix="footlight-sound-"))
    try:
        game = work / "game"
        (game / "Dane" / "MAIN").mkdir(parents=True)
        (game / "Dane" / "application.def").write_text(game_folder.ONE_SCENE)
        (game / "Dane" / "MAIN" / "MAIN.cnv").write_text(SCENE)
        write_animations(game / "Dane" / "MAIN")
        (game / "Wavs").mkdir()
        sounds = Sounds(game / "Wavs")
        run(host, game, work / "first.wav")
        recorded = read(work / "first.wav")
        faults = [*judge(recorded, sounds.expected), *judge_chatter(recorded, sounds.chatter)]
        faults += judge_ini((game / "footlight.ini").read_text())
        run(host, game, work / "again.wav")
        if (work / "again.wav").read_bytes() != (work / "first.wav").read_bytes():
            faults.append("a second run sounds different")
        (game / "Wavs" / "packed.wav").unlink()  # is decoded from the disk alone
        run(host, game, work / "disk.wav")
        subprocess.run([host, "-bigfile", "--folder", ".", "--out", work / "game.big"], cwd=game, check=True, stdout=subprocess.DEVNULL)
        empty = work / "empty"
        empty.mkdir()
        run(host, empty, work / "big.wav", "--big", work / "game.big")
        if (work / "big.wav").read_bytes() != (work / "disk.wav").read_bytes():
            faults.append("out of a big file it sounds different")
    finally:
        shutil.rmtree(work)
    print("\n".join(faults) or "sound: as it must be")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
