"""A game of a test, copied to where it may write.

A game with the one scene MAIN needs no application.def of its own: where there is none, the copy gets this one.
"""

import shutil

ONE_SCENE = """OBJECT=GAME
GAME:TYPE=APPLICATION
GAME:SCENES=MAIN

OBJECT=MAIN
MAIN:TYPE=SCENE
MAIN:PATH=MAIN
"""


def copy(game, folder):
    """Copies the game to a folder that must not exist."""
    shutil.copytree(game, folder)
    if (folder / "Dane" / "MAIN" / "MAIN.cnv").is_file() and not list(folder.rglob("application.def")):
        (folder / "Dane" / "application.def").write_text(ONE_SCENE)
