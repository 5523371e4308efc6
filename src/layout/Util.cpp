#include "layout/Util.h"

#include <algorithm>

#include "platform/Window.h"

namespace larder {

void CenterInWorkArea(Window& window) {
    const Rectangle area = window.WorkArea();
    const Rectangle place = window.Place();
    window.MoveTo(area.Left + (area.Width - place.Width) / 2,
                  area.Top + (area.Height - place.Height) / 2);
}

void FitRectangle(std::int32_t maxHeight, std::int32_t maxWidth, std::int32_t& height,
                  std::int32_t& width) {
    if (height <= 0 || width <= 0) return;
    const std::int64_t ownHeight = height;
    const std::int64_t ownWidth = width;
    const std::int64_t scaledWidth = maxHeight * ownWidth / ownHeight;
    if (scaledWidth <= maxWidth) {
        height = maxHeight;
        width = static_cast<std::int32_t>(std::max<std::int64_t>(scaledWidth, 1));
    } else {
        width = maxWidth;
        height =
            static_cast<std::int32_t>(std::max<std::int64_t>(maxWidth * ownHeight / ownWidth, 1));
    }
}

void FitRectangle(std::int32_t maxHeight, std::int32_t maxWidth, std::int32_t& height,
                  std::int32_t& width, std::int32_t frameLeft, std::int32_t frameTop,
                  std::int32_t& left, std::int32_t& top) {
    FitRectangle(maxHeight, maxWidth, height, width);
    left = frameLeft + (maxWidth - width) / 2;
    top = frameTop + (maxHeight - height) / 2;
}

}  // namespace larder
