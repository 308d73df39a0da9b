#pragma once

#include "script/type_registry.h"

namespace footlight::type {

inline constexpr int kNetPeer = 2010;
inline constexpr int kNetServer = 2011;
inline constexpr int kNetClient = 2012;
inline constexpr int kVirtualGraphicsObject = 3005;

}  // namespace footlight::type
