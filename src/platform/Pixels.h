#pragma once

#include "platform/Control.h"

namespace larder {

// A place that was designed in pixels, in twips.
constexpr Rectangle Pixels(float left, float top, float width, float height) {
    return {left * TwipsPerPixel, top * TwipsPerPixel, width * TwipsPerPixel,
            height * TwipsPerPixel};
}

}  // namespace larder
