#pragma once

#include <memory>
#include <string>
#include <utility>

namespace larder {

// A picture that is drawn at whatever size it is shown: a drawing (SVG), which stays sharp at any
// size, or a photograph, decoded once and scaled smoothly. Copies share the content.
class Picture {
  public:
    Picture() = default;  // no picture

    // From the program's own art, by the path below `art` without its ending: "buttons/find".
    // Read when it is first shown; pictures of one name share it.
    // A name that does not exist is a mistake of the program: failure 53.
    static Picture FromArt(const std::string& name);
    // From a file of the user or the data folder, by its native path. JPEG, BMP, GIF, PNG and SVG;
    // what a file is, is told by its content. Failures: 53 missing, 71 the drive is not ready
    // or is taken away while the file is read, 75 not readable, 481 not a picture, or larger than
    // 100 megapixels. The turn that a camera wrote into the file is honoured.
    static Picture FromFile(const std::string& nativePath);

    bool IsEmpty() const { return content_ == nullptr; }
    // Its own size in pixels; 0 × 0 when empty.
    int PixelWidth() const;
    int PixelHeight() const;

    struct Content;
    explicit Picture(std::shared_ptr<const Content> content) : content_(std::move(content)) {}
    const std::shared_ptr<const Content>& Shared() const { return content_; }

  private:
    std::shared_ptr<const Content> content_;
};

}  // namespace larder
