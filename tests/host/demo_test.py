#!/usr/bin/env python3
"""Paints the demo and plays it through, unseen: it must make no mistake that the engine could report, and each of its
scenes must show a picture of its own.

    demo_test.py --host build/debug/footlight
"""

import argparse
import pathlib
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests" / "games"))
import png  # noqa: E402

SHOTS = {250: "overture", 700: "night", 1400: "voyage", 2100: "day", 2950: "overture again"}


def main():
    parser = argparse.ArgumentParser(description="Plays the demo through, unseen.")
    parser.add_argument("--host", required=True, type=pathlib.Path)
    host = parser.parse_args().host.resolve()

    work = pathlib.Path(tempfile.mkdtemp(prefix="footlight-demo-"))
    try:
        game = work / "demo"
        shutil.copytree(ROOT / "demo", game, ignore=shutil.ignore_patterns("*.img", "*.ini"))
        subprocess.run([ROOT / "tools" / "make_demo.py", game], check=True, stdout=subprocess.DEVNULL)
        command = [host, "-window", "--headless", "--diagnose", "stop", "--ticks", str(max(SHOTS))]
        for tick in SHOTS:
            command += ["--shot", f"{tick}:{work / str(tick)}.png"]
        status = subprocess.run(command, cwd=game, stdin=subprocess.DEVNULL, timeout=200).returncode
        if status != 0:
            print(f"demo: ended with status {status}")
            return 1
        # Low on the stage the scenes are curtain, dark sea, rosy sea and grass.
        seen = {name: png.read(work / f"{tick}.png").at(400, 470) for tick, name in SHOTS.items()}
    finally:
        shutil.rmtree(work)
    print(f"demo: {seen}")
    scenes = {seen[name] for name in ("overture", "night", "voyage", "day")}
    return 0 if len(scenes) == 4 and seen["overture"] == seen["overture again"] else 1


if __name__ == "__main__":
    sys.exit(main())
