#pragma once

#include <string>

#include "platform/Picture.h"

namespace larder {

// Draws a picture into a JPEG file of this size in pixels, on white; quality 0 to 100. Failure 75
// when the file cannot be written. The same picture gives the same bytes.
void SaveAsJpeg(const Picture& picture, const std::string& nativePath, int width, int height,
                int quality);

}  // namespace larder
