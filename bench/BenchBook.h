#pragma once

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

#include "LargeFolder.h"
#include "app/frmMain.h"

namespace larder::bench {

// A measurement that asks something has gone wrong.
class NoDialogs : public Dialogs {
  public:
    Answer MessageBox(const std::string& text, Buttons, Icon, const std::string&) override {
        std::fprintf(stderr, "unexpected message: %s\n", text.c_str());
        std::abort();
    }
    std::optional<std::string> OpenFile(const FileQuestion&) override { std::abort(); }
};

// A cook-book open in its real window.
struct Book {
    NoDialogs dialogs;
    SystemDrives drives;
    std::unique_ptr<frmMain> window;
};

// To be asked first: false, after saying why, in a build that measures nothing. Else what follows
// runs on Qt's offscreen platform.
bool CanMeasure();

// Opens a made-up book of the given size and runs the registered benchmarks on it. Returns what
// main() is to return.
int RunOnBook(int argc, char** argv, const Size& size);

// The book that RunOnBook has opened.
Book& TheBook();

}  // namespace larder::bench
