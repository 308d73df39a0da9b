#!/usr/bin/env python3
"""Turns the definition files of the games under tests/games into inputs for fuzz_script.

    game_seeds.py FOLDER     writes them to the folder
"""

import pathlib
import sys

LONGEST = 1536  # bytes of text that the target takes
GAMES = pathlib.Path(__file__).parent.parent / "tests" / "games"


def main():
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    for number, path in enumerate(sorted(GAMES.rglob("*.cnv"))):
        text = path.read_bytes()
        if len(text) <= LONGEST:
            # "d": the text is the definition of the scene. The second byte says how runs are compared.
            (folder / f"game{number}").write_bytes(b"d" + bytes([number % 4]) + text)


if __name__ == "__main__":
    main()
