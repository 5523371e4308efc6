#include "app/frmMain.h"

#include "platform/Text.h"

namespace larder {

namespace {

// A question is up for as long as this lives.
class Asking {
  public:
    explicit Asking(int& questions) : questions_(questions) { ++questions_; }
    ~Asking() { --questions_; }
    Asking(const Asking&) = delete;
    Asking& operator=(const Asking&) = delete;

  private:
    int& questions_;
};

}  // namespace

frmMain::frmMain(Application& application, Dialogs& theDialogs, Drives& theDrives)
    : app(application),
      dialogs(theDialogs),
      drives(theDrives),
      store(files, paths, *this),
      VList{VirtualList(*this, intListTicket), VirtualList(*this, intListTicket)} {
    store.OnTotalRecipes = [this](std::int32_t total) {
        ui.lblTotal.SetCaption(std::to_string(total));
        const std::string said = std::to_string(total) + " recipes in the database";
        ui.lblTotal.SetToolTipText(said);
        ui.lblTotal.SetAccessibleName(said);  // a bare number tells nothing
    };
}

frmMain::~frmMain() = default;

bool frmMain::Load() {
    events.Connect();
    listInput.Connect();
    try {
        if (!startUp.Run()) return false;
    } catch (const Failure& f) {
        // A window without its content would look as if one could go on.
        ui.window.Hide();
        dialogs.MessageBox("Tidewell Larder can't start.\n" + f.Description, Dialogs::Buttons::Ok,
                           Dialogs::Icon::Critical, "Tidewell Larder");
        exitStatus_ = 1;
        return false;
    }
    return true;
}

void frmMain::Unload() {
    if (unloaded_) return;
    unloaded_ = true;
    editor.Unload();
    intListTicket.Next();                    // a fill that is under way ends
    Ignoring([this] { files.CloseAll(); });  // whatever fails, the program ends
    instance.OnSecondStart = nullptr;        // a new start waits for the end of this one
    app.Quit(exitStatus_);
}

void frmMain::LogLine(const std::string& strLine) {
    if (objLogFile.is_open()) objLogFile << strLine << "\r\n";
}

void frmMain::SoundClick() {
    // The folder that the program was started in holds the sound beside the Data folder.
    sound.Play(objFSO.Native(objFSO.Alias(app.CurrentFolder()) + "\\Click.wav"));
}

bool frmMain::HasPicture(const std::string& strRecipeNum) const {
    return pictures.HasPicture(strRecipeNum);
}

std::string frmMain::GetRecipeTitle(std::int32_t recipeNum) {
    return store.GetRecipeTitle(recipeNum);
}

bool frmMain::IsGone(std::int32_t recipeNum) {
    return store.LookUpTitle(recipeNum).Is == TitleIs::Gone;
}

bool frmMain::IsBlank(std::int32_t recipeNum) {
    return store.IsBlank(recipeNum);
}

void frmMain::ShowSame() {
    recipes.ShowRecipesIn_lvwX2("same", 0, false, true);
}

void frmMain::DecorateWait(bool start, const std::string& what) {
    recipes.DecorateWait(start, what);
}

void frmMain::ReportRecipesFound(const std::string& append) {
    recipes.ReportRecipesFound(append);
}

bool frmMain::AskOkCancel(const std::string& text) {
    if (unloaded_) return false;  // a fill that is just ending; nobody is there to answer
    Dialogs::Answer answer{};
    {
        const Asking asking(questions_);
        answer = dialogs.MessageBox(text, Dialogs::Buttons::OkCancel, Dialogs::Icon::Exclamation,
                                    "Tidewell Larder");
    }
    if (!unloaded_) layout.RefillPutOff();
    if (answer != Dialogs::Answer::Ok) return false;
    startUp.MapDiscs();
    return true;
}

}  // namespace larder
