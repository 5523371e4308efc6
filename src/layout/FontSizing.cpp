#include "layout/FontSizing.h"

#include "app/frmMain.h"
#include "platform/Text.h"
#include "search/SearchText.h"

namespace larder {

namespace {

constexpr float RichTextSize = 13.0F;  // points, at the design height
constexpr float ListSize = 13.2F;
constexpr float SmallestListSize = 7.0F;
constexpr std::int16_t SmallestRichTextSize = 8;

// The Tag is the size that the box takes when it is filled.
void SetTagSize(RichTextBox& rtb, std::int16_t& intFontSize) {
    if (intFontSize < SmallestRichTextSize) intFontSize = SmallestRichTextSize;
    rtb.Tag = std::to_string(intFontSize);
}

}  // namespace

void FontSizing::DoFontSizes(float ratio) {
    if (ratio >= 0) AdjustAllFontSizes(ratio);
}

void FontSizing::AdjustAllFontSizes(float ratio) {
    const bool typedIn = main.viewer.Modified;  // other sizes are no change of the text
    // In edit mode the formats in the viewer are the recipe's own, and are saved with it.
    const bool ownFormats = main.booEditMode && main.viewer.RecipeInBox != 0;
    for (RichTextBox* rtb : {&main.ui.rtbSee, &main.ui.rtbT}) {
        std::int16_t size = RoundToInteger(RichTextSize * ratio);
        if (rtb == &main.ui.rtbSee && ownFormats) {
            SetTagSize(*rtb, size);
        } else {
            SetRtbFontSize(*rtb, size);
        }
    }
    if (!ownFormats) main.viewer.FormatFirstLine(main.ui.rtbSee);
    main.viewer.Modified = typedIn;
    for (Label* label : {&main.ui.lblCategory, &main.ui.lblFound, &main.ui.lblTotal,
                         &main.ui.lblRecipeNum, &main.ui.lblJustWithPics, &main.ui.lblFamily}) {
        Font font = label->LabelFont();
        // The design size is kept in the Tag, so that sizes do not drift.
        if (label->Tag.empty()) label->Tag = std::to_string(font.Size);
        font.Size = static_cast<float>(Val(label->Tag)) * ratio;
        label->SetFont(font);
    }
    for (ListView* list : {&main.ui.lvwX1, &main.ui.lvwX2}) {
        Font font = list->ListFont();
        font.Size = MaxOf(ratio * ListSize, SmallestListSize);
        list->SetFont(font);
    }
}

void FontSizing::SetRtbFontSize(RichTextBox& rtb, std::int16_t& intFontSize) {
    SetTagSize(rtb, intFontSize);
    const RichTextBox::Update gathered(rtb);
    rtb.SetSelStart(0);
    rtb.SetSelLength(static_cast<std::int32_t>(rtb.Text().size()));
    // A selection of mixed sizes takes the new size throughout.
    rtb.SetSelFontSize(3);
    rtb.SetSelFontSize(intFontSize);
    rtb.SetSelLength(0);
}

}  // namespace larder
