#include "importhost/Program.h"

#include <stdexcept>

namespace {

// The program prints the name of a file that it cannot open.
std::string seenByTheProgram(const std::string& argument) {
    const std::string output = programs::withFake({"info", argument}).output;
    const std::size_t end = output.find("\n  open ");
    const std::size_t start = output.rfind("\n", end - 1);
    return output.substr(start + 1, end - start - 1);
}

TEST(ChildProcess, ArgumentsWithBlanksArriveWhole) { EXPECT_EQ(seenByTheProgram("no such file"), "no such file"); }

TEST(ChildProcess, QuotationMarksAndBackslashesArrive) {
    EXPECT_EQ(seenByTheProgram(R"(a "b" \c\" \\d\)"), R"(a "b" \c\" \\d\)");
}

TEST(ChildProcess, EveryCharacterArrives) {
    EXPECT_EQ(seenByTheProgram("\xE2\x82\xAC \xF0\x9F\x8E\xAC"), "\xE2\x82\xAC \xF0\x9F\x8E\xAC");
}

TEST(ChildProcess, AMissingProgramIsNamed) {
    try {
        hostkit::runProgram("no-such-program", {});
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_EQ(std::string(error.what()).substr(0, 36), "'no-such-program' cannot be started ");
    }
}

}  // namespace
