#include "platform/rtf/RtfPicture.h"

#include <algorithm>
#include <utility>

namespace larder {

namespace {

int DigitOf(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    const char small = static_cast<char>(c | 0x20);
    return small >= 'a' && small <= 'f' ? small - 'a' + 10 : -1;
}

}  // namespace

void RtfPicture::Set(Measure measure, int value) {
    measures_[static_cast<int>(measure)] = std::max(value, 0);
}

void RtfPicture::AddHex(std::string_view digits) {
    for (const char c : digits) {
        const int digit = DigitOf(c);
        if (digit < 0) continue;
        if (highDigit_ < 0) {
            highDigit_ = digit;
            continue;
        }
        bytes_ += static_cast<char>(highDigit_ * 16 + digit);
        highDigit_ = -1;
    }
}

std::int32_t RtfPicture::Goal(Measure goal, Measure own, Measure scale) const {
    std::int64_t twips = Of(goal);
    if (twips == 0 && kind_ == PictureKind::Placeholder) {
        twips = std::int64_t{Of(own)} * 1440 / 2540;  // metafiles count in hundredths of a mm
    }
    twips = twips * std::min(Of(scale), 10000) / 100;
    return static_cast<std::int32_t>(std::min<std::int64_t>(twips, kMostTwips));
}

RichPicture RtfPicture::Take() {
    RichPicture picture;
    picture.goalWidth = Goal(Measure::GoalWidth, Measure::Width, Measure::ScaleX);
    picture.goalHeight = Goal(Measure::GoalHeight, Measure::Height, Measure::ScaleY);
    picture.kind = bytes_.empty() ? PictureKind::Placeholder : kind_;
    if (picture.kind != PictureKind::Placeholder) {
        bytes_.shrink_to_fit();
        picture.bytes = std::make_shared<const std::string>(std::move(bytes_));
    }
    *this = RtfPicture();
    return picture;
}

}  // namespace larder
