#pragma once
// Failures of the core. Expected bad input is answered with a message through the prompt;
// everything unexpected is thrown as an ArborexError and handled at the operation boundary,
// which logs it and offers Retry / Ignore / Exit.

#include <exception>
#include <stdexcept>
#include <string>

namespace arborex {

// Stable failure numbers, shown on the error screen and written to the error log.
enum ErrorNumber : int {
    ErrOverflow = 6,
    ErrOutOfMemory = 7,
    ErrSubscript = 9,
    ErrDivisionByZero = 11,
    ErrTypeMismatch = 13,
    ErrInternal = 51,
    ErrBadFileName = 52,
    ErrFileNotFound = 53,
    ErrDiskFull = 61,
    ErrInputPastEnd = 62,
    ErrPermissionDenied = 70,
    ErrPathFileAccess = 75,
    ErrPathNotFound = 76,
    ErrInvalidFormat = 321,
};

// The text the error screen shows under a failure's number.
std::string errorText(int number);

class ArborexError : public std::runtime_error {
public:
    ArborexError(int number, const std::string& detail = {});
    int number() const { return number_; }
    // Extra context (a path, a value), empty when none.
    const std::string& detail() const { return detail_; }

private:
    int number_;
    std::string detail_;
};

// The number and text of any exception: ArborexError's own, 7 for memory, 51 otherwise.
int failureNumberOf(const std::exception_ptr& failure, std::string& detail);

}  // namespace arborex
