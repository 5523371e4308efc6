#include "browse/RecipeViewer.h"

#include "app/frmMain.h"
#include "platform/Text.h"
#include "search/SearchText.h"

namespace larder {

namespace {

constexpr std::int32_t TitleColor = 293286;        // brown, #A67904
constexpr std::int32_t FoundWordColor = 0xFF0000;  // blue
constexpr std::int16_t DefaultFontSize = 12;
constexpr float TitleScale = 1.3F;

}  // namespace

void RecipeViewer::SetCurrentRecipe(std::int32_t vNewValue) {
    if (vNewValue > main.store.TotalNumRecords || vNewValue < -1) {
        throw Failure(failure::BadRecordNumber, "CurrentRecipe", "Bad Recipe Number");
    }
    LeaveTypedText();
    lngCurrentRecipe = vNewValue;
    if (vNewValue < 1) {
        main.ui.lblRecipeNum.SetCaption("");
        main.ui.lblRecipeNum.SetToolTipText("");
        main.screen.DimRecipeButton();
        main.screen.DimPhotoButton();
        booRecipeHasPicture = false;
        return;
    }
    const std::string number = std::to_string(vNewValue);
    main.ui.lblRecipeNum.SetCaption("# " + number);
    main.ui.lblRecipeNum.SetToolTipText("#" + number + " is the current recipe.");
    booRecipeHasPicture = main.pictures.ShowsPicture(vNewValue);
    if (booRecipeHasPicture) {
        main.screen.NormPhotoButton();
    } else {
        main.screen.DimPhotoButton();
    }
    main.screen.NormRecipeButton();
}

// What was typed in the viewer belongs to the recipe that is current until now. While a save is
// under way the viewer stays locked: what the save shows at its end would replace what was typed.
void RecipeViewer::LeaveTypedText() {
    if (!main.booEditMode) return;
    if (main.editor.Busy()) return main.editor.NoteShown();
    if (!main.editor.SaveInPlaceEdit()) {
        throw Failure(failure::PathAccess, "CurrentRecipe",
                      "The recipe in the viewer is not saved");
    }
    main.editor.SetInPlaceEdit(true);
}

bool RecipeViewer::ShowRecipe(std::int32_t RecipeNum) {
    RichTextBox& rtb = main.ui.rtbSee;
    if (Ignoring([this] { LeaveTypedText(); }) != 0) return false;
    try {
        LeaveOtherModes();
        main.layout.HideRTB(rtb);
        if (RecipeNum != -1) SetCurrentRecipe(RecipeNum);
        {
            RichTextBox::Update gathered(rtb);
            RecipeInBox = 0;
            FillText(rtb);
            FormatFirstLine(rtb);
            ColorSearchWords(rtb);
            rtb.SetSelStart(0);
        }
        main.layout.PlaceRtbRes();
        main.ui.imgWaterMark3.Refresh();
        main.screen.DimRecipeButton();
        if (booRecipeHasPicture) main.screen.NormPhotoButton();
        rtb.SetVisible(true);
        Modified = false;  // filling the box has fired its Change event
        return true;
    } catch (const Failure&) {
        // The text of the recipe before must not come back with the next layout of the window.
        rtb.SetVisible(false);
        Modified = false;
        OfferBothViews();
        return false;
    }
}

// While neither the text nor the picture is on the screen.
void RecipeViewer::OfferBothViews() {
    if (lngCurrentRecipe < 1) return;
    main.screen.NormRecipeButton();
    if (booRecipeHasPicture) main.screen.NormPhotoButton();
}

void RecipeViewer::LeaveOtherModes() {
    main.screen.SetEncyclopediaMode(false);
    main.ui.frPic.SetVisible(false);
    main.ui.ibELeft.SetVisible(false);
    main.ui.ibERight.SetVisible(false);
}

void RecipeViewer::FillText(RichTextBox& rtb) {
    const std::string strRTF = main.store.GetRecipeRTF(lngCurrentRecipe);
    rtb.SetTextRTF(strRTF);
    const FoundTitle title = main.store.LookUpTitle(lngCurrentRecipe);
    // What is typed in the place of a text that could not be read would replace it; what is typed
    // into the notice below would be stored nowhere.
    const bool opens = !main.booEditMode || RecipeEditor::IsReadable(title.Is, strRTF);
    RecipeInBox = opens ? lngCurrentRecipe : 0;
    if (!opens) main.editor.SetInPlaceEdit(false);
    const std::string number = std::to_string(lngCurrentRecipe);
    if (title.Is == TitleIs::Gone) {
        rtb.SetText("The recipe " + number +
                    " is unavailable because it was permanently deleted from the database.");
    } else if (title.Text.empty() && strRTF.empty()) {
        rtb.SetText("Couldn't read recipe #" + number);
    }
    if (main.booEditMode) return;
    // A Tag that is no number leaves the sizes as they are in the text.
    Ignoring([&] {
        std::int16_t size = rtb.Tag.empty() ? DefaultFontSize : ToInteger(rtb.Tag);
        main.fonts.SetRtbFontSize(rtb, size);
    });
}

void RecipeViewer::FormatFirstLine(RichTextBox& rtb) {
    rtb.SetSelStart(0);
    rtb.Span("\r", true, true);
    Ignoring([&] { rtb.SetSelFontSize(static_cast<float>(ToDouble(rtb.Tag)) * TitleScale); });
    rtb.SetSelColor(TitleColor);
    rtb.SetSelStart(0);
}

void RecipeViewer::ColorSearchWords(RichTextBox& rtb) {
    std::string words = main.strLastSearchWords;
    ReplaceDelimiters(words);
    if (words.empty() || words == "ALL RECIPES" || words == "ALL RECIPES WITH PICTURES" ||
        main.booEditMode) {
        return;
    }
    const std::int32_t p = rtb.Find("\r", 1);  // the end of the title, which is not coloured
    if (p < 0) return;
    std::int32_t start = 1;
    YStrings tokens;
    for (std::string word = tokens.GetToken(words, start, " "); !word.empty();
         word = tokens.GetToken(words, start, " ")) {
        if (rtb.Find(word, p, -1, RichTextBox::WholeWord) != -1) rtb.SetSelColor(FoundWordColor);
        rtb.SetSelLength(0);
    }
}

void RecipeViewer::FlipMode() {
    if (!main.ui.frPic.Visible() || main.screen.EncyclopediaMode()) {
        main.pictureView.ShowCurRecipePicture();
    } else {
        ShowRecipe(-1);
    }
}

}  // namespace larder
