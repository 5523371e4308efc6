#pragma once

#include <cstdint>
#include <string>

#include "platform/Image.h"
#include "platform/Label.h"
#include "platform/ProgressBar.h"
#include "platform/Window.h"

namespace larder {

class frmMain;

// How much of a long task is done, in percent, in a window before all others. Every change is on
// the screen when its call returns, so that the dialog stays painted while the task lets no events
// run. Closed, by the task or by the user, it begins anew with the next ShowIt.
class frmProgress {
  public:
    explicit frmProgress(frmMain& hub);

    // Puts the dialog on the screen under the name of the task.
    void ShowIt(const std::string& strDescription);
    const std::string& Description() const { return description_; }
    void SetDescription(const std::string& description);
    // The percentage. A value that is there already costs nothing; one above 100 closes the dialog.
    std::int16_t Value() const;
    void SetValue(std::int16_t percent);
    void Done();
    void CenterIt();

    Window window;
    Image imgGround{window, "imgProgressGround"};
    Label lblDone{window, "lblDone"};
    ProgressBar ProgressBar1{window, "ProgressBar1"};

  private:
    void Load();

    std::string description_;
};

}  // namespace larder
