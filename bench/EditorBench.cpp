#include <benchmark/benchmark.h>
#include <stdlib.h>
#include <unistd.h>

#include <QApplication>
#include <QTest>
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>

#include "LargeFolder.h"
#include "app/frmMain.h"
#include "edit/frmAddRecipe.h"

// What a cook waits for in the recipe editor, in the real windows on Qt's offscreen platform, in a
// book with 5,000 own recipes: its opening, and each key typed into a recipe of 20 KB. Times are to
// the end of the painting that follows.
namespace {

using Clock = std::chrono::steady_clock;

double Seconds(Clock::duration time) {
    return std::chrono::duration<double>(time).count();
}

class NoDialogs : public larder::Dialogs {
  public:
    Answer MessageBox(const std::string& text, Buttons, Icon, const std::string&) override {
        std::fprintf(stderr, "unexpected message: %s\n", text.c_str());
        std::abort();
    }
    std::optional<std::string> OpenFile(const FileQuestion&) override { std::abort(); }
};

struct Book {
    NoDialogs dialogs;
    larder::SystemDrives drives;
    std::unique_ptr<larder::frmMain> window;
};

Book* book = nullptr;

std::string LongRecipe() {
    std::string rtf = "{\\rtf1\\ansi\\b A long recipe\\b0\\par ";
    while (rtf.size() < 20'000) {
        rtf +=
            "Butter a shallow dish, lay the \\i fillets\\i0  in it side by side, pour the cream "
            "over them and bake until the \\b flesh\\b0  flakes.\\par ";
    }
    return rtf + "}";
}

// The first time makes the window and draws its art.
void OpenFirst(benchmark::State& state) {
    for (auto _ : state) {
        const auto start = Clock::now();
        book->window->editor.ShowNew();
        larder::Application::DoEvents();
        state.SetIterationTime(Seconds(Clock::now() - start));
    }
    book->window->editor.Unload();
}
BENCHMARK(OpenFirst)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(1);

void OpenOnARecipe(benchmark::State& state) {
    larder::frmMain& main = *book->window;
    const std::int32_t number = main.store.TotalNumRecords;
    for (auto _ : state) {
        const auto start = Clock::now();
        main.editor.LoadRecipeToUpdate(number);
        larder::Application::DoEvents();
        state.SetIterationTime(Seconds(Clock::now() - start));
        main.editor.Unload();
        larder::Application::DoEvents();
    }
}
BENCHMARK(OpenOnARecipe)->UseManualTime()->Unit(benchmark::kMillisecond);

// `key` typed in the middle of the text. The longest time is what a dropped frame would show in.
void Type(benchmark::State& state, char key) {
    larder::frmMain& main = *book->window;
    main.editor.ShowNew();
    larder::RichTextBox& box = main.editor.Form().rtbRecipe;
    box.SetTextRTF(LongRecipe());
    box.SetFocus();
    box.SetSelStart(static_cast<std::int32_t>(box.Text().size()) / 2);
    larder::Application::DoEvents();
    double longest = 0;
    for (auto _ : state) {
        const auto start = Clock::now();
        QTest::keyClick(box.Native(), key);
        larder::Application::DoEvents();
        const double time = Seconds(Clock::now() - start);
        longest = std::max(longest, time);
        state.SetIterationTime(time);
    }
    state.counters["longest_ms"] = longest * 1000;
    main.editor.Unload();
}
BENCHMARK_CAPTURE(Type, Letters, 'x')
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1000);
BENCHMARK_CAPTURE(Type, LineEnds, '\r')
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(200);

}  // namespace

int main(int argc, char** argv) {
#ifndef NDEBUG
    std::fputs("A debug build measures nothing: use the preset `check`.\n", stderr);
    return 1;
#endif
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("larder-bench-" + std::to_string(getpid()));
    larder::bench::WriteLargeFolder(folder, {.Stock = 2000, .Own = 5000, .BodyBytes = 2000});
    std::filesystem::current_path(folder);
    int status = 1;
    {
        larder::Application application(argc, argv);
        Book theBook;
        book = &theBook;
        theBook.window =
            std::make_unique<larder::frmMain>(application, theBook.dialogs, theBook.drives);
        if (theBook.window->Load()) {
            larder::Application::DoEvents();
            benchmark::Initialize(&argc, argv);
            benchmark::RunSpecifiedBenchmarks();
            status = 0;
        }
    }
    std::filesystem::current_path("/");
    std::filesystem::remove_all(folder);
    return status;
}
