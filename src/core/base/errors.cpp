#include "base/errors.hpp"

#include <new>

namespace arborex {

std::string errorText(int number) {
    switch (number) {
        case ErrOverflow:
            return "Overflow";
        case ErrOutOfMemory:
            return "Out of memory";
        case ErrSubscript:
            return "Subscript out of range";
        case ErrDivisionByZero:
            return "Division by zero";
        case ErrTypeMismatch:
            return "Type mismatch";
        case ErrInternal:
            return "Internal error";
        case ErrBadFileName:
            return "Bad file name or number";
        case ErrFileNotFound:
            return "File not found";
        case ErrDiskFull:
            return "Disk full";
        case ErrInputPastEnd:
            return "Input past end of file";
        case ErrPermissionDenied:
            return "Permission denied";
        case ErrPathFileAccess:
            return "Path/File access error";
        case ErrPathNotFound:
            return "Path not found";
        case ErrInvalidFormat:
            return "Invalid file format";
        default:
            return "Application-defined or object-defined error";
    }
}

static std::string composeMessage(int number, const std::string& detail) {
    std::string text = errorText(number);
    if (!detail.empty()) text += ": " + detail;
    return text;
}

ArborexError::ArborexError(int number, const std::string& detail)
    : std::runtime_error(composeMessage(number, detail)), number_(number), detail_(detail) {}

int failureNumberOf(const std::exception_ptr& failure, std::string& detail) {
    try {
        std::rethrow_exception(failure);
    } catch (const ArborexError& e) {
        detail = e.detail();
        return e.number();
    } catch (const std::bad_alloc&) {
        return ErrOutOfMemory;
    } catch (const std::exception& e) {
        detail = e.what();
        return ErrInternal;
    } catch (...) {
        return ErrInternal;
    }
}

}  // namespace arborex
