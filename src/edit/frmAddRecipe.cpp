#include "edit/frmAddRecipe.h"

#include <array>

#include "app/frmMain.h"
#include "edit/TitleLine.h"
#include "platform/Keys.h"
#include "platform/Text.h"

namespace larder {

namespace {

constexpr std::int32_t TitleColor = 293286;      // the brown of recipe titles
constexpr std::int32_t CaptionColor = 0xE4F4FB;  // #FBF4E4, paper

constexpr char TitleTemplate[] =
    "{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1033{\\fonttbl{\\f0\\froman\\fprq2\\fcharset0 Times "
    "New Roman;}{\\f1\\fswiss\\fcharset0 Arial;}}\\viewkind4\\uc1\\pard\\ul\\b\\f0\\fs30 TYPE THE "
    "TITLE HERE\\ulnone\\b0\\f1\\fs20}";

constexpr char RecipeTemplate[] =
    "{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1033{\\fonttbl{\\f0\\froman\\fprq2\\fcharset0 Times "
    "New Roman;}{\\f1\\fswiss\\fcharset0 Arial;}}\\viewkind4\\uc1\\pard\\f0\\fs30 COOKING TIME:  x "
    "Minutes\\par \\par \\i x amt. first ingredient\\par y amt. second ingredient\\par z amt. "
    "third ingredient\\par Add any additional ingredients for your recipe\\par \\par \\i0 Type the "
    "recipe instructions here ...\\par \\par SERVINGS PER RECIPE:  x \\f1\\fs20\\par }   ";

struct ButtonLook {
    ImageButton& button;
    const char* art;  // below art/editor, with -pressed beside it
    const char* caption;
    const char* toolTip;
    const char* accessibleName;  // empty: the caption, or else the tool tip
};

}  // namespace

frmAddRecipe::frmAddRecipe(frmMain& hub)
    : tools(hub, *this), picture(hub, *this), window("frmAddRecipe", &hub.ui.window), main(hub) {
    window.SetMinimumClientSize(640 * TwipsPerPixel, 460 * TwipsPerPixel);
    DressControls();
    DressButtons();
    BuildMenus();
    Connect();
}

void frmAddRecipe::DressControls() {
    imgGround.SetPicture(Picture::FromArt("editor/ground"));
    imgSheet.SetPicture(Picture::FromArt("editor/sheet"));
    imgTitleRule.SetPicture(Picture::FromArt("editor/title-rule"));
    imgTitleHide.SetPicture(Picture::FromArt("editor/title-hide"));
    imgFrame.SetPicture(Picture::FromArt("editor/frame"));
    // In the drawings' own pixels: their borders, and the fish between two rules, keep their size.
    imgSheet.SetElastic({{{30, 594}}, {{30, 516}}});
    imgTitleRule.SetElastic({{{10, 240}, {308, 538}}, {}});
    imgTitleHide.SetElastic({{{40, 205}, {343, 508}}, {}});
    imgFrame.SetElastic({{{14, 190}}, {{14, 152}}});
    imgNoPicture.SetPicture(Picture::FromArt("editor/no-picture"));
    imgPicPreview.SetAccessibleName("Picture of the recipe");
    rtbTitle.SetAccessibleName("Title");
    rtbRecipe.SetAccessibleName("Recipe");
    rtbRecipe.SetScrollBar(true);
    rtbTitle.SetTransparent(true);
    rtbRecipe.SetTransparent(true);
}

void frmAddRecipe::DressButtons() {
    const std::array<ButtonLook, 13> table{{
        {ibPaste, "paste", "", "Paste", ""},
        {ibBold, "bold", "", "Bold", ""},
        {ibItalic, "italic", "", "Italic", ""},
        {ibUnderline, "underline", "", "Underline", ""},
        {ibLeft, "left", "", "Left Align", ""},
        {ibCenter, "center", "", "Center", ""},
        {ibRight, "right", "", "Right Align", ""},
        {ibSpell, "spell", "", "Spell Checker", ""},
        {ibPrint, "print", "", "Print", ""},
        {ibAssignPicture, "picture", "Assign Picture", "Assign a picture to this recipe", ""},
        {ibRemovePicture, "remove-picture", "Remove Picture", "", ""},
        {ibAdd, "add", "Add", "Add the recipe to the database", ""},
        {ibCancel, "cancel", "Cancel", "", ""},
    }};
    for (const ButtonLook& row : table) {
        const std::string art = std::string("editor/") + row.art;
        ImageButton::Design design;
        design.Image = Picture::FromArt(art);
        design.ImagePressed = Picture::FromArt(art + "-pressed");
        design.Caption = row.caption;
        design.CaptionFont = {Font::Family::Sans, 11.5F, true, false};
        design.ForColor = CaptionColor;
        if (&row.button == &ibSpell || &row.button == &ibPrint) {
            design.ImageDisabled = Picture::FromArt(art + "-disabled");
        }
        row.button.SetDesign(design);
        row.button.SetToolTipText(row.toolTip);
    }
    // A tool works on what is selected in a box, and the cook goes on typing there.
    for (ImageButton* tool : {&ibPaste, &ibBold, &ibItalic, &ibUnderline, &ibLeft, &ibCenter,
                              &ibRight, &ibSpell, &ibPrint}) {
        tool->SetFocusOnClick(false);
    }
    ibSpell.SetButtonState(ImageButton::Disabled);
    ibPrint.SetButtonState(ImageButton::Disabled);
}

void frmAddRecipe::BuildMenus() {
    mnuBold.Shortcut = "Ctrl+B";
    mnuUnderline.Shortcut = "Ctrl+U";
    mnuItalic.Shortcut = "Ctrl+I";
    mnuSpellCheck.Enabled = false;
    mnuBar.Add("mnuRecipe", "&Recipe", {&mnuAdd, &mnuSeparator1, &mnuCancel});
    mnuBar.Add("mnuEdit", "&Edit",
               {&mnuCopy, &mnuCut, &mnuPaste, &mnuSeparator2, &mnuBold, &mnuUnderline, &mnuItalic,
                &mnuSeparator3, &mnuSpellCheck});
}

void frmAddRecipe::Connect() {
    window.OnResize = [this] { ResizeIt(); };
    window.OnQueryUnload = [this] {
        if (!main.editor.Busy() && main.editor.MayDropWork()) Unload();
        return false;
    };
    ibAdd.OnClick = mnuAdd.OnClick = [this] { main.editor.ClickAdd(); };
    ibCancel.OnClick = mnuCancel.OnClick = [this] { Cancel(); };
    ibSpell.OnClick = ibPrint.OnClick = [this] { main.SoundClick(); };
    tools.Connect();
    picture.Connect();
    rtbTitle.OnChange = [this] { typed_ = true; };
    rtbRecipe.OnChange = [this] { typed_ = booRecipeChanged = true; };
    ConnectKeys();
}

// A title is one line, so Enter and Tab go on to the recipe. In the recipe both are text; Shift+Tab
// and Ctrl+Tab lead out of it.
void frmAddRecipe::ConnectKeys() {
    rtbTitle.OnKeyDown = [this](int& KeyCode, int Shift) {
        if (KeyCode != key::Enter && KeyCode != key::Tab) return;
        const bool back = KeyCode == key::Tab && (Shift & shift::Shift) != 0;
        KeyCode = key::None;
        Ignoring([&] { back ? ibCancel.SetFocus() : rtbRecipe.SetFocus(); });
    };
    rtbRecipe.OnKeyDown = [this](int& KeyCode, int Shift) {
        if (KeyCode != key::Tab || (Shift & (shift::Shift | shift::Ctrl)) == 0) return;
        const bool back = (Shift & shift::Shift) != 0;
        KeyCode = key::None;
        Ignoring([&] {
            if (!back) return ibPaste.SetFocus();
            rtbTitle.Visible() ? rtbTitle.SetFocus() : ibCancel.SetFocus();
        });
    };
}

void frmAddRecipe::Load() {
    if (loaded_) return;
    loaded_ = true;
    picture.booPictureChanged = false;
    rtbActive = &rtbTitle;
    if (lngRecipeNum == 0) PrepareNew();
    FitToScreen();
    ResizeIt();
    CenterIt();
    tools.UpdateToolsBar();
    booRecipeChanged = typed_ = false;
}

void frmAddRecipe::PrepareNew() {
    lngRecipeNum = main.store.TotalNumRecords + 1;
    booNewRecipe = true;
    window.SetCaption("Add Recipe");
    ibAdd.SetCaption("Add");
    ibAdd.SetToolTipText("Add the recipe to the database");
    ShowTitleBox(true);
    picture.Reset();
    rtbTitle.SetTextRTF(TitleTemplate);
    rtbRecipe.SetTextRTF(RecipeTemplate);
    rtbTitle.SetSelStart(0);
    rtbTitle.SetSelLength(static_cast<std::int32_t>(rtbTitle.Text().size()));
    rtbTitle.SetSelColor(TitleColor);
    rtbTitle.SetSelLength(0);
}

// Without it the title is the first line of the recipe.
void frmAddRecipe::ShowTitleBox(bool shown) {
    imgTitleHide.SetVisible(!shown);
    imgTitleRule.SetVisible(shown);
    rtbTitle.SetVisible(shown);
}

void frmAddRecipe::TakeRecipe(std::int32_t RecipeNum, const std::string& strRTF) {
    rtbRecipe.SetTextRTF(strRTF);
    main.viewer.FormatFirstLine(rtbRecipe);
    const std::string file = main.pictures.CheckForAPicture(std::to_string(RecipeNum));
    picture.SetNewPictureFileName(file);
    Ignoring([&] { picture.ShowPreview(file); });
    picture.booPictureChanged = false;
    window.SetCaption("Edit Recipe #" + std::to_string(RecipeNum));
    ibAdd.SetCaption("&Update");
    ibAdd.SetToolTipText("Click to Update the recipe");
    ShowTitleBox(false);
    rtbActive = &rtbRecipe;
    lngRecipeNum = RecipeNum;  // from here on a save would replace the recipe
    booNewRecipe = false;
}

void frmAddRecipe::Show() {
    window.Show();
    Ignoring([this] { (rtbTitle.Visible() ? rtbTitle : rtbRecipe).SetFocus(); });
    booRecipeChanged = typed_ = false;
}

void frmAddRecipe::Cancel() {
    if (main.editor.Busy()) return;
    main.SoundClick();
    Unload();
}

void frmAddRecipe::Unload() {
    if (!loaded_) return;
    Discard();
    main.ui.window.BringToFront();
}

void frmAddRecipe::Discard() {
    Empty();
    window.Hide();
}

void frmAddRecipe::Empty() {
    rtbTitle.SetTextRTF("");
    rtbRecipe.SetTextRTF("");
    picture.ShowPreview("");
    lngRecipeNum = 0;
    loaded_ = false;
}

std::string frmAddRecipe::Title() const {
    const std::string text = rtbTitle.Text();
    const TitleLine title = TitleLineOf(text);
    return text.substr(title.From, title.Length);
}

std::string frmAddRecipe::RecipeRTF() {
    const std::string title = rtbTitle.Visible() ? TitleRTF() : std::string();
    if (title.empty()) return rtbRecipe.TextRTF();
    // Put together in a work box: what the user has typed stays as it is, with its undo, should the
    // recipe not be stored.
    RichTextBox& work = main.ui.rtbT;
    work.SetTextRTF(rtbRecipe.TextRTF());
    work.SetSelStart(0);
    work.SetSelRTF(title);
    const std::int32_t length = work.SelStart();
    work.SetSelText("\r\r");
    // In a paragraph of its own now, the title brings its alignment too.
    work.SetSelStart(0);
    work.SetSelLength(length);
    work.SetSelRTF(title);
    std::string rtf = work.TextRTF();
    work.SetTextRTF("");  // a long text would be sized with the window again and again
    return rtf;
}

std::string frmAddRecipe::TitleRTF() {
    const TitleLine title = TitleLineOf(rtbTitle.Text());
    if (title.Length == 0) return {};
    const std::int32_t start = rtbTitle.SelStart();
    const std::int32_t length = rtbTitle.SelLength();
    rtbTitle.SetSelStart(static_cast<std::int32_t>(title.From));
    rtbTitle.SetSelLength(static_cast<std::int32_t>(title.Length));
    const std::string rtf = rtbTitle.SelRTF();
    rtbTitle.SetSelStart(start);
    rtbTitle.SetSelLength(length);
    return rtf;
}

void frmAddRecipe::AskForTitle(RichTextBox& box) {
    main.editor.SetMousePointer(0);
    main.ui.window.SetMousePointer(0);
    main.dialogs.MessageBox("Please, enter recipe title.", Dialogs::Buttons::Ok,
                            Dialogs::Icon::Exclamation, "Tidewell Larder");
    Ignoring([&] { box.SetFocus(); });
}

bool frmAddRecipe::HoldsWork() const {
    const bool chosen =
        booNewRecipe ? !picture.NewPictureFileName().empty() : picture.booPictureChanged;
    return window.Visible() && (typed_ || chosen);
}

}  // namespace larder
