// The Image Processing Suite.
#include "probe/Complaints.h"
#include "probe/FormatFacts.h"
#include "probe/Names.h"
#include "probe/SuiteChecks.h"

namespace hostprobe {

namespace {

using Question = prSuiteError (*)(PrPixelFormat format, prBool* answer);

// A host that writes one byte instead of four leaves the others as they were.
constexpr prBool kUnanswered = 0x5A5A5A5A;

void expectAnswer(const char* function, Question ask, PrPixelFormat format, prBool wanted) {
    prBool answer = kUnanswered;
    const prSuiteError error = ask(format, &answer);
    if (error < 0) {
        complain(Sentence::CallFailed, {function, std::to_string(error)});
    } else if (answer != kPrFalse && answer != kPrTrue) {
        complain(Sentence::NoBoolean, {function, std::to_string(answer), formatName(format)});
    } else if (answer != wanted) {
        complain(Sentence::WrongBoolean, {function, std::to_string(answer), formatName(format)});
    }
}

}  // namespace

void checkImageSuite(const PrSDKImageProcessingSuite& image) {
    for (const FormatFacts& facts : kFormatFacts) {
        expectAnswer("FormatIsCompressed", image.FormatIsCompressed, facts.format, kPrFalse);
        expectAnswer("FormatHasAlpha", image.FormatHasAlpha, facts.format, facts.hasAlpha);
        if (facts.isBottomUp) {
            expectAnswer("FormatIsOriginTopLeft", image.FormatIsOriginTopLeft, facts.format, kPrFalse);
        }
    }
}

}  // namespace hostprobe
