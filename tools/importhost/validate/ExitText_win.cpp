#include "importhost/validate/Result.h"

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
};

}  // namespace

std::string exitText(int exitCode) {
    const auto code = static_cast<unsigned>(exitCode);
    for (const ExceptionName& row : kExceptions) {
        if (row.code == code) {
            char number[16] = {};
            std::snprintf(number, sizeof(number), "0x%08X", code);
            return std::string(row.name) + " (" + number + ")";
        }
    }
    return "exit code " + std::to_string(exitCode);
}

}  // namespace importhost::validate
