#pragma once

#include <cstdint>

#include "platform/rtf/RichFormat.h"

namespace larder {

// Where the text of a group goes.
enum class RtfDestination : std::uint8_t { Body, FontTable, ColourTable, Picture, Nothing };

// What a group opens with, from the group around it, and what its end gives back.
struct RtfState {
    RtfDestination destination = RtfDestination::Body;
    bool ignorable = false;      // \* was the last token
    bool offersUnicode = false;  // \upr: of the groups within, only \ud is read
    bool hidden = false;         // \v or \deleted
    bool capitals = false;
    TabKind nextTab = TabKind::Left;
    int font = -1;        // number in the font table, -1: the document's default
    int unicodeSkip = 1;  // \uc
    CharFormat chars;     // but for the font
    ParaFormat paragraph;
};

}  // namespace larder
