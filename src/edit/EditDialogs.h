#pragma once

#include <memory>

namespace larder {

class frmMain;
class frmProgress;

// The two small dialogs: what can be done with recipes, and how far a long task has come.
class EditDialogs {
  public:
    explicit EditDialogs(frmMain& hub);
    ~EditDialogs();

    // Asks what to do with the current recipe, and does it when the dialog is gone. Nothing while a
    // recipe is being saved.
    void ShowAddChoice();
    // The progress dialog, made at the first call and hidden until ShowIt.
    frmProgress& Progress();

  private:
    frmMain& main;
    std::unique_ptr<frmProgress> progress_;
};

}  // namespace larder
