#include "edit/PictureAssignment.h"

#include <utility>

#include "app/frmMain.h"
#include "edit/frmAddRecipe.h"
#include "layout/Util.h"
#include "platform/Text.h"

namespace larder {

namespace {

// File must exist, path must exist, no change of directory, explorer style, long names, the box for
// reading only ticked.
constexpr std::uint32_t DialogFlags = 2627593;
constexpr std::int16_t CameraIcon = 2;

std::string LowerCase(std::string text) {
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c | 0x20);
    }
    return text;
}

std::string LastFour(const std::string& fileName) {
    return LowerCase(fileName.substr(fileName.size() < 4 ? 0 : fileName.size() - 4));
}

}  // namespace

// While the recipe is being saved, with the picture that it has, the buttons do nothing.
void PictureAssignment::Connect() {
    form_.ibAssignPicture.OnClick = [this] {
        if (!main.editor.Busy()) AssignPicture();
    };
    form_.ibRemovePicture.OnClick = [this] {
        if (!main.editor.Busy()) RemovePicture();
    };
}

void PictureAssignment::Reset() {
    strChosenFile.clear();
    ShowPreview("");
    SetNewPictureFileName("");
}

void PictureAssignment::SetNewPictureFileName(const std::string& file) {
    strNewPictureFileName = file;
    const bool none = file.empty();
    form_.ibAssignPicture.SetCaption(none ? "Assign Picture" : "Change Picture");
    form_.ibAssignPicture.SetToolTipText(none ? "Assign a picture to this recipe"
                                              : "Change assigned picture");
    form_.ibRemovePicture.SetVisible(!none);
    booPictureChanged = true;
}

void PictureAssignment::ShowPreview(const std::string& strFile) {
    Image& image = form_.imgPicPreview;
    const Picture picture =
        strFile.empty() ? Picture() : Picture::FromFile(main.objFSO.Native(strFile));
    image.SetStretch(false);
    image.SetPicture(picture);
    image.SetStretch(true);
    PlacePreview();
}

void PictureAssignment::PlacePreview() {
    const bool shown = !form_.imgPicPreview.Shown().IsEmpty();
    form_.imgNoPicture.SetVisible(!shown);
    form_.imgPicPreview.SetVisible(shown);
    FitIntoFrame(shown ? form_.imgPicPreview : form_.imgNoPicture);
}

void PictureAssignment::FitIntoFrame(Image& image) {
    const Rectangle& frame = form_.shpPic;
    auto height = static_cast<std::int32_t>(image.Shown().PixelHeight() * TwipsPerPixel);
    auto width = static_cast<std::int32_t>(image.Shown().PixelWidth() * TwipsPerPixel);
    std::int32_t left = 0;
    std::int32_t top = 0;
    FitRectangle(static_cast<std::int32_t>(frame.Height), static_cast<std::int32_t>(frame.Width),
                 height, width, static_cast<std::int32_t>(frame.Left),
                 static_cast<std::int32_t>(frame.Top), left, top);
    image.Move({static_cast<float>(left), static_cast<float>(top), static_cast<float>(width),
                static_cast<float>(height)});
}

void PictureAssignment::AssignPicture() {
    try {
        while (!AskAndTake()) {
            main.dialogs.MessageBox("Invalid file type. Please try another file.",
                                    Dialogs::Buttons::Ok, Dialogs::Icon::Exclamation,
                                    "Tidewell Larder");
        }
    } catch (const Failure& failure) {
        const std::string file = std::exchange(main.cdgDialogBox.FileName, {});
        if (failure.Number != failure::DialogCancelled) TellNotShown(file, failure);
    }
}

// False for a file that is no picture by its name.
bool PictureAssignment::AskAndTake() {
    main.SoundClick();
    if (!form_.imgPicPreview.Shown().IsEmpty()) {
        const auto answer = main.dialogs.MessageBox(
            "The Recipe already has a pictue assigned. Do you want to overwrite it?",
            Dialogs::Buttons::YesNo, Dialogs::Icon::Question, "Tidewell Larder");
        if (answer != Dialogs::Answer::Yes) return true;
    }
    CommonDialog& dialog = main.cdgDialogBox;
    dialog.CancelError = true;
    dialog.Flags = DialogFlags;
    dialog.Filter = "Pictures (*.bmp;*.jpg;*.gif)|*.bmp;*.jpg;*.gif";
    dialog.ShowOpen();
    const std::string ending = LastFour(main.objFSO.Native(dialog.FileName));
    if (ending != ".bmp" && ending != ".jpg" && ending != ".gif") return false;
    ShowPreview(dialog.FileName);
    strChosenFile = dialog.FileName;
    SetNewPictureFileName(FileOf(form_.lngRecipeNum, ending));
    return true;
}

std::string PictureAssignment::FileOf(std::int32_t recipeNum, const std::string& ending) const {
    return main.paths.strPath + "Food Photos\\" + std::to_string(recipeNum) + ending;
}

void PictureAssignment::TellNotShown(const std::string& file, const Failure& failure) {
    const std::string path = main.objFSO.Native(file);
    const std::string name = FromUtf8(path.substr(path.rfind('/') + 1));
    main.dialogs.MessageBox("The picture can't be shown.\n" + name + "\n" + failure.Description,
                            Dialogs::Buttons::Ok, Dialogs::Icon::Exclamation, "Tidewell Larder");
}

void PictureAssignment::RemovePicture() {
    main.SoundClick();
    const auto answer = main.dialogs.MessageBox(
        "Are you sure you want to remove picture from this recipe?", Dialogs::Buttons::YesNo,
        Dialogs::Icon::Question, "Tidewell Larder");
    if (answer != Dialogs::Answer::Yes) return;
    main.cdgDialogBox.FileName.clear();
    strChosenFile.clear();
    SetNewPictureFileName("");
    ShowPreview("");
}

void PictureAssignment::Store(std::int32_t recipeNum, bool isNew) {
    if (isNew && main.pictures.HasPicture(std::to_string(recipeNum))) {
        if (!strNewPictureFileName.empty()) TellNotCopied();
    } else if (strNewPictureFileName.empty()) {
        main.pictures.DeleteFiles(recipeNum, {});
        main.pictures.RemoveFromAllWithPicture(recipeNum);
    } else {
        // The number of a new recipe is known for certain only now.
        strNewPictureFileName = FileOf(recipeNum, LastFour(strNewPictureFileName));
        if (CopyChosen())
            main.pictures.DeleteFiles(recipeNum, {strNewPictureFileName, strChosenFile});
        main.pictures.AddToAllWithPicture(recipeNum);
    }
    UpdateLine(recipeNum);
    main.viewer.SetCurrentRecipe(recipeNum);
}

// True when the file chosen is the recipe's own now. It may have been that before.
bool PictureAssignment::CopyChosen() {
    if (main.objFSO.SameFile(strChosenFile, strNewPictureFileName)) return true;
    const int failed =
        Ignoring([this] { main.files.CopyFile(strChosenFile, strNewPictureFileName); });
    if (failed != 0) TellNotCopied();
    return failed == 0;
}

void PictureAssignment::TellNotCopied() {
    main.dialogs.MessageBox("Could not copy the picture.", Dialogs::Buttons::Ok,
                            Dialogs::Icon::Exclamation, "Tidewell Larder");
}

// The recipe's line and its entry in the list on show, and the selected line, which may have become
// another one since the editor was opened.
void PictureAssignment::UpdateLine(std::int32_t recipeNum) {
    const auto update = [this](const std::string& number) {
        const bool has = !main.pictures.CheckForAPicture(number).empty();
        VirtualListItem* entry = main.VList[1].PeekKey("k" + number);
        if (entry != nullptr) {
            entry->Icon = has ? CameraIcon : std::int16_t{0};
            entry->Bold = has;
        }
        for (int line = 1; line <= main.ui.lvwX2.Count(); ++line) {
            ListItem& item = main.ui.lvwX2.Item(line);
            if (item.Tag != number) continue;
            item.SetSmallIcon(has ? CameraIcon : 0);
            if (entry != nullptr) item.SetSubForeColor(2, main.recipes.TitleColor(*entry));
        }
        if (!has) main.lists.RefreshLvwX(2);
    };
    const std::string own = std::to_string(recipeNum);
    const ListItem* selected = main.ui.lvwX2.SelectedItem();
    if (selected != nullptr && selected->Tag != own) update(std::string(selected->Tag));
    update(own);
}

}  // namespace larder
