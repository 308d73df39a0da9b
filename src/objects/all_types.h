#pragma once

namespace footlight {

// Makes every type of script object known, unless a list of types is installed already. To be called before
// anything is made of a game.
void installAllTypes();

}  // namespace footlight
