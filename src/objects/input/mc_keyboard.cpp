#include "objects/input/mc_keyboard.h"

#include <algorithm>

#include "gfx/window.h"
#include "script/mc_objects_container.h"

namespace footlight {

namespace {

struct KeyName {
  int scanCode;
  const char* name;
};
constexpr KeyName kNames[] = {
    {1, "ESC"},      {2, "1"},       {3, "2"},         {4, "3"},       {5, "4"},      {6, "5"},
    {7, "6"},        {8, "7"},       {9, "8"},         {10, "9"},      {11, "0"},     {15, "TAB"},
    {16, "Q"},       {17, "W"},      {18, "E"},        {19, "R"},      {20, "T"},     {21, "Y"},
    {22, "U"},       {23, "I"},      {24, "O"},        {25, "P"},      {28, "ENTER"}, {29, "LCTRL"},
    {30, "A"},       {31, "S"},      {32, "D"},        {33, "F"},      {34, "G"},     {35, "H"},
    {36, "J"},       {37, "K"},      {38, "L"},        {42, "LSHIFT"}, {44, "Z"},     {45, "X"},
    {46, "C"},       {47, "V"},      {48, "B"},        {49, "N"},      {50, "M"},     {54, "RSHIFT"},
    {56, "LALT"},    {57, "SPACE"},  {58, "CAPSLOCK"}, {59, "F1"},     {60, "F2"},    {61, "F3"},
    {62, "F4"},      {63, "F5"},     {64, "F6"},       {65, "F7"},     {66, "F8"},    {67, "F9"},
    {68, "F10"},     {71, "7"},      {72, "8"},        {73, "9"},      {75, "4"},     {76, "5"},
    {77, "6"},       {79, "1"},      {80, "2"},        {81, "3"},      {82, "0"},     {87, "F11"},
    {88, "F12"},     {157, "RCTRL"}, {184, "RALT"},    {199, "HOME"},  {200, "UP"},   {201, "PGUP"},
    {203, "LEFT"},   {205, "RIGHT"}, {207, "END"},     {208, "DOWN"},  {209, "PGDN"}, {210, "INSERT"},
    {211, "DELETE"},
};

}  // namespace

CMC_Keyboard::CMC_Keyboard(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Object(container, element, type::kKeyboard), window_(container->getWindow()) {
  setName("KEYBOARD");
  overideSignals(false);
  if (window_ != nullptr) window_->registerKeyListener(this);
  initializeBehaviours(container, element);
}

CMC_Keyboard::CMC_Keyboard(const CMC_Keyboard& other)
    : CMC_Object(other), window_(other.window_), enabled_(other.enabled_), latestKey_(other.latestKey_) {
  overideSignals(false);
  if (window_ != nullptr) window_->registerKeyListener(this);
}

std::unique_ptr<CMC_Object> CMC_Keyboard::copy() const {
  return std::unique_ptr<CMC_Object>(new CMC_Keyboard(*this));
}

CMC_Keyboard::~CMC_Keyboard() { CMC_Keyboard::unlink(); }

void CMC_Keyboard::unlink() {
  if (window_ != nullptr) window_->removeKeyListener(this);
}

CKeyboard* CMC_Keyboard::getDevice() const {
  return window_ != nullptr ? window_->getKeyboardInterface() : nullptr;
}

CXString CMC_Keyboard::getKeySignal(int scanCode) {
  const auto* row =
      std::ranges::find_if(kNames, [scanCode](const KeyName& key) { return key.scanCode == scanCode; });
  return row != std::end(kNames) ? row->name : "";
}

void CMC_Keyboard::signalKey(KeyboardSignal signal, CXString key) {
  const Ref<CMC_Keyboard> self(this);
  latestKey_ = key;
  if (key.IsEmpty()) {
    raise(signal);
  } else {
    raise(signal, key);
  }
}

void CMC_Keyboard::onKeyDown(int key) {
  if (isHeard(KeyboardSignal::onKeyDown)) signalKey(KeyboardSignal::onKeyDown, getKeySignal(key));
}

void CMC_Keyboard::onKeyUp(int key) {
  if (isHeard(KeyboardSignal::onKeyUp)) signalKey(KeyboardSignal::onKeyUp, getKeySignal(key));
}

void CMC_Keyboard::onChar(unsigned char character) {
  const char text = static_cast<char>(character);
  if (isHeard(KeyboardSignal::onChar)) signalKey(KeyboardSignal::onChar, std::string_view(&text, 1));
}

}  // namespace footlight
