#include "layout/Util.h"

namespace larder {

void FitRectangle(std::int32_t maxHeight, std::int32_t maxWidth, std::int32_t& height,
                  std::int32_t& width) {
    if (height <= 0 || width <= 0) return;
    const std::int64_t ownHeight = height;
    const std::int64_t ownWidth = width;
    height = maxHeight;
    width = static_cast<std::int32_t>(maxHeight * ownWidth / ownHeight);
    if (width <= maxWidth) return;
    width = maxWidth;
    height = static_cast<std::int32_t>(maxWidth * ownHeight / ownWidth);
}

}  // namespace larder
