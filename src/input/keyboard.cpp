#include "input/keyboard.h"

#include <algorithm>
#include <utility>

#include "files/language_os_ver.h"
#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "gfx/window.h"
#include "platform/platform.h"

namespace footlight {

namespace {

constexpr std::uint32_t kFlushInterval = 10;  // milliseconds
constexpr int kLastCharacter = 254;

void append(std::vector<int>& queue, int scanCode) {
  if (queue.size() >= static_cast<std::size_t>(limits::kInputEvents)) {
    guardHit("input events");
  } else {
    queue.push_back(scanCode);
  }
}

}  // namespace

CKeyboard::CKeyboard(CWindow* window) : window_(window), layout_(&keys::Layout::of(0)) {
  initLanguage();
  window_->addIPoller(this);
}

CKeyboard::~CKeyboard() { window_->removeIPoller(this); }

void CKeyboard::initLanguage() {
  const CLanguageOSVer* language = window_->getLanguage();
  layout_ = &keys::Layout::of(language != nullptr ? language->getLang() : 0);
}

void CKeyboard::tick() {
  for (const platform::KeyEvent& event : platform::current().input().takeKeyEvents()) {
    if (event.scanCode < 0 || event.scanCode >= static_cast<int>(kScanCodes)) continue;
    if (event.down) {
      typed_.set(static_cast<std::size_t>(event.scanCode));
      if (!event.repeated) press(event.scanCode);
    } else {
      release(event.scanCode);
    }
  }
  takeCharacters();
}

void CKeyboard::takeCharacters() {
  for (const platform::CharacterEvent& event : platform::current().input().takeCharacters()) {
    if (autoRepeat_ || !event.repeated) append(characters_, event.character);
  }
}

bool CKeyboard::isTyped(int scanCode) const {
  if (!platform::current().input().tellsTyping()) return true;
  return scanCode >= 0 && scanCode < static_cast<int>(kScanCodes) &&
         typed_.test(static_cast<std::size_t>(scanCode));
}

void CKeyboard::press(int scanCode) {
  const auto key = static_cast<std::size_t>(scanCode);
  state_.set(key);
  if (told_.test(key)) return;
  told_.set(key);
  append(downKeys_, scanCode);
  append(charKeys_, scanCode);
}

void CKeyboard::release(int scanCode) {
  const auto key = static_cast<std::size_t>(scanCode);
  state_.reset(key);
  if (!told_.test(key)) return;
  told_.reset(key);
  if (autoRepeat_) {
    std::erase(downKeys_, scanCode);
    std::erase(charKeys_, scanCode);
  }
  append(upKeys_, scanCode);
}

// Handlers may change the auto-repeat, so what it was is asked after them.
void CKeyboard::flushSignals(bool deliver) {
  const std::uint32_t now = platform::current().clock().ticks();
  if (now - lastFlush_ < kFlushInterval) return;
  for (const int key : Queue(downKeys_)) {
    if (deliver) window_->OnKeyDown(key, 0);
  }
  if (!autoRepeat_) downKeys_.clear();
  typed_.reset();
  for (const int key : std::exchange(upKeys_, {})) {
    if (deliver) window_->OnKeyUp(key, 0);
  }
  tellCharacters(deliver);
  lastFlush_ = now;
}

void CKeyboard::tellCharacters(bool deliver) {
  const bool areTold = platform::current().input().tellsTyping();
  for (const int key : Queue(charKeys_)) {
    if (deliver && !areTold) onChar(key);
  }
  if (!autoRepeat_) charKeys_.clear();
  for (const int character : std::exchange(characters_, {})) {
    if (deliver && character != 0 && character <= kLastCharacter) window_->OnChar(character, 0);
  }
}

void CKeyboard::onChar(int scanCode) {
  const int character = getChar(scanCode);
  if (character <= kLastCharacter && layout_->isLetter(character)) window_->OnChar(character, 0);
}

int CKeyboard::getChar(int scanCode) const {
  const bool shifted = isDown(keys::kLeftShift) || isDown(keys::kRightShift);
  const bool alt = isDown(keys::kLeftAlt) || isDown(keys::kRightAlt);
  const int plain = keys::plainCharacter(scanCode, shifted);
  if (plain == keys::kNoCharacter) return plain;
  const int character = layout_->translate(plain, shifted, alt);
  return shifted ? keys::shiftedCharacter(character) : character;
}

bool CKeyboard::isKeyPressed(const CXString& name) const {
  return std::ranges::any_of(keys::scanCodesOf(name), [this](int code) { return isDown(code); });
}

}  // namespace footlight
