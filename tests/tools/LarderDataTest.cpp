#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>

#include "tools/SourceFolder.h"

namespace larder {
namespace {

namespace fs = std::filesystem;

struct Result {
    int Status = -1;
    std::string Out;
    std::string Err;
};

// The built program, called with arguments for a shell.
class LarderDataTest : public testing::Test {
  protected:
    Result Run(const std::string& arguments, const std::string& before = {}) const {
        const std::string out = sources.Folder.Native("stdout");
        const std::string err = sources.Folder.Native("stderr");
        const int status = std::system((before + " '" LARDER_DATA "' " + arguments + " >'" + out +
                                        "' 2>'" + err + "' </dev/null")
                                           .c_str());
        EXPECT_TRUE(WIFEXITED(status)) << status;
        return {WEXITSTATUS(status), sources.Folder.Read("stdout"), sources.Folder.Read("stderr")};
    }
    Result Build(const std::string& out, const std::string& before = {}) const {
        return Run("build --source '" + sources.Source() + "' --out '" + sources.Out(out) + "'",
                   before);
    }
    Result TextOf(const std::string& bytes) const {
        sources.Folder.Write("document.rtf", bytes);
        return Run("text '" + sources.Folder.Native("document.rtf") + "'");
    }
    // Every file below a folder, by name.
    std::map<std::string, std::string> Files(const std::string& folder) const {
        std::map<std::string, std::string> files;
        for (const auto& entry : fs::recursive_directory_iterator(sources.Out(folder))) {
            if (!entry.is_regular_file()) continue;
            const std::string name = fs::relative(entry.path(), sources.Out(folder)).string();
            files[name] = sources.Folder.Read(folder + "/" + name);
        }
        return files;
    }

    test::SourceFolder sources;
};

TEST_F(LarderDataTest, BuildMakesTheDataFolderAndTellsTheCounts) {
    const Result result = Build("out");
    EXPECT_EQ(result.Status, 0) << result.Err;
    EXPECT_TRUE(result.Out.starts_with("Making New Search Index\nTotoal Words Count: "))
        << result.Out;
    EXPECT_TRUE(result.Out.ends_with("\n3 recipes, 1 pictures, 4 categories\n")) << result.Out;
    EXPECT_TRUE(sources.Folder.Exists("out/Data/Recipes.ydb"));
}

TEST_F(LarderDataTest, BuildingTwiceFromTheSameSourcesGivesTheSameBytes) {
    ASSERT_EQ(Build("first").Status, 0);
    ASSERT_EQ(Build("second").Status, 0);
    const auto first = Files("first");
    EXPECT_GE(first.size(), 9U);
    EXPECT_TRUE(first == Files("second"));
}

TEST_F(LarderDataTest, BuildTakesItsSwitchesInAnyOrder) {
    EXPECT_EQ(Run("build --out '" + sources.Out() + "' --source '" + sources.Source() + "'").Status,
              0);
}

TEST_F(LarderDataTest, BuildNeedsNoScreen) {
    const Result result = Build("out", "env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM");
    EXPECT_EQ(result.Status, 0) << result.Err;
}

TEST_F(LarderDataTest, AMistakeInTheSourcesIsToldWithStatus1) {
    sources.WriteRecipe("003-baked-cod.txt", "title: Baked Cod\n");
    const Result result = Build("out");
    EXPECT_EQ(result.Status, 1);
    EXPECT_EQ(result.Out, "");
    EXPECT_NE(result.Err.find("003-baked-cod.txt"), std::string::npos) << result.Err;
    EXPECT_FALSE(sources.Folder.Exists("out/Data"));
}

TEST_F(LarderDataTest, AFolderThatCannotBeWrittenIsToldWithStatus1) {
    sources.Folder.Write("out", "a file in the place of the folder");
    const Result result = Build("out");
    EXPECT_EQ(result.Status, 1);
    EXPECT_NE(result.Err, "");
}

TEST_F(LarderDataTest, AWrongCallIsAnsweredByTheUsageWithStatus2) {
    for (const char* arguments :
         {"", "bake", "build", "build --source a", "build --out b", "build --source a --out",
          "build --source a --out b c", "text", "text a b", "--unknown"}) {
        const Result result = Run(arguments);
        EXPECT_EQ(result.Status, 2) << arguments;
        EXPECT_EQ(result.Out, "") << arguments;
        EXPECT_TRUE(result.Err.starts_with("usage: larder-data")) << arguments;
    }
}

TEST_F(LarderDataTest, HelpAndVersionAreToldOnTheOutputStream) {
    const Result help = Run("--help");
    EXPECT_EQ(help.Status, 0);
    EXPECT_TRUE(help.Out.starts_with("usage: larder-data"));
    const Result version = Run("--version");
    EXPECT_EQ(version.Status, 0);
    EXPECT_EQ(version.Out, "larder-data " LARDER_VERSION "\n");
}

TEST_F(LarderDataTest, TextPrintsADocumentAsUtf8) {
    const Result result = TextOf("{\\rtf1\\ansi\\ansicpg1252 Cr\\'e8me\\par \\u8212? fish\\par}");
    EXPECT_EQ(result.Status, 0);
    EXPECT_EQ(result.Out, "Crème\n— fish\n");
    EXPECT_EQ(result.Err, "");
}

TEST_F(LarderDataTest, TextPrintsPlainTextOfTheCodePageAsUtf8) {
    EXPECT_EQ(TextOf("Cr\xE8me\r\n").Out, "Crème\n");
}

TEST_F(LarderDataTest, TextOfAnEmptyFileIsEmpty) {
    const Result result = TextOf("");
    EXPECT_EQ(result.Status, 0);
    EXPECT_EQ(result.Out, "");
}

TEST_F(LarderDataTest, TextOfADamagedDocumentIsWhatCanBeRead) {
    const Result result = TextOf("{\\rtf1 Salmon{\\b and dill");
    EXPECT_EQ(result.Status, 0);
    EXPECT_EQ(result.Out.substr(0, 6), "Salmon");
}

TEST_F(LarderDataTest, TextOfAMissingFileIsToldWithStatus1) {
    const Result result = Run("text '" + sources.Folder.Native("nowhere.rtf") + "'");
    EXPECT_EQ(result.Status, 1);
    EXPECT_EQ(result.Out, "");
    EXPECT_NE(result.Err.find("nowhere.rtf"), std::string::npos);
}

TEST_F(LarderDataTest, TextOfAFolderIsToldWithStatus1) {
    const Result result = Run("text '" + sources.Source() + "'");
    EXPECT_EQ(result.Status, 1);
    EXPECT_EQ(result.Out, "");
}

TEST_F(LarderDataTest, TextToAFullDeviceIsAFailure) {
    sources.Folder.Write("document.rtf", "{\\rtf1 Salmon}");
    const int status = std::system(
        ("'" LARDER_DATA "' text '" + sources.Folder.Native("document.rtf") + "' >/dev/full")
            .c_str());
    EXPECT_EQ(WEXITSTATUS(status), 1);
}

}  // namespace
}  // namespace larder
