// Plug-ins whose guard against exceptions is wrong.
#include "wrong/Fault.h"

#include <stdexcept>
#include <string>

namespace wrong {

namespace {

using Send = decltype(PrSDKErrorSuite3::SetEventStringUnicode);
Send trueSend = nullptr;

// Error events are sent by `send`.
Answer sends(Send send) {
    return withHost(changedSuite<PrSDKErrorSuite3>(kPrSDKErrorSuite, [=](PrSDKErrorSuite3& errors) {
        trueSend = errors.SetEventStringUnicode;
        errors.SetEventStringUnicode = send;
    }));
}

prSuiteError withAShortText(csSDK_uint32 type, prUTF16Char* title, prUTF16Char* text) {
    constexpr std::size_t kRoom = 200;
    std::u16string shortened = std::u16string(text).substr(0, kRoom);
    return trueSend(type, title, shortened.data());
}

prSuiteError withPlainLetters(csSDK_uint32 type, prUTF16Char* title, prUTF16Char* text) {
    std::u16string plain = text;
    for (char16_t& letter : plain) {
        letter = letter < 128 ? letter : u'?';
    }
    return trueSend(type, title, plain.data());
}

prSuiteError withoutTheReason(csSDK_uint32 type, prUTF16Char* title, prUTF16Char* text) {
    std::u16string shortened = text;
    shortened.resize(std::min(shortened.size(), shortened.find(u"): ") + 3));
    return trueSend(type, title, shortened.data());
}

// Tells the host also when it was not started, with a suite that it acquires for that.
void tellsAtAnyTime(const Call& call, csSDK_int32 result) {
    if (result != kExceptionResult) {
        return;
    }
    const HeldSuite<PrSDKErrorSuite3> errors(call.stdParms, kPrSDKErrorSuite, kPrSDKErrorSuiteVersion3);
    if (errors) {
        prUTF16Char text[] = u"Something went wrong.";
        errors->SetEventStringUnicode(3, text, text);
    }
}

const Fault kExceptionFaults[] = {
    // --- Results ---
    {"lets-exceptions-out", [](const Call& call) {
         const csSDK_int32 result = call.pass();
         if (result == kExceptionResult) {
             throw std::runtime_error("nobody caught this");
         }
         return result;
     }},
    {"swallows-exceptions", [](const Call& call) {
         const csSDK_int32 result = call.pass();
         return result == kExceptionResult ? csSDK_int32{imNoErr} : result;
     }},
    {"catches-everything", [](const Call& call) {
         try {
             return call.pass();
         } catch (...) {
             return kExceptionResult;
         }
     }},

    // --- Events ---
    {"tells-nothing", sends([](csSDK_uint32, prUTF16Char*, prUTF16Char*) { return prSuiteError{0}; })},
    {"tells-twice", sends([](csSDK_uint32 type, prUTF16Char* title, prUTF16Char* text) {
         trueSend(type, title, text);
         return trueSend(type, title, text);
     })},
    {"tells-as-a-warning", sends([](csSDK_uint32, prUTF16Char* title, prUTF16Char* text) {
         return trueSend(2, title, text);
     })},
    {"tells-under-another-title", sends([](csSDK_uint32 type, prUTF16Char*, prUTF16Char* text) {
         prUTF16Char title[] = u"An importer";
         return trueSend(type, title, text);
     })},
    {"tells-a-short-text", sends(withAShortText)},
    {"tells-in-plain-letters", sends(withPlainLetters)},
    {"tells-without-the-reason", sends(withoutTheReason)},
    {"tells-at-any-time", after(imGetSubTypeNames, tellsAtAnyTime)},

    // --- Frames ---
    {"keeps-failed-frames", withHost(changedSuite<PrSDKPPixSuite>(kPrSDKPPixSuite, [](PrSDKPPixSuite& frames) {
         frames.Dispose = [](PPixHand) { return prSuiteError{0}; };
     }))},
};

}  // namespace

std::span<const Fault> exceptionFaults() { return kExceptionFaults; }

}  // namespace wrong
