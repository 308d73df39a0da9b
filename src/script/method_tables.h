#pragma once

// The method tables of all types, one function a runner; each stands in the source named after its type and
// "_runner". The factory makes the runners from them.

#include <span>

#include "script/mc_runner.h"

namespace footlight::methods {

std::span<const Method> builtIns();
std::span<const Method> variable();
std::span<const Method> basicCondition();
std::span<const Method> behaviour();
std::span<const Method> cnvLoader();
std::span<const Method> scriptClass();
std::span<const Method> structure();
std::span<const Method> groupped();
std::span<const Method> application();
std::span<const Method> episode();
std::span<const Method> scene();
std::span<const Method> timer();
std::span<const Method> system();
std::span<const Method> random();
std::span<const Method> dialog();
std::span<const Method> animo();
std::span<const Method> image();
std::span<const Method> button();
std::span<const Method> sound();
std::span<const Method> joystick();
std::span<const Method> canvasObserver();
std::span<const Method> mouse();
std::span<const Method> keyboard();
std::span<const Method> array();

}  // namespace footlight::methods
