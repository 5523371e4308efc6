#include <benchmark/benchmark.h>

#include <QApplication>
#include <QTest>
#include <algorithm>
#include <chrono>

#include "BenchBook.h"
#include "app/frmMain.h"
#include "edit/frmAddRecipe.h"

// What a cook waits for in the recipe editor, in the real windows on Qt's offscreen platform, in a
// book with 5,000 own recipes: its opening, and each key typed into a recipe of 20 KB. Times are to
// the end of the painting that follows.
namespace {

using larder::bench::TheBook;
using Clock = std::chrono::steady_clock;

double Seconds(Clock::duration time) {
    return std::chrono::duration<double>(time).count();
}

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
        TheBook().window->editor.ShowNew();
        larder::Application::DoEvents();
        state.SetIterationTime(Seconds(Clock::now() - start));
    }
    TheBook().window->editor.Unload();
}
BENCHMARK(OpenFirst)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(1);

void OpenOnARecipe(benchmark::State& state) {
    larder::frmMain& main = *TheBook().window;
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
    larder::frmMain& main = *TheBook().window;
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
    return larder::bench::RunOnBook(argc, argv, {.Stock = 2000, .Own = 5000, .BodyBytes = 2000});
}
