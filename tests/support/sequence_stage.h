#pragma once

// A scene with one SEQUENCE, whose file a test writes. Every element tells its start and its end.

#include <string>

#include "support/game_world.h"

namespace footlight::test {

// Lines of a sequence file. A parent of "" adds the element nowhere.
std::string node(const std::string& name, const std::string& mode = "SEQUENCE",
                 const std::string& parent = {});
std::string leaf(const std::string& name, const std::string& file, const std::string& event,
                 const std::string& parent = "S");
std::string sound(const std::string& name, const std::string& file, const std::string& parent = "S");
std::string speaker(const std::string& name, const std::string& sound, const std::string& further = {},
                    const std::string& parent = "S");

// Plays the sequence of the element "S" in the file S.SEQ. There are the sounds A, C, D and VOICE (100 ms), B
// (200 ms) and LONG (1 s), the animations FIGURE.ANN and NOEVENTS.ANN, and the objects FIGURE, of the file
// OBJECT.ANN, and VOICE.
class Stage {
 public:
  // `definitions` come behind those of the scene; a text in place of the file's.
  explicit Stage(const std::string& text, const std::string& definitions = {});

  Stage& run(const std::string& code);
  Stage& ticks(int count);
  // What was told, behind the number of the tick in which it was: "<" and ">" for the root, "+a" and "-a" for
  // an element a.
  std::string heard() const { return heard_; }
  std::string text(const char* name);
  World& world() { return *world_; }

 private:
  void listen();

  Disk disk_;
  std::unique_ptr<World> world_;
  std::string heard_;
  std::string log_;
  int tick_ = 0;
};

}  // namespace footlight::test
