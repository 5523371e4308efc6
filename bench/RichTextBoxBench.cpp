// What a reader waits for: a recipe coming on show, and a search through the recipes of his own.

#include <benchmark/benchmark.h>

#include <QTextEdit>
#include <cstdlib>
#include <string>

#include "platform/Application.h"
#include "platform/RichTextBox.h"
#include "platform/Window.h"

namespace larder {
namespace {

// A recipe of about this size, with the formats that a rich edit control puts in.
std::string Recipe(std::size_t size, int number) {
    std::string rtf =
        "{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1033{\\fonttbl{\\f0\\froman\\fprq2\\fcharset0 "
        "Times New Roman;}{\\f1\\fswiss\\fcharset0 Arial;}}\r\n\\viewkind4\\uc1\\pard\\b\\f0\\fs30 "
        "Baked Cod No. " +
        std::to_string(number) + "\\b0\\par\r\n\\par\r\n\\fs24 ";
    while (rtf.size() + 400 < size) {
        rtf +=
            "\\i 2 pounds of cod fillets, without skin\\i0\\par\r\n"
            "Butter a shallow dish and lay the fillets in it, side by side. Pour the cream over "
            "them, season with salt and white pepper, and bake in a hot oven at 200 \\'b0C until "
            "the flesh flakes. Serve with \\b boiled potatoes\\b0  and melted butter.\\par\r\n";
    }
    return rtf + "SERVINGS PER RECIPE:  4 \\f1\\fs20\\par\r\n}";
}

void ShowARecipe(benchmark::State& state) {
    Window window("frmBench");
    window.SetClientSize(15360, 10800);
    RichTextBox box(window, "rtbSee");
    box.Move({7000, 1000, 7500, 8000});
    box.SetLocked(true);
    box.OnSelChange = [&box] { benchmark::DoNotOptimize(box.FirstVisibleLine()); };
    window.Show();
    Application::DoEvents();
    auto* edit = static_cast<QTextEdit*>(box.Native());
    int number = 0;
    for (auto _ : state) {
        state.PauseTiming();
        const std::string rtf = Recipe(3072, ++number);
        state.ResumeTiming();
        box.SetVisible(false);
        box.SetLeft(60000);
        box.SetTextRTF(rtf);
        box.SetSelStart(0);
        box.SetSelLength(static_cast<std::int32_t>(box.Text().size()));
        box.SetSelFontSize(3);
        box.SetSelFontSize(12);
        box.SetSelLength(0);
        box.SetSelStart(0);
        box.Span("\r", true, true);
        box.SetSelFontSize(15.6F);
        box.SetSelColor(293286);
        box.SetSelStart(0);
        const std::int32_t line = box.Find("\r", 1);
        for (const char* word : {"cream", "potatoes", "oven"}) {
            if (box.Find(word, line, -1, RichTextBox::WholeWord) >= 0) box.SetSelColor(0xFF0000);
            box.SetSelLength(0);
        }
        box.SetSelStart(0);
        // The scroll bar measures the text by its end and a page.
        box.SetSelStart(static_cast<std::int32_t>(box.Text().size()));
        benchmark::DoNotOptimize(box.FirstVisibleLine());
        box.PageUp();
        box.SetSelStart(0);
        box.SetLeft(7000);
        box.SetVisible(true);
        edit->viewport()->repaint();
    }
}
BENCHMARK(ShowARecipe)->Unit(benchmark::kMillisecond);

void FindTwoWordsInOwnRecipes(benchmark::State& state) {
    Window window("frmBench");
    RichTextBox box(window, "rtbT");
    box.SetVisible(false);
    std::vector<std::string> recipes;
    for (int i = 0; i < 500; ++i)
        recipes.push_back(Recipe(20 * 1024, i));
    for (auto _ : state) {
        int found = 0;
        for (const std::string& recipe : recipes) {
            box.SetTextRTF(recipe);
            for (const char* word : {"servings", "trout"}) {
                if (box.Find(word, -1, -1, RichTextBox::WholeWord) >= 0) ++found;
                box.SetSelStart(0);
            }
        }
        if (found != 500) state.SkipWithError("each recipe holds one of the words");
    }
}
BENCHMARK(FindTwoWordsInOwnRecipes)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace larder

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    larder::Application application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
