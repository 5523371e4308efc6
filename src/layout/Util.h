#pragma once

#include <cstdint>

namespace larder {

class Window;

// Puts a window into the middle of the part of the screen that windows may cover.
void CenterInWorkArea(Window& window);

// Scales a rectangle, in whole numbers, to fit into a frame with its proportions kept: its height
// becomes the frame's, or, where it would then be too wide, its width does. A side that would come
// to nothing is 1. Nothing happens to a rectangle without a size.
void FitRectangle(std::int32_t maxHeight, std::int32_t maxWidth, std::int32_t& height,
                  std::int32_t& width);
// The same, and where it stands when it is centred in a frame that begins at these offsets.
void FitRectangle(std::int32_t maxHeight, std::int32_t maxWidth, std::int32_t& height,
                  std::int32_t& width, std::int32_t frameLeft, std::int32_t frameTop,
                  std::int32_t& left, std::int32_t& top);

}  // namespace larder
