#pragma once

#include <cstdint>
#include <string>

namespace larder {

class Dialogs;
class Paths;

// The window's dialog for choosing a file. Who uses it sets what it asks for, shows it, and takes
// FileName before anybody else uses it again.
class CommonDialog {
  public:
    // Both outlive it.
    CommonDialog(Dialogs& dialogs, Paths& paths) : dialogs_(dialogs), paths_(paths) {}

    // The file chosen last, in the program's own form (see Paths); the next question begins in its
    // folder.
    std::string FileName;
    std::string Filter;       // see Dialogs::FileQuestion
    std::uint32_t Flags = 0;  // only files that exist can be chosen, whatever it says
    bool CancelError = false;

    // Asks, and keeps the answer in FileName. When the user cancels, FileName stays; with
    // CancelError that is failure 32755.
    void ShowOpen();

  private:
    Dialogs& dialogs_;
    Paths& paths_;
};

}  // namespace larder
