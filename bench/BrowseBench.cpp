#include <benchmark/benchmark.h>

#include <QApplication>
#include <QEvent>
#include <QWidget>
#include <chrono>

#include "BenchBook.h"
#include "app/frmMain.h"

// What browsing a large cook-book costs, in the real window on Qt's offscreen platform: 20,000
// stock recipes and 500 own ones, warm files.
namespace {

using larder::bench::TheBook;
using Clock = std::chrono::steady_clock;

double Milliseconds(Clock::duration time) {
    return std::chrono::duration<double, std::milli>(time).count();
}

// Notes when a widget is painted for the first time after Arm.
class PaintWatch : public QObject {
  public:
    void Arm() { painted_ = {}; }
    Clock::time_point Painted() const { return painted_; }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint && painted_ == Clock::time_point{} && armed()) {
            painted_ = Clock::now();
        }
        return false;
    }
    std::function<bool()> armed = [] { return true; };

  private:
    Clock::time_point painted_;
};

void AllRecipes(benchmark::State& state) {
    larder::frmMain& main = *TheBook().window;
    std::uint64_t titles = 0;
    std::uint64_t opened = 0;
    for (auto _ : state) {
        main.categories.SimulateCategoryClick("HUNDREDS");
        std::uint64_t reads = 0;
        main.files.Watch([&](const larder::NumberedFiles::Access& access) {
            if (access.Kind == "read" && (access.Number == 1 || access.Number == 21)) ++reads;
        });
        const auto start = Clock::now();
        main.categories.SimulateCategoryClick("ALL RECIPES");
        larder::Application::DoEvents();
        state.SetIterationTime(Milliseconds(Clock::now() - start) / 1000);
        main.files.Watch(nullptr);
        titles += reads;
        ++opened;
    }
    state.counters["title_reads"] = static_cast<double>(titles) / static_cast<double>(opened);
    state.counters["lines"] = main.LinesInList[1];
}
BENCHMARK(AllRecipes)->UseManualTime()->Unit(benchmark::kMillisecond);

// A category of 2,000 recipes: until its first lines are painted, and until it is complete.
void CategoryOfThousands(benchmark::State& state) {
    larder::frmMain& main = *TheBook().window;
    PaintWatch watch;
    watch.armed = [&] { return main.VList[1].Count() >= main.LinesInList[1]; };
    const auto children = main.ui.lvwX2.Native()->findChildren<QWidget*>();
    for (QWidget* child : children)
        child->installEventFilter(&watch);
    double first = 0;
    double complete = 0;
    for (auto _ : state) {
        main.categories.SimulateCategoryClick("MY FAVORITES");
        larder::Application::DoEvents();
        watch.Arm();
        const auto start = Clock::now();
        main.categories.SimulateCategoryClick("THOUSANDS");
        larder::Application::DoEvents();
        const auto end = Clock::now();
        first += Milliseconds(watch.Painted() - start);
        complete += Milliseconds(end - start);
        state.SetIterationTime(Milliseconds(end - start) / 1000);
    }
    const auto times = static_cast<double>(state.iterations());
    state.counters["first_screen_ms"] = first / times;
    state.counters["complete_ms"] = complete / times;
}
BENCHMARK(CategoryOfThousands)->UseManualTime()->Unit(benchmark::kMillisecond);

// A recipe of 3 KB, from the call to the painted page.
void ShowRecipe(benchmark::State& state) {
    larder::frmMain& main = *TheBook().window;
    std::int32_t number = 1;
    for (auto _ : state) {
        const auto start = Clock::now();
        main.viewer.ShowRecipe(number);
        larder::Application::DoEvents();
        state.SetIterationTime(Milliseconds(Clock::now() - start) / 1000);
        number = number % 1000 + 1;
    }
}
BENCHMARK(ShowRecipe)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    return larder::bench::RunOnBook(argc, argv, {});
}
