#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace larder {

class Failure;

// The program as the system started it: its event loop, command line and start folder. One object,
// made first in main and outliving every control.
class Application {
  public:
    Application(int& argc, char** argv);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    // The arguments behind the program's name, joined by blanks.
    std::string CommandLine() const;
    // Native path of the folder that the program was started in.
    std::string CurrentFolder() const;
    // As if the program had been started anew, in this folder with these arguments; Quit has not
    // been called then. For tests, which have one application and start many times.
    void StartAgain(const std::string& currentFolder, const std::string& commandLine);

    // Runs until Quit, or until the last window is closed; returns the status given to Quit. A Quit
    // that came before makes it return at once.
    int Run();
    void Quit(int status = 0);
    // Lets pending events run, as long loops do between their steps.
    static void DoEvents();
    static void Beep();

    // Takes a failure that a handler let through; without it, such a failure is written to the
    // standard error stream. The program runs on.
    std::function<void(const Failure&)> OnFailure;
    static void ReportFailure(const Failure& failure);

  private:
    class Native;
    std::unique_ptr<Native> native_;
    std::string commandLine_;
    std::string currentFolder_;
    std::optional<int> status_;  // once Quit has been called
};

}  // namespace larder
