#pragma once

#include "platform/Control.h"

class QFont;
class QString;
template <typename T>
class QList;

namespace larder {

// The fonts of the house. For the Qt side of the platform layer only.

// The families to try, in this order: ours first, then what most systems have in its place.
QList<QString> NativeFamilies(Font::Family face);

// Sized in pixels, because sizes of the program are points at 96 dots an inch on any screen.
QFont NativeFont(const Font& font);
int FontPixels(float points);

}  // namespace larder
