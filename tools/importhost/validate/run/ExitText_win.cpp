#include "importhost/validate/run/Result.h"

#include <cstdio>

namespace importhost::validate {

namespace {

struct ExceptionName {
    unsigned code;
    const char* name;
};

constexpr ExceptionName kExceptions[] = {
    {0xC0000005, "access violation"},
    {0xC0000094, "integer division by zero"},
    {0xC00000FD, "stack overflow"},
    {0xC0000374, "heap corruption"},
    {0xC0000409, "stack buffer overrun"},
    {0xC000001D, "illegal instruction"},
    {0x20474343, "an exception that nobody caught"},
    {0x80000003, "breakpoint"},
    {0xC0000135, "a library is missing"},
};

constexpr unsigned kMostPlainCode = 0xFFFF;

std::string hexText(unsigned code) {
    char text[16] = {};
    std::snprintf(text, sizeof(text), "0x%08X", code);
    return text;
}

}  // namespace

std::string exitText(int exitCode) {
    const auto code = static_cast<unsigned>(exitCode);
    for (const ExceptionName& row : kExceptions) {
        if (row.code == code) {
            return std::string(row.name) + " (" + hexText(code) + ")";
        }
    }
    return "exit code " + (code > kMostPlainCode ? hexText(code) : std::to_string(code));
}

}  // namespace importhost::validate
