#!/usr/bin/env python3
"""Plants small faults in a copy of the tree, one after the other, and tells which of them no test finds.

    tools/plant_faults.py                    all of them: hours
    tools/plant_faults.py --only timer       those whose file or description holds the word
    tools/plant_faults.py --list             prints them and checks that each fits the tree; builds nothing

Each row of FAULTS is a file, a text that stands in it exactly once, what takes its place, and what is wrong then. The copy
is built and tested once without a fault, then each fault is built (only what depends on it) and tested up to the first
failure. The exit status is 0 when every fault was found, 1 when one survived, 2 when a row does not fit or does
not build, or the tests fail without any fault.
"""

import argparse
import pathlib
import re
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

FAULTS = [
    # Time
    ("src/foundation/xtimer.cpp", "timer->last = moment - timer->pausedFor", "timer->last = moment",
     "RESUME of a timer forgets the time gone by"),
    ("src/foundation/xtimer.cpp", "timer->pausedFor = moment - timer->last",
     "timer->pausedFor = (moment - timer->last) / 2", "PAUSE of a timer notes half the time gone by"),
    ("src/objects/system/mc_timer.cpp", "ticks_ == maxTicks_", "ticks_ > maxTicks_", "a timer ticks once too often"),
    ("src/objects/system/mc_timer.cpp", "  enabled_ = true;\n  setTicks(0);", "  enabled_ = true;",
     "ENABLE of a timer goes on counting"),
    ("src/gfx/animation_manager.cpp", "!entry->playable->isPaused()) continue;", "false) continue;",
     "RESUME of all resumes what was not paused"),
    # Sound
    ("src/sound/sound4.cpp", "  const bool wasPaused = isPaused();\n  pausePosition_ = 0;",
     "  const bool wasPaused = isPaused();", "a pause position is not reset when the sound goes on"),
    ("src/sound/sound4.cpp", "void CSound4::play() {\n  pausePosition_ = 0;", "void CSound4::play() {",
     "a pause position is not reset when the sound starts anew"),
    ("src/sound/sound4.cpp", "notify(wasPaused ? kResumed : kStarted)", "notify(wasPaused ? kStarted : kResumed)",
     "started and resumed are swapped"),
    ("src/sound/sound4.cpp", "flushAfterPlayed_ && !IsPlaying()", "flushAfterPlayed_",
     "a sound that its end starts anew is flushed"),
    ("src/sound/snd_stream.cpp", "wav_->Tell() - 2 * buffer_->size()", "wav_->Tell() - buffer_->size()",
     "a stream resumes at the wrong place"),
    ("src/objects/sound/mc_sound.cpp", "if (managerFor(getScene()) == nullptr || isClone()) return giveBack();",
     "return giveBack();", "a removed sound ends"),
    # Texts
    ("src/text/text_painter.cpp", "glyph.x >= x_ + columns_", "glyph.x >= x_", "letters that overlap go to one strip"),
    ("src/text/simple_font.cpp", "previous == 0 || previous == ' ' ? kNoLetter", "previous == 0 ? kNoLetter",
     "letters move towards blanks"),
    ("src/text/text_layout.cpp", "pen_ + blank + width > *width_", "pen_ + blank + width >= *width_",
     "a line that just fits is broken"),
    ("src/text/text_layout.cpp", "isEmpty && wasEmpty_ ? 0", "isEmpty && wasEmpty_ ? lineHeight_",
     "each of several empty lines has a height"),
    ("src/text/text6.cpp", "  Invalidate();\n  CGraphicsObject::SetPosition(px, py);", "  CGraphicsObject::SetPosition(px, py);",
     "SETPOSITION leaves the text where it was on the screen"),
    ("src/text/markup.cpp", "style.equalsIgnoreCase(toggle.style) ? kStandardStyle : toggle.style",
     "style.IsEmpty() ? kStandardStyle : toggle.style",
     "a style does not end"),
    # Boxes to type in
    ("src/input/edit_box.cpp", "blank > lastBar ? blank + 1", "blank > lastBar ? blank", "a line breaks before its blank"),
    ("src/input/edit_box.cpp", "  cursorPos_ += 2;", "  cursorPos_ += 1;", "the caret stays behind when a line breaks"),
    ("src/input/edit_box.cpp", "if (noNewLine_ || text_.Length()", "if (text_.Length()", "Enter breaks a box of one line"),
    ("src/input/edit_box.cpp", "unit()->isActiveEditBox(this) && ", "", "a click on a box takes its turn"),
    ("src/app/unit6.cpp", "if (box->isEnabled()) return activateEditBox(box);", "return activateEditBox(box);",
     "TAB goes to a box that is disabled"),
    # Tables, grids and queues
    ("src/objects/data/mc_multi_array.cpp", "index / before * width()", "index / width() * width()",
     "cells move when a grid grows"),
    ("src/objects/data/mc_quene.cpp", "getType() == type::kFifo ? 0", "getType() == type::kLifo ? 0", "queue and stack are swapped"),
    ("src/objects/data/mc_database.cpp", "i = std::max(0, start)", "i = 0", "FIND begins at the first row"),
    ("src/objects/data/mc_vector.cpp", "values_.insert(values_.begin(),", "values_.insert(values_.end(),", "EXPAND adds behind"),
    # Levels
    ("src/app/mc_scene.cpp", "if (next == nullptr || next->getMusicFilename() != getMusicFilename()) stopMusic();",
     "stopMusic();", "music stops although the next scene has the same"),
    ("src/app/mc_scene.cpp", "CCursorClip::release(true);", "CCursorClip::release(false);", "the mouse's clip outlives a scene"),
    ("src/app/mc_scene.cpp", "setPending(history_[history_.size() - 2]);", "setPending(history_[history_.size() - 1]);",
     "BACK stays where it is"),
    ("src/app/mc_scene.cpp", "getSubId(currentSubScene_) + 1 : 0", "getSubId(currentSubScene_) + 2 : 0",
     "NEXT skips a scene"),
    ("src/app/mc_scene.cpp", "wrap_add(config->GetInt(getName(), \"Played\"), ran ? 1 : 0)",
     "wrap_add(config->GetInt(getName(), \"Played\"), 1)", "a scene that never ran counts as played"),
    ("src/app/mc_episode.cpp", "  latestScene_ = leaving->getName();\n", "", "an episode forgets the scene that it left"),
    ("src/app/mc_scene_runner.cpp", "const int minutes = total / 60;", "const int minutes = total / 100;",
     "TOTIME counts a hundred seconds a minute"),
    ("src/app/mc_scene_runner.cpp", "to == -1 ? object->getClonesNo() : to)", "to < 1 ? object->getClonesNo() : to)",
     "REMOVECLONES up to 0 takes all"),
    ("src/app/mc_application.cpp", "if (getCurrentScene() == startWith_) {", "if (getCurrentScene() != startWith_) {",
     "RESTART of the application takes the other way"),
    # Variables and texts
    ("src/script/mc_variable.cpp", "std::fabs(value - whole) < 0.5", "std::fabs(value - whole) <= 0.5",
     "halves round towards zero"),
    ("src/script/mc_variable.cpp", "const bool plain = changed && isSignalBound(VariableSignal::onChanged);",
     "const bool plain = isSignalBound(VariableSignal::onChanged);", "ONCHANGED without a change"),
    ("src/script/mc_variable_runner.cpp", "remainder(to_int(value * 100.0), 100) >= 50",
     "remainder(to_int(value * 100.0), 100) > 50", "ROUND of a half"),
    ("src/script/mc_variable_runner.cpp", "[](double a, double b) { return std::max(a, b); });",
     "[](double a, double b) { return std::min(a, b); });", "MAXA is MINA"),
    ("src/script/mc_variable_runner.cpp", "call.has(2) ? std::max(call.integer(2), 0) : 1",
     "call.has(2) ? std::max(call.integer(2), 0) : 0", "INSERTAT without a count inserts nothing"),
    ("src/script/mc_variable_runner.cpp", "if (angle < 0.0) angle += 2 * kHalfTurn;",
     "if (angle < 0.0) angle += kHalfTurn;", "ARCTANEX of a negative angle"),
    ("src/script/mc_condition.cpp", "return order() <= 0;", "return order() < 0;", "less or equal is less"),
    # Lists
    ("src/objects/data/mc_array_runner.cpp", "array.changed(array.size() - 2)", "array.changed(array.size() - 1)",
     "ADD reports the index of the new element"),
    ("src/objects/data/mc_array.cpp", "(marker_ + by) % size()", "(marker_ - by) % size()", "NEXT goes back"),
    ("src/objects/data/mc_array.cpp", "if (!ascending) reverse", "if (ascending) reverse",
     "SORT of mixed types goes the other way"),
    ("src/objects/data/insertion_order.cpp", "value.asBool()), text(", "!value.asBool()), text(",
     "TRUE and FALSE are swapped among mixed types"),
    ("src/foundation/random.cpp", "count = wrap_sub(n, low)", "count = wrap_add(n, low)", "a count of 0 in RANDOMFILL"),
    # Animations
    ("src/gfx/animo_play.cpp",
     "  if (GetEventInfo(currentEvent_) != nullptr)\n"
     "    events_[static_cast<std::size_t>(currentEvent_)].loopCounter = 0;\n", "",
     "a loop counter is not reset"),
    ("src/gfx/animo_play.cpp", "*position = std::max(0, *position - 2);", "*position = std::max(0, *position - 1);",
     "a ping-pong shows its end twice"),
    ("src/gfx/animo_play.cpp", "} else if (position > event->loopTo) {", "} else if (position >= event->loopTo) {",
     "a loop is one position short"),
    ("src/gfx/animo_play.cpp", "++event.loopCounter < event.loopCount", "++event.loopCounter <= event.loopCount",
     "a loop runs once too often"),
    ("src/gfx/animo.cpp", "  if (record != nullptr) position_ = position_ + record->offset;\n", "",
     "ONFRAMECHANGED finds no offset"),
    ("src/gfx/animo.cpp", "record->opacity != 255 ? record->opacity : info->opacity", "info->opacity",
     "the opacity of a position does not count"),
    # Pictures
    ("src/gfx/graphics_children.cpp", "  children_.reset();\n  backup_.reset();", "  children_.reset();",
     "the picture without its parts outlives them"),
    ("src/gfx/graphics_children.cpp", "if (value != std::byte{0})", "if (value == std::byte{0})",
     "MERGEALPHA2 changes only what is transparent"),
    ("src/gfx/graphics_effects.cpp", "right + 1 < width_ - 1", "right + 1 < width_", "a flood reaches the last column"),
    ("src/gfx/graphics_effects.cpp", "if (source < 1 ||", "if (source < 0 ||", "a displacement takes the first pixel"),
    ("src/gfx/graphics_effects.cpp", "paint(width_ - 1 - i, y);", "paint(i, y);", "an outline without its right side"),
    ("src/gfx/graphics_edit.cpp", "  if (flippedV_) FlipV();\n", "", "RESETFLIPS leaves the mirrored form"),
    ("src/gfx/background_manager.cpp", "wrapsX ? wrapped(left + position.x, width) : left",
     "wrapsX ? wrapped(left - position.x, width) : left", "the background scrolls the other way"),
    ("src/gfx/refresh_screen.cpp", "  queue_.add(object, priority, 0);\n  Invalidate(object);",
     "  queue_.add(object, priority, 0);", "what comes on the screen does not show"),
    ("src/gfx/image_file.cpp", 'if (extension == "ann") {\n    object_', 'if (extension == "anm") {\n    object_',
     "an animation is no background"),
    ("src/objects/gfx/graphics_arguments.h", "if (call.count() > 3)", "if (call.count() > 7)", "SAVE does not cut"),
    # Input
    ("src/input/hot_spot.cpp", "priority <= best ||", "priority < best ||", "of equal hot spots the last one is hit"),
    ("src/input/button.cpp", "  owner->click_ = point;\n  owner->Force(false);", "  owner->click_ = point;",
     "a released button looks pressed"),
    ("src/input/button.cpp", "playable->Play();", "playable->play();", "a button's sound starts anew"),
    ("src/input/button.cpp", "if (!owner->isDisposed()) owner->Force(true);",
     "if (!owner->isDisposed() && owner->IsEnabled()) owner->Force(true);", "a button that its press disables looks idle"),
    ("src/input/dialog.cpp", "titleButton_->Enable(visible_);", "titleButton_->Enable(true);",
     "a dialog that hides in its drag comes back"),
    ("src/objects/input/mc_joystick.cpp", "++counts_[number] >= axis.readings", "++counts_[number] > axis.readings",
     "an axis takes a reading more"),
    ("src/objects/input/mc_mouse.cpp", "if (button == 0) lastClick_ = point;", "lastClick_ = point;",
     "a right click is the last click"),
    ("src/objects/input/mc_keyboard.cpp", "  latestKey_ = key;\n", "", "the latest key is not noted"),
    # Files
    ("src/files/file.cpp", "  for (const CXString& place : {local, full}) {\n    if (isAt(place)) return place;",
     "  for (const CXString& place : {full, local}) {\n    if (isAt(place)) return place;",
     "a file is found in the wrong place first"),
    ("src/files/rle_compression.cpp", "length >= kShortestRepeat", "length > kShortestRepeat",
     "the shortest repeat is written out"),
]


SURVIVED = "SURVIVED"
BROKEN = "does not build: the row needs another text"


def fits(tree, fault):
    path, old, _, _ = fault
    file = tree / path
    return file.is_file() and file.read_text(encoding="utf-8").count(old) == 1


def call(command, log):
    with log.open("a", encoding="utf-8") as out:
        out.write(f"\n$ {' '.join(map(str, command))}\n")
        out.flush()
        return subprocess.run(command, stdout=out, stderr=subprocess.STDOUT, check=False).returncode


class Copy:
    """A copy of the tree, with its build."""

    def __init__(self, folder, jobs, tests):
        # Where a build of the tree itself would lie, so that the compiler's cache knows the files.
        self.tree, self.build = folder / "tree", folder / "tree" / "build" / "release"
        self.log, self.jobs, self.tests = folder / "log.txt", str(jobs), tests
        folder.mkdir(parents=True, exist_ok=True)
        self.log.write_text("")

    def update(self):
        """Brings the copy to the state of the tree; what did not change keeps its time, so little is built."""
        listed = subprocess.run(["git", "-C", ROOT, "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
                                capture_output=True, check=True).stdout.decode().split("\0")
        names = [name for name in listed if name and (ROOT / name).is_file()]
        for name in names:
            source, target = ROOT / name, self.tree / name
            if target.is_file() and target.read_bytes() == source.read_bytes():
                continue
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy2(source, target)
            target.touch()
        kept = {self.tree / name for name in names}
        for path in list(self.tree.rglob("*")):
            if path.is_file() and path not in kept and self.build not in path.parents:
                path.unlink()

    def configure(self):
        command = ["cmake", "-S", self.tree, "--preset", "release", "-DFOOTLIGHT_BENCH=OFF"]
        return call(command, self.log) == 0

    def make(self):
        return call(["cmake", "--build", self.build, "-j", self.jobs], self.log) == 0

    def test(self):
        """The name of the first test that fails, or None."""
        command = ["ctest", "--test-dir", self.build, "-j", self.jobs, "--stop-on-failure", "--timeout", "120"]
        if self.tests:
            command += ["-R", self.tests]
        run = subprocess.run(command, capture_output=True, text=True, errors="replace", check=False)
        with self.log.open("a", encoding="utf-8") as out:
            out.write(run.stdout[-4000:])
        if run.returncode == 0:
            return None
        failed = re.search(r"Test +#\d+: (\S+).*\*\*\*", run.stdout)
        return failed.group(1) if failed else "a test that did not end"


def judge(copy, fault):
    """How the fault ended, in words."""
    path, old, new, _ = fault
    file = copy.tree / path
    sound = file.read_text(encoding="utf-8")
    file.write_text(sound.replace(old, new), encoding="utf-8")
    try:
        if not copy.make():
            return BROKEN
        failed = copy.test()
        return f"found by {failed}" if failed else SURVIVED
    finally:
        file.write_text(sound, encoding="utf-8")


def parse():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--only", default="", help="faults whose file or description holds this text")
    parser.add_argument("--list", action="store_true", help="print the faults and check that they fit")
    parser.add_argument("--tests", default="", help="only tests whose names fit this pattern of ctest's -R")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--work", type=pathlib.Path, default=ROOT / "build" / "faults", help="where the copy lies")
    return parser.parse_args()


def main():
    words = parse()
    chosen = [fault for fault in FAULTS if words.only in fault[0] or words.only in fault[3]]
    misfits = [fault for fault in chosen if not fits(ROOT, fault)]
    for path, _, _, what in misfits:
        print(f"{path}: {what}: does not fit the tree any more")
    if words.list:
        for path, _, _, what in chosen:
            print(f"{path}: {what}")
        print(f"{len(chosen)} faults")
    if misfits or words.list:
        return 2 if misfits else 0

    copy = Copy(words.work, words.jobs, words.tests)
    copy.update()
    if not copy.configure() or not copy.make():
        print(f"The copy does not build: see {copy.log}")
        return 2
    failed = copy.test()
    if failed:
        print(f"Without any fault {failed} fails: see {copy.log}")
        return 2
    results = []
    for fault in chosen:
        results.append(judge(copy, fault))
        print(f"{fault[0]}: {fault[3]}: {results[-1]}", flush=True)
    survived, broken = results.count(SURVIVED), results.count(BROKEN)
    print(f"{len(chosen) - survived - broken} of {len(chosen)} found, {survived} survived, {broken} did not build")
    return 2 if broken else 1 if survived else 0


if __name__ == "__main__":
    sys.exit(main())
