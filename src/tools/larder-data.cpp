#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "platform/Application.h"
#include "platform/rtf/Rtf.h"
#include "tools/DataBuilder.h"

// The maintainer's tool. Exit status 0 done, 1 failed (told on the error stream), 2 wrong call.
namespace {

constexpr const char* Usage =
    "usage: larder-data build --source FOLDER --out FOLDER\n"
    "           make the data folder FOLDER/Data from the sources\n"
    "       larder-data text FILE.rtf\n"
    "           print the plain text of a document as UTF-8\n"
    "       larder-data --version | --help\n";

int WrongCall() {
    std::cerr << Usage;
    return 2;
}

// The value behind a switch; empty when it is missing.
std::string ValueOf(const std::vector<std::string>& args, const std::string& name) {
    for (std::size_t i = 1; i + 1 < args.size(); ++i) {
        if (args[i] == name) return args[i + 1];
    }
    return {};
}

int Build(const std::vector<std::string>& args, int argc, char** argv) {
    const std::string source = ValueOf(args, "--source");
    const std::string out = ValueOf(args, "--out");
    if (source.empty() || out.empty() || args.size() != 5) return WrongCall();
    // Drawing the pictures needs fonts and painters but no screen.
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    const larder::Application application(argc, argv);
    larder::DataBuilder builder(source, out);
    builder.OnProgress = [](const std::string& line) { std::cout << line << '\n'; };
    builder.Build();
    std::cout << builder.RecipeCount() << " recipes, " << builder.PictureCount() << " pictures, "
              << builder.CategoryCount() << " categories\n";
    return 0;
}

int Text(const std::vector<std::string>& args) {
    if (args.size() != 2) return WrongCall();
    std::ifstream in(args[1], std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    if (in.bad() || !in.is_open()) {
        std::cerr << "larder-data: cannot read " << args[1] << '\n';
        return 1;
    }
    const std::string text = larder::RtfToPlainUtf8(bytes);
    std::cout.write(text.data(), static_cast<std::streamsize>(text.size()));
    return std::cout.flush() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> args(argv + 1, argv + argc);
    const std::string command = args.empty() ? "" : args[0];
    try {
        if (command == "build") return Build(args, argc, argv);
        if (command == "text") return Text(args);
        if (command == "--help") std::cout << Usage;
        if (command == "--version") std::cout << "larder-data " LARDER_VERSION "\n";
        if (command == "--help" || command == "--version") return 0;
        return WrongCall();
    } catch (const std::exception& e) {
        std::cerr << "larder-data: " << e.what() << '\n';
        return 1;
    }
}
