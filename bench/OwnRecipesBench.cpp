#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "platform/NumberedFiles.h"
#include "platform/Paths.h"
#include "store/DataPaths.h"
#include "store/DiscQuestion.h"
#include "store/RecipeStore.h"
#include "store/RecipeUpdater.h"
#include "store/RecipeWriter.h"

// What it costs to write in a file of 5,000 recipes of the user's (10 MB), beside the least that
// it can cost on the same disk at the same time: two flushes for a recipe that is added or written
// over, a copy of both files and its flush for one that makes the file longer.
//
//     larder-ownrecipes-bench [folder]      the folder is on the disk that is measured
namespace {

namespace fs = std::filesystem;
using namespace larder;
using Clock = std::chrono::steady_clock;

constexpr int recipes = 5000;
constexpr std::size_t recipeBytes = 2000;
constexpr int rounds = 41;

[[noreturn]] void Fail(const std::string& text) {
    std::fprintf(stderr, "%s\n", text.c_str());
    std::exit(1);
}

// A run of the program without a user.
class Run : private DiscQuestion, private UpdateSurroundings {
  public:
    explicit Run(const fs::path& data) {
        const std::string root = system_.Alias(data.string()) + "\\";
        paths_.Assign(root, root);
        store.OpenYDB_IND_Normal();
        store.RecalculateTotalRecipes();
    }

  private:
    bool AskOkCancel(const std::string& text) override { Fail(text); }
    bool EditMode() const override { return false; }
    void ShowError(const std::string& text) override { Fail(text); }
    void TellMaintainer(const std::string&) override {}
    void SetHourglass(bool) override {}
    void ShowNewTitle(std::int32_t, const std::string&) override {}

    Paths system_;
    DataPaths paths_;
    NumberedFiles files_{system_};

  public:
    RecipeStore store{files_, paths_, *this};
    RecipeWriter writer{files_, paths_, store, [](const std::string& text) { Fail(text); }};
    RecipeUpdater updater{files_, paths_, store, writer, *this};
};

std::string Rtf(std::size_t bytes) {
    return "{\\rtf1 " + std::string(bytes, 'x') + "}";
}

void WriteFile(const fs::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
}

void WriteRecipes(const fs::path& data) {
    fs::create_directories(data);
    std::string text;
    std::string index;
    for (int i = 1; i <= recipes; ++i) {
        const auto position = static_cast<std::uint32_t>(text.size()) + 1;
        for (int shift = 0; shift < 32; shift += 8)
            index += static_cast<char>(position >> shift & 0xFF);
        text += "Recipe " + std::to_string(i) + "\r\n" + Rtf(recipeBytes) + "\r\n";
    }
    WriteFile(data / "Custom Recipes.ydb", text);
    WriteFile(data / "Custom Recipes Index.ind", index);
    WriteFile(data / "Recipes.ydb", "");
    WriteFile(data / "Recipes Index.ind", "");
    sync();
}

void PutOnDisk(const fs::path& file, const std::string& bytes, int flags) {
    const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | flags, 0666);
    if (descriptor < 0 ||
        write(descriptor, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()) ||
        fsync(descriptor) != 0 || close(descriptor) != 0) {
        Fail("cannot write " + file.string());
    }
}

std::string ReadAll(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

double Milliseconds(const std::function<void()>& act) {
    const auto start = Clock::now();
    act();
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double Median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
    std::string name =
        (fs::path(argc > 1 ? argv[1] : fs::temp_directory_path().c_str()) / "larder-bench-XXXXXX")
            .string();
    if (mkdtemp(name.data()) == nullptr) Fail("cannot make " + name);
    const fs::path folder = name;
    const fs::path data = folder / "Data";
    WriteRecipes(data);
    Run run(data);
    const std::string small(recipeBytes, 'x');

    std::vector<double> flushes;
    std::vector<double> adds;
    std::vector<double> shorts;
    std::vector<double> copies;
    std::vector<double> longs;
    for (int i = 0; i < rounds; ++i) {
        flushes.push_back(Milliseconds([&] {
            PutOnDisk(folder / "one", small, O_APPEND);
            PutOnDisk(folder / "two", small, O_APPEND);
        }));
        adds.push_back(Milliseconds(
            [&] { run.writer.AddRecipeTo_YDB_IND("Added", Rtf(recipeBytes), 21, 22); }));
        const std::int32_t number = 100 + i;
        shorts.push_back(Milliseconds(
            [&] { run.updater.UpdateRecipe(number, Rtf(recipeBytes - 20), "Shorter"); }));
        copies.push_back(Milliseconds([&] {
            PutOnDisk(folder / "text", ReadAll(data / "Custom Recipes.ydb"), O_TRUNC);
            PutOnDisk(folder / "index", ReadAll(data / "Custom Recipes Index.ind"), O_TRUNC);
        }));
        longs.push_back(Milliseconds([&] {
            run.updater.UpdateRecipe(recipes / 2 + i, Rtf(recipeBytes + 50), "A longer one");
        }));
    }
    fs::remove_all(folder);

    const double two = Median(flushes);
    const double copy = Median(copies);
    std::printf("medians of %d rounds, ms\n", rounds);
    std::printf("two flushes            %7.2f\n", two);
    std::printf("add                    %7.2f   limit %.2f\n", Median(adds), two + 5);
    std::printf("short update           %7.2f   limit %.2f\n", Median(shorts), two + 5);
    std::printf("copy and flush of both %7.2f\n", copy);
    std::printf("long update            %7.2f   limit %.2f\n", Median(longs), 2 * copy);
    return 0;
}
