// The Image Processing Suite.
#include "probe/Complaints.h"
#include "probe/FormatFacts.h"
#include "probe/Names.h"
#include "probe/SuiteChecks.h"

namespace hostprobe {

namespace {

using Question = prSuiteError (*)(PrPixelFormat format, prBool* answer);

// A host that writes one byte instead of four does not change the others.
constexpr prBool kUnanswered = 0x5A5A5A5A;

void expectAnswer(const char* function, Question ask, PrPixelFormat format, prBool wanted) {
    prBool answer = kUnanswered;
    if (!expectGood(function, ask(format, &answer))) {
        return;
    }
    const bool isBoolean = answer == kPrFalse || answer == kPrTrue;
    expect(answer == wanted, isBoolean ? Sentence::WrongBoolean : Sentence::NoBoolean,
           {function, std::to_string(answer), formatName(format)});
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
