#pragma once

// KEYBOARD: what the keys do, as signals. One a chain of scopes: the bindings of successive scenes add up.

#include "input/key_listener.h"
#include "script/mc_object.h"

namespace footlight {

class CKeyboard;
class CWindow;

namespace type {
inline constexpr int kKeyboard = 101;
}

enum class KeyboardSignal { onChar = kFirstOwnSignal, onKeyDown, onKeyUp, count };

class CMC_Keyboard : public CMC_Object, public CKeyListener {
 public:
  CMC_Keyboard(CMC_ObjectsContainer* container, const CMElement* element);
  ~CMC_Keyboard() override;
  static bool isTypeOf(int type) { return type == type::kKeyboard; }
  // Another listener of the one keyboard, with bindings of its own.
  std::unique_ptr<CMC_Object> copy() const override;

  void enable(bool on) { enabled_ = on; }
  bool isEnabled() const { return enabled_; }
  // The name of the key, or the character, of the last signal.
  const CXString& getLatestKey() const { return latestKey_; }
  // The name of a scan code; empty for one without a name.
  static CXString getKeySignal(int scanCode);
  // Null without a window.
  CKeyboard* getDevice() const;

  void onKeyUp(int key) override;
  void onKeyDown(int key) override;
  void onChar(unsigned char character) override;

 protected:
  void unlink() override;

 private:
  CMC_Keyboard(const CMC_Keyboard& other);
  bool isHeard(KeyboardSignal signal) const { return enabled_ && isSignalBound(signal); }
  void signalKey(KeyboardSignal signal, CXString key);

  CWindow* window_;
  bool enabled_ = true;
  CXString latestKey_;
};

}  // namespace footlight
