#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/Control.h"

class QColor;
class QInputEvent;
class QKeyEvent;
class QMouseEvent;
class QRect;
class QString;

namespace larder {

// The program's values in Qt's terms and back. For the Qt side of the platform layer only.

QString NativeText(std::string_view text);
// The part of a text that a line on the screen could have room for: laying out megabytes, as a
// damaged file may hold, would take many seconds.
std::string_view Showable(std::string_view text);
std::string ProgramText(const QString& text);
// A tool tip shows as it is written, never as mark-up.
QString NativeToolTip(std::string_view text);

QColor NativeColor(std::int32_t color);

// Twips to whole pixels, an edge at a time: two areas that share an edge share its pixel, so that
// neighbours neither gap nor overlap.
int PixelOf(float twips);
QRect NativePlace(const Rectangle& place);

// The code of platform/Keys.h, 0 for a key without one. A key of a layout that has no Latin
// letters is the letter at its place on an English keyboard.
int KeyCodeOf(const QKeyEvent& event);
int ShiftOf(const QInputEvent& event);

// The mask of platform/Keys.h for one or more buttons of Qt::MouseButton.
int ButtonMask(int nativeButtons);

// The handlers of mouse events: the button that went down or up, or on a move the mask of those
// that are held; the mask of shift keys; the place in twips.
using MouseHandler = std::function<void(int Button, int Shift, float X, float Y)>;
void FireMouse(const MouseHandler& handler, const QMouseEvent& event);

// What a screen reader takes a plain widget for, where Qt cannot tell by itself; the value is one
// of QAccessible::Role.
void SetAccessibleRole(QWidget& widget, int role);

// The colours of the house that the controls themselves draw with.
namespace house {
inline constexpr std::int32_t SlateBlue = 0x714B28;
inline constexpr std::int32_t Navy = 0x4A3012;
inline constexpr std::int32_t Brass = 0x3C9BC8;
inline constexpr std::int32_t Paper = 0xE4F4FB;
inline constexpr std::int32_t Ink = 0x20232B;
inline constexpr std::int32_t PaleInk = 0x7F8890;  // what cannot be done now
inline constexpr std::int32_t PaleBar = 0xD5CBBF;  // the bar of a list without the focus
}  // namespace house

}  // namespace larder
