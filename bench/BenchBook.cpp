#include "BenchBook.h"

#include <benchmark/benchmark.h>
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>

namespace larder::bench {

namespace {

Book* book = nullptr;

}  // namespace

bool CanMeasure() {
#ifdef NDEBUG
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    return true;
#else
    std::fputs("A debug build measures nothing: use the preset `check`.\n", stderr);
    return false;
#endif
}

int RunOnBook(int argc, char** argv, const Size& size) {
    if (!CanMeasure()) return 1;
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("larder-bench-" + std::to_string(getpid()));
    WriteLargeFolder(folder, size);
    std::filesystem::current_path(folder);
    int status = 1;
    {
        Application application(argc, argv);
        Book opened;
        book = &opened;
        opened.window = std::make_unique<frmMain>(application, opened.dialogs, opened.drives);
        if (opened.window->Load()) {
            Application::DoEvents();
            benchmark::Initialize(&argc, argv);
            benchmark::RunSpecifiedBenchmarks();
            status = 0;
        }
        book = nullptr;
    }
    std::filesystem::current_path("/");
    std::filesystem::remove_all(folder);
    return status;
}

Book& TheBook() {
    return *book;
}

}  // namespace larder::bench
