#pragma once

#include <exception>
#include <string>
#include <utility>

namespace larder {

// The numbers of the run-time failures that the routines of the cook-book tell apart.
namespace failure {
inline constexpr int InvalidArgument = 5;
inline constexpr int Overflow = 6;
inline constexpr int OutOfRange = 9;
inline constexpr int DivisionByZero = 11;
inline constexpr int TypeMismatch = 13;
inline constexpr int BadFileNumber = 52;  // the number is not open, or not a file number
inline constexpr int FileNotFound = 53;
inline constexpr int BadFileMode = 54;  // reading a file that was opened for writing, say
inline constexpr int FileAlreadyOpen = 55;
inline constexpr int DeviceError = 57;  // an input/output error of the system
inline constexpr int DiskFull = 61;
inline constexpr int InputPastEnd = 62;
inline constexpr int BadRecordNumber = 63;  // a position or record below 1
inline constexpr int TooManyFiles = 67;
inline constexpr int PermissionDenied = 70;
inline constexpr int DriveNotReady = 71;
inline constexpr int PathAccess = 75;  // the storage cannot be reached or not be written
inline constexpr int PathNotFound = 76;
inline constexpr int InvalidPicture = 481;
inline constexpr int DialogCancelled = 32755;
inline constexpr int IndexOutOfBounds = 35600;  // a list line that does not exist
inline constexpr int ElementNotFound = 35601;   // a key that no list line has
inline constexpr int KeyNotUnique = 35602;
}  // namespace failure

// The one error type of the program: a number by which callers decide, the routine that raised
// it, and a text for the user.
class Failure : public std::exception {
  public:
    Failure(int number, std::string source, std::string description)
        : Number(number), Source(std::move(source)), Description(std::move(description)) {}

    // A failure with the usual text of its number ("File not found").
    Failure(int number, std::string source);

    const char* what() const noexcept override { return Description.c_str(); }

    int Number;
    std::string Source;
    std::string Description;
};

// The usual text of a failure number; "Application-defined or object-defined error" for a number
// without one.
std::string FailureText(int number);

// Runs one statement and goes on with the next whatever failure it raises. Stands around each
// statement that may fail, never around a whole routine whose steps are to run on. Returns the
// number of the failure, 0 when there was none. Other exceptions pass through.
template <typename Statement>
int Ignoring(Statement&& statement) {
    try {
        std::forward<Statement>(statement)();
        return 0;
    } catch (const Failure& f) {
        return f.Number;
    }
}

// Runs a step that reaches a file, so that a failure of it names the file in its description.
template <typename Step>
void NamingFile(const std::string& file, Step&& step) {
    try {
        std::forward<Step>(step)();
    } catch (const Failure& f) {
        if (f.Description.find(file) != std::string::npos) throw;
        throw Failure(f.Number, f.Source, file + "\n" + f.Description);
    }
}

}  // namespace larder
