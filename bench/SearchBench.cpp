#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <time.h>
#include <unistd.h>

#include <QApplication>
#include <QEvent>
#include <QWidget>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#ifdef LARDER_SQLITE
#include <sqlite3.h>
#endif

#include "BenchBook.h"
#include "SearchFolder.h"
#include "app/frmMain.h"
#include "search/WordIndex.h"
#include "search/frmSearch.h"

// What a search of a large cook-book costs in the real window on Qt's offscreen platform, beside
// the least that the same work can cost: a loop over blocks of the index, and two small reads for
// every title. And beside a database with a full-text index of the same texts.
namespace {

// Off for the measure of a search that never looks at its events.
bool eventsRun = true;

}  // namespace

// The linker leads the program's calls of Application::DoEvents here (see CMakeLists.txt).
void RealDoEvents() asm("__real__ZN6larder11Application8DoEventsEv");
void SwitchedDoEvents() asm("__wrap__ZN6larder11Application8DoEventsEv");

void SwitchedDoEvents() {
    if (eventsRun) RealDoEvents();
}

namespace {

using Clock = std::chrono::steady_clock;
using larder::bench::SearchFolder;

// What this thread has used of the processor, in seconds.
double ProcessorTime() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

double Seconds(Clock::duration time) {
    return std::chrono::duration<double>(time).count();
}

// Notes the last time that a widget was painted.
class PaintWatch : public QObject {
  public:
    bool eventFilter(QObject* widget, QEvent* event) override {
        if (event->type() != QEvent::Paint || inside_) return false;
        inside_ = true;
        widget->event(event);
        inside_ = false;
        Painted = Clock::now();
        PaintedProcessor = ProcessorTime();
        return true;
    }
    Clock::time_point Painted;
    double PaintedProcessor = 0;

  private:
    bool inside_ = false;
};

struct Query {
    const char* Name;
    std::vector<std::string> Words;
};

struct Bench {
    // The window on the book with or without the user's own recipes, the dialog open.
    void Open(bool own);

    larder::Application* application = nullptr;
    std::filesystem::path folder;
    larder::bench::NoDialogs dialogs;
    larder::SystemDrives drives;
    std::unique_ptr<SearchFolder> book;
    std::unique_ptr<larder::frmMain> window;
    std::vector<Query> queries;

  private:
    bool own_ = true;
};

Bench* bench = nullptr;

void Bench::Open(bool own) {
    if (window != nullptr && own == own_) return;
    window.reset();
    for (const std::string file : {"Custom Recipes.ydb", "Custom Recipes Index.ind"}) {
        const std::filesystem::path here = book->Data / file;
        const std::filesystem::path aside = book->Data / (file + ".aside");
        if (own_ && !own) std::filesystem::rename(here, aside);
        if (!own_ && own) std::filesystem::rename(aside, here);
    }
    own_ = own;
    application->StartAgain(folder.string(), "");
    window = std::make_unique<larder::frmMain>(*application, dialogs, drives);
    if (!window->Load()) std::abort();
    window->search.ShowDialog();
    larder::Application::DoEvents();
}

std::string Joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : " ") + word;
    return text;
}

// The least that finding a word's number line can cost: blocks of 256 KB from the top of the file,
// and words compared where they stand in the block.
std::string LoopLookUp(const std::string& word) {
    static std::vector<char> block(256 * 1024);
    const int file = open((bench->book->Data / "Search.ydb").c_str(), O_RDONLY);
    std::string part;  // of a line whose beginning stands in earlier blocks
    std::string numbers;
    bool wordLine = true;
    bool found = false;
    bool passed = false;
    while (!passed) {
        const ssize_t got = read(file, block.data(), block.size());
        if (got <= 0) break;
        const char* at = block.data();
        const char* const end = at + got;
        while (at < end && !passed) {
            const char* stop =
                static_cast<const char*>(memchr(at, '\n', static_cast<std::size_t>(end - at)));
            const bool wanted = wordLine || found;
            if (stop == nullptr) {
                if (wanted) part.append(at, end);
                break;
            }
            if (wanted) {
                std::string_view line(at, static_cast<std::size_t>(stop - at));
                if (!part.empty()) line = part.append(line);
                line.remove_suffix(1);  // the CR
                if (found) numbers = line;
                passed = found || line > word;
                found = line == word;
                part.clear();
            }
            wordLine = !wordLine;
            at = stop + 1;
        }
    }
    close(file);
    return numbers;
}

// Two small reads for every number.
std::size_t LoopTitles(const std::vector<int>& numbers) {
    const int index = open((bench->book->Data / "Recipes Index.ind").c_str(), O_RDONLY);
    const int text = open((bench->book->Data / "Recipes.ydb").c_str(), O_RDONLY);
    std::size_t bytes = 0;
    for (const int number : numbers) {
        std::int32_t position = 0;
        char line[512];
        if (pread(index, &position, 4, (number - 1) * 4L) != 4) std::abort();
        if (pread(text, line, sizeof line, position - 1) <= 0) std::abort();
        bytes += static_cast<std::size_t>(static_cast<char*>(memchr(line, '\r', 512)) - line);
    }
    close(text);
    close(index);
    return bytes;
}

std::vector<int> NumbersIn(const std::string& text) {
    std::vector<int> numbers;
    for (const char* at = text.c_str(); *at != '\0';) {
        char* end = nullptr;
        numbers.push_back(static_cast<int>(strtol(at, &end, 10)));
        at = *end == ' ' ? end + 1 : end;
    }
    return numbers;
}

void LookUpByLoop(benchmark::State& state, const std::string& word) {
    std::size_t bytes = 0;
    for (auto _ : state)
        bytes = LoopLookUp(word).size();
    state.counters["bytes"] = static_cast<double>(bytes);
}

void LookUpWord(benchmark::State& state, const std::string& word) {
    bench->Open(false);
    larder::WordIndex index(bench->window->files, bench->window->paths);
    std::size_t bytes = 0;
    for (auto _ : state) {
        std::string sought = word;
        bytes = index.LookUpWord(sought).size();
    }
    state.counters["bytes"] = static_cast<double>(bytes);
}

// The numbers that stand in every list.
std::vector<int> InAll(const std::vector<std::vector<int>>& lists) {
    std::vector<unsigned char> times(SearchFolder::Recipes + 1);
    for (const auto& list : lists) {
        for (const int number : list)
            ++times[static_cast<std::size_t>(number)];
    }
    std::vector<int> all;
    for (const int number : lists.front()) {
        if (times[static_cast<std::size_t>(number)] == lists.size()) all.push_back(number);
    }
    return all;
}

// One walk for every word, as one at a time would be looked up; the program needs one for all.
void QueryByLoop(benchmark::State& state, const Query& query) {
    std::size_t hits = 0;
    for (auto _ : state) {
        std::vector<std::vector<int>> lists;
        for (const std::string& word : query.Words)
            lists.push_back(NumbersIn(LoopLookUp(word)));
        const std::vector<int> numbers = InAll(lists);
        hits = numbers.size();
        benchmark::DoNotOptimize(LoopTitles(numbers));
    }
    state.counters["hits"] = static_cast<double>(hits);
}

// From the press of Find to the list on the screen; `idle` is the time until everything else is
// painted too, the text of the first recipe with it; `painted_cpu_ms` is the processor's share of
// the time, to be compared with that of the others on a machine that is not idle. Without own
// recipes, whose reading has a benchmark of its own. `events` is off for the same without a look at
// the events before the result is there.
void QueryInWindow(benchmark::State& state, const Query& query, bool events) {
    bench->Open(false);
    larder::frmMain& main = *bench->window;
    larder::frmSearch& dialog = main.search.Dialog();
    PaintWatch watch;
    for (QWidget* child : main.ui.lvwX2.Native()->findChildren<QWidget*>()) {
        child->installEventFilter(&watch);
    }
    dialog.rtbSearch1.SetText(Joined(query.Words));
    double idle = 0;
    double processor = 0;
    for (auto _ : state) {
        const auto start = Clock::now();
        const double startProcessor = ProcessorTime();
        eventsRun = events;
        dialog.cmdFind_ClickX();
        eventsRun = true;
        const auto painted = watch.Painted;
        if (painted < start) std::abort();
        processor += watch.PaintedProcessor - startProcessor;
        larder::Application::DoEvents();
        idle += Seconds(Clock::now() - start);
        state.SetIterationTime(Seconds(painted - start));
    }
    state.counters["hits"] = main.VList[1].Count();
    const double times = static_cast<double>(state.iterations()) / 1000;
    state.counters["idle_ms"] = idle / times;
    state.counters["painted_cpu_ms"] = processor / times;
}

// 500 own recipes, read for two words that stand in most of them.
void OwnRecipes(benchmark::State& state) {
    bench->Open(true);
    larder::frmMain& main = *bench->window;
    larder::frmSearch& dialog = main.search.Dialog();
    dialog.rtbSearch1.SetText("salmon butter");
    for (auto _ : state)
        dialog.cmdFind_ClickX();
    state.counters["hits"] = main.VList[1].Count();
}

#ifdef LARDER_SQLITE
class FullText {
  public:
    explicit FullText(const std::filesystem::path& file) {
        sqlite3_open(file.c_str(), &database_);
        Run("PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF;"
            "CREATE VIRTUAL TABLE recipes USING fts5(title, body); BEGIN");
        sqlite3_stmt* insert = nullptr;
        sqlite3_prepare_v2(database_, "INSERT INTO recipes(rowid, title, body) VALUES(?, ?, ?)", -1,
                           &insert, nullptr);
        for (int recipe = 1; recipe <= SearchFolder::Recipes; ++recipe) {
            const std::string title = bench->book->Title(recipe);
            const std::string text = bench->book->Text(recipe);
            sqlite3_bind_int(insert, 1, recipe);
            sqlite3_bind_text(insert, 2, title.c_str(), -1, SQLITE_TRANSIENT);
            sqlite3_bind_text(insert, 3, text.c_str(), -1, SQLITE_TRANSIENT);
            if (sqlite3_step(insert) != SQLITE_DONE) std::abort();
            sqlite3_reset(insert);
        }
        sqlite3_finalize(insert);
        Run("COMMIT; INSERT INTO recipes(recipes) VALUES('optimize')");
    }
    ~FullText() { sqlite3_close(database_); }

    int Find(const std::string& words) {
        sqlite3_stmt* select = nullptr;
        sqlite3_prepare_v2(database_,
                           "SELECT rowid, title FROM recipes WHERE recipes MATCH ? ORDER BY rowid",
                           -1, &select, nullptr);
        sqlite3_bind_text(select, 1, words.c_str(), -1, SQLITE_TRANSIENT);
        int rows = 0;
        while (sqlite3_step(select) == SQLITE_ROW) {
            benchmark::DoNotOptimize(sqlite3_column_text(select, 1));
            ++rows;
        }
        sqlite3_finalize(select);
        return rows;
    }

  private:
    void Run(const char* statements) {
        if (sqlite3_exec(database_, statements, nullptr, nullptr, nullptr) != SQLITE_OK) {
            std::fprintf(stderr, "SQLite: %s\n", sqlite3_errmsg(database_));
            std::abort();
        }
    }
    sqlite3* database_ = nullptr;
};

void QueryByFts5(benchmark::State& state, const Query& query) {
    static FullText database(bench->folder / "fts5.db");
    int hits = 0;
    for (auto _ : state)
        hits = database.Find(Joined(query.Words));
    state.counters["hits"] = hits;
}
#endif

void MakeQueries() {
    const SearchFolder& book = *bench->book;
    const std::string common1 = book.WordNear("m", 0.5);
    const std::string common2 = book.WordNear("s", 0.5);
    const std::string common3 = book.WordNear("v", 0.5);
    const std::string usual1 = book.WordNear("l", 0.05);
    const std::string usual2 = book.WordNear("t", 0.05);
    const std::string rare = book.WordNear("wa", 0.002);
    bench->queries = {{"rare", {rare}},
                      {"half", {common2}},
                      {"two_halves", {common1, common2}},
                      {"two_usual", {usual1, usual2}},
                      {"three_halves", {common1, common2, common3}},
                      {"half_usual_rare", {common2, usual2, rare}}};
}

void Register() {
    const SearchFolder& book = *bench->book;
    for (const auto& [name, from] : {std::pair{"early", "ca"}, {"middle", "m"}, {"late", "zan"}}) {
        const std::string word = book.WordNear(from, 0.005);
        benchmark::RegisterBenchmark((std::string("LookUp/loop/") + name).c_str(), LookUpByLoop,
                                     word);
        benchmark::RegisterBenchmark((std::string("LookUp/larder/") + name).c_str(), LookUpWord,
                                     word);
    }
    for (const Query& query : bench->queries) {
        const std::string name = query.Name;
        const auto ms = benchmark::kMillisecond;
        benchmark::RegisterBenchmark(("Query/loop/" + name).c_str(), QueryByLoop, query)->Unit(ms);
        for (const auto& [kind, events] : {std::pair{"larder/", true}, {"quiet/", false}}) {
            benchmark::RegisterBenchmark(("Query/" + (kind + name)).c_str(), QueryInWindow, query,
                                         events)
                ->UseManualTime()
                ->Unit(ms);
        }
#ifdef LARDER_SQLITE
        benchmark::RegisterBenchmark(("Query/fts5/" + name).c_str(), QueryByFts5, query)->Unit(ms);
#endif
    }
    benchmark::RegisterBenchmark("OwnRecipes/500", OwnRecipes)->Unit(benchmark::kMillisecond);
}

}  // namespace

int main(int argc, char** argv) {
    if (!larder::bench::CanMeasure()) return 1;
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("larder-search-" + std::to_string(getpid()));
    {
        larder::Application application(argc, argv);
        Bench theBench;
        bench = &theBench;
        theBench.application = &application;
        theBench.folder = folder;
        theBench.book = std::make_unique<SearchFolder>(folder);
        MakeQueries();
        Register();
        benchmark::Initialize(&argc, argv);
        benchmark::RunSpecifiedBenchmarks();
        theBench.window.reset();
    }
    std::filesystem::remove_all(folder);
    return 0;
}
