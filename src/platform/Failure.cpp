#include "platform/Failure.h"

namespace larder {

Failure::Failure(int number, std::string source)
    : Failure(number, std::move(source), FailureText(number)) {}

std::string FailureText(int number) {
    switch (number) {
        case failure::InvalidArgument:
            return "Invalid procedure call or argument";
        case failure::Overflow:
            return "Overflow";
        case failure::OutOfRange:
            return "Subscript out of range";
        case failure::DivisionByZero:
            return "Division by zero";
        case failure::TypeMismatch:
            return "Type mismatch";
        case failure::BadFileNumber:
            return "Bad file name or number";
        case failure::FileNotFound:
            return "File not found";
        case failure::BadFileMode:
            return "Bad file mode";
        case failure::FileAlreadyOpen:
            return "File already open";
        case failure::DeviceError:
            return "Device I/O error";
        case failure::DiskFull:
            return "Disk full";
        case failure::InputPastEnd:
            return "Input past end of file";
        case failure::BadRecordNumber:
            return "Bad record number";
        case failure::TooManyFiles:
            return "Too many files";
        case failure::PermissionDenied:
            return "Permission denied";
        case failure::DriveNotReady:
            return "Drive not ready";
        case failure::PathAccess:
            return "Path/File access error";
        case failure::PathNotFound:
            return "Path not found";
        case failure::InvalidPicture:
            return "Invalid picture";
        case failure::DialogCancelled:
            return "Cancel was selected.";
        case failure::IndexOutOfBounds:
            return "Index out of bounds";
        case failure::ElementNotFound:
            return "Element not found";
        case failure::KeyNotUnique:
            return "Key is not unique in collection";
        default:
            return "Application-defined or object-defined error";
    }
}

}  // namespace larder
