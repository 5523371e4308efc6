#pragma once

namespace larder {

// Key codes as the window's and the lists' KeyDown handlers get them. Letters are the code of the
// capital letter, digits that of the digit, whatever the keyboard's layout calls them.
namespace key {
inline constexpr int None = 0;  // a handler sets this to consume the key
inline constexpr int Tab = 9;
inline constexpr int Enter = 13;
inline constexpr int Escape = 27;
inline constexpr int Space = 32;
inline constexpr int PageUp = 33;
inline constexpr int PageDown = 34;
inline constexpr int End = 35;
inline constexpr int Home = 36;
inline constexpr int Left = 37;
inline constexpr int Up = 38;
inline constexpr int Right = 39;
inline constexpr int Down = 40;
inline constexpr int Delete = 46;
inline constexpr int B = 66;
inline constexpr int E = 69;
inline constexpr int F = 70;
inline constexpr int N = 78;
inline constexpr int O = 79;
inline constexpr int W = 87;
inline constexpr int F1 = 112;
}  // namespace key

// Bit mask of the keyboard's state beside a key or a mouse button.
namespace shift {
inline constexpr int Shift = 1;
inline constexpr int Ctrl = 2;
inline constexpr int Alt = 4;
}  // namespace shift

namespace mouse {
inline constexpr int LeftButton = 1;
inline constexpr int RightButton = 2;
inline constexpr int MiddleButton = 4;
}  // namespace mouse

}  // namespace larder
