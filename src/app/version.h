#pragma once

namespace Version {
inline constexpr int Major = 5;
inline constexpr int Minor = 1;
inline constexpr int Patch = 6;
} // namespace Version
