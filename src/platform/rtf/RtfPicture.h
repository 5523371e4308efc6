#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/rtf/RichFormat.h"

namespace larder {

// Collects the words and the data of one \pict group.
class RtfPicture {
  public:
    // What the numbers of a \pict group say.
    enum class Measure : std::uint8_t {
        Width,
        Height,  // in the picture's own measure
        GoalWidth,
        GoalHeight,  // twips
        ScaleX,
        ScaleY  // percent
    };

    void SetKind(PictureKind kind) { kind_ = kind; }
    void Set(Measure measure, int value);
    void AddHex(std::string_view digits);  // other characters than digits are passed over
    void AddBinary(std::string_view bytes) { bytes_ += bytes; }

    RichPicture Take();

  private:
    int Of(Measure measure) const { return measures_[static_cast<int>(measure)]; }
    std::int32_t Goal(Measure goal, Measure own, Measure scale) const;

    PictureKind kind_ = PictureKind::Placeholder;
    int measures_[6] = {0, 0, 0, 0, 100, 100};
    std::string bytes_;
    int highDigit_ = -1;  // the first digit of a byte whose second is still to come
};

}  // namespace larder
