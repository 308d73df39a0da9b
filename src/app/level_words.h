#pragma once

// What the three levels of a game have in common as types of script objects.

#include <array>

#include "app/mc_scene.h"

namespace footlight::level_words {

inline constexpr auto kSignals = signalTable<LevelSignal>({
    {LevelSignal::onDoModal, "ONDOMODAL", "Nothing raises it."},
    {LevelSignal::onRestart, "ONRESTART", "RESTART was called."},
    {LevelSignal::onMusicLooped, "ONMUSICLOOPED", "The music has come to its end and begins anew."},
    {LevelSignal::onActivate, "ONACTIVATE", "Nothing raises it."},
    {LevelSignal::onDeactivate, "ONDEACTIVATE", "Nothing raises it."},
    {LevelSignal::onUpgraded, "ONUPGRADED",
     "The next version of the game has come; nothing raises it in this build."},
});

// The properties of a scene. Those of the levels above begin with others, and these follow.
inline constexpr auto kProperties = std::to_array<Property>({
    {"DLLS", PropertyKind::list, "", "External modules that make objects of types of their own."},
    {"DESCRIPTION", PropertyKind::text, "", "For authors."},
    {"CREATIONTIME", PropertyKind::text, "", "For authors."},
    {"LASTMODIFYTIME", PropertyKind::text, "", "For authors."},
    {"AUTHOR", PropertyKind::text, "", "For authors."},
    {"COAUTHORS", PropertyKind::text, "", "For authors."},
    {"PATH", PropertyKind::text, "", "Its folder below Dane."},
    {"BACKGROUND", PropertyKind::file, "", "The picture behind everything; without it a plain colour."},
    {"MUSIC", PropertyKind::file, "", "Its music; without it that of the level above."},
    {"DEAMON", PropertyKind::boolean, "FALSE", "Kept for tools; it changes nothing."},
    {"VERSION", PropertyKind::text, "", "Its version, which an upgrade over the network compares."},
});

// Some properties of a level's own, and those of every level behind them.
template <std::size_t N>
consteval auto withProperties(const Property (&own)[N]) {
  return joined(std::to_array(own), kProperties);
}

}  // namespace footlight::level_words
