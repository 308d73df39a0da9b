#pragma once

// What the three levels of a game have in common as types of script objects.

#include <iterator>

#include "app/mc_scene.h"

namespace footlight::level_words {

inline constexpr auto kSignals = signalTable<LevelSignal>({
    {LevelSignal::onDoModal, "ONDOMODAL", "Kept for tools; nothing raises it."},
    {LevelSignal::onRestart, "ONRESTART", "The level begins anew."},
    {LevelSignal::onMusicLooped, "ONMUSICLOOPED", "The music begins anew."},
    {LevelSignal::onActivate, "ONACTIVATE", "The game's window has become the active one."},
    {LevelSignal::onDeactivate, "ONDEACTIVATE", "Another window has become the active one."},
    {LevelSignal::onUpgraded, "ONUPGRADED", "The next version of the game has come."},
});

// The properties of a scene. Those of the levels above begin with others, and these follow.
inline constexpr Property kProperties[] = {
    {"DLLS", PropertyKind::list, "", "External modules that make objects of types of their own."},
    {"DESCRIPTION", PropertyKind::text, "", "For authors."},
    {"CREATIONTIME", PropertyKind::text, "", "For authors."},
    {"LASTMODIFYTIME", PropertyKind::text, "", "For authors."},
    {"AUTHOR", PropertyKind::text, "", "For authors."},
    {"COAUTHORS", PropertyKind::text, "", "For authors."},
    {"PATH", PropertyKind::text, "", "Its folder."},
    {"BACKGROUND", PropertyKind::file, "", "The picture behind all."},
    {"MUSIC", PropertyKind::file, "", "The music that is played."},
    {"DEAMON", PropertyKind::boolean, "FALSE", "Kept for tools; the engine does nothing with it."},
    {"VERSION", PropertyKind::text, "", "For authors."},
};

// Some properties of a level's own, and those of every level behind them.
template <std::size_t N>
consteval auto withProperties(const Property (&own)[N]) {
  std::array<Property, N + std::size(kProperties)> all{};
  for (std::size_t i = 0; i < N; ++i) all[i] = own[i];
  for (std::size_t i = 0; i < std::size(kProperties); ++i) all[N + i] = kProperties[i];
  return all;
}

}  // namespace footlight::level_words
