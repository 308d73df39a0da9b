#pragma once

// The keyboard: takes the device's scan codes and plays them back as calls of the window's handlers, as keys
// that go down and up and as characters. With auto-repeat a key that is held is told again at each flush
// until it comes up, at most every 10 milliseconds.
//
// Characters follow from the keys by a table, unless the device tells them itself in the player's layout;
// then they repeat at its pace.

#include <array>
#include <bitset>
#include <cstdint>
#include <vector>

#include "foundation/xobject.h"
#include "foundation/xstring.h"
#include "input/input_poller.h"
#include "input/keyboard_layout.h"

namespace footlight {

class CWindow;

class CKeyboard : public CXObject, public CInputPoller {
 public:
  // One of the window's pollers as long as it lives.
  explicit CKeyboard(CWindow* window);
  ~CKeyboard() override;

  // Takes the layout of the window's language.
  void initLanguage();
  void tick() override;
  void flushSignals(bool deliver) override;
  // Tells the character of one key, if it has one.
  void onChar(int scanCode);
  // Whether a key that is told now is a stroke for whoever edits a text: the first one, or a repetition at
  // the pace of the player's settings where the device knows it.
  bool isTyped(int scanCode) const;
  void setAutoRepeat(bool repeats) { autoRepeat_ = repeats; }
  bool isAnyKeyPressed() const { return state_.any(); }
  // Words such as "left", "shift", "space", or a letter or digit, in any case; false for any other name.
  bool isKeyPressed(const CXString& name) const;

 private:
  static constexpr std::size_t kScanCodes = 256;
  using Queue = std::vector<int>;

  void press(int scanCode);
  void release(int scanCode);
  void takeCharacters();
  void tellCharacters(bool deliver);
  int getChar(int scanCode) const;
  bool isDown(int scanCode) const { return state_.test(static_cast<std::size_t>(scanCode)); }

  CWindow* window_;
  const keys::Layout* layout_;
  bool autoRepeat_ = true;
  std::bitset<kScanCodes> state_;  // as the device told last
  std::bitset<kScanCodes> told_;   // went down and was queued
  Queue downKeys_;
  Queue upKeys_;
  Queue charKeys_;
  std::bitset<kScanCodes> typed_;  // strokes since the last flush
  Queue characters_;               // that the device told
  std::uint32_t lastFlush_ = 0;    // clock, milliseconds
};

}  // namespace footlight
