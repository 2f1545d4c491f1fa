#include "wrong/FrameTools.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <map>
#include <vector>

namespace wrong {

namespace {

// --- Times ------------------------------------------------------------------------------------------------------

csSDK_int32 refusesLastFrame(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const Request request(selector, stdParms, param1, param2);
    return request.isFrame() && request.index() == request.lastIndex() ? csSDK_int32{imFrameNotFound} : request.pass();
}

csSDK_int32 deliversTheFrameBehind(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const Request request(selector, stdParms, param1, param2);
    return request.isFrame() && request.index() < request.lastIndex() ? request.passAt(request.index() + 1)
                                                                      : request.pass();
}

csSDK_int32 repeatsLastFramePastEnd(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const Request request(selector, stdParms, param1, param2);
    return request.isFrame() && request.index() > request.lastIndex() ? request.passAt(request.lastIndex())
                                                                      : request.pass();
}

csSDK_int32 takesNegativeTimesForTheFirst(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const Request request(selector, stdParms, param1, param2);
    return request.isFrame() && request.time() < 0 ? request.passAt(0) : request.pass();
}

csSDK_int32 refusesEveryNegativeTime(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const Request request(selector, stdParms, param1, param2);
    return request.isFrame() && request.time() < 0 ? csSDK_int32{imFrameNotFound} : request.pass();
}

csSDK_int32 roundsTimes(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const Request request(selector, stdParms, param1, param2);
    return request.isFrame() && request.time() >= 0
               ? request.passAt((request.time() + request.ticksPerFrame() / 2 - 1) / request.ticksPerFrame())
               : request.pass();
}

// The frame number from the exact rate, without cutting a frame's duration to ticks first.
csSDK_int32 countsTimesExactly(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const Request request(selector, stdParms, param1, param2);
    if (!request.isFrame() || request.time() < 0) {
        return request.pass();
    }
    const long double index = static_cast<long double>(request.time()) * static_cast<long double>(request.rate()) /
                              (static_cast<long double>(request.scale()) * 254016000000.0L);
    return request.passAt(static_cast<PrTime>(index));
}

csSDK_int32 describesNoRateAsItIs(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = Request(selector, stdParms, param1, param2).pass();
    auto* info = static_cast<imFileInfoRec8*>(param2);
    if (selector == imGetInfo8 && info->vidScale == 30 && info->vidSampleSize == 1) {
        info->vidScale = 0;
        info->vidSampleSize = 0;
    }
    return result;
}

// --- Pixels -----------------------------------------------------------------------------------------------------

// Hands out another frame with all rows but the last one copied.
csSDK_int32 leavesOutARow(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const Request request(selector, stdParms, param1, param2);
    const csSDK_int32 result = request.pass();
    if (request.isFrame() && result == imNoErr) {
        const Pixels whole = pixelsOf(stdParms, request.frame());
        const PPixHand copy = newFrame(stdParms, whole);
        const Pixels gaps = pixelsOf(stdParms, copy);
        std::memcpy(gaps.bytes, whole.bytes, static_cast<std::size_t>(whole.rowBytes) *
                                                 static_cast<std::size_t>(whole.height - 1));
        disposeFrame(stdParms, request.frame());
        request.frame() = copy;
    }
    return result;
}

template <class Change>
csSDK_int32 changed(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2, Change change) {
    const Request request(selector, stdParms, param1, param2);
    const csSDK_int32 result = request.pass();
    if (request.isFrame() && result == imNoErr) {
        change(pixelsOf(stdParms, request.frame()));
    }
    return result;
}

csSDK_int32 writesPastTheFrame(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return changed(selector, stdParms, param1, param2,
                   [](const Pixels& frame) { frame.bytes[frame.rowBytes * frame.height] = 0; });
}

csSDK_int32 addsToWhatTheBufferHeld(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static char count = 0;
    return changed(selector, stdParms, param1, param2, [](const Pixels& frame) { frame.bytes[5] = count++; });
}

csSDK_int32 flipsPictures(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return changed(selector, stdParms, param1, param2, [](const Pixels& frame) {
        for (int top = 0, bottom = frame.height - 1; top < bottom; ++top, --bottom) {
            std::swap_ranges(frame.bytes + frame.rowBytes * top, frame.bytes + frame.rowBytes * (top + 1),
                             frame.bytes + frame.rowBytes * bottom);
        }
    });
}

csSDK_int32 slantsOddRows(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return changed(selector, stdParms, param1, param2, [](const Pixels& frame) {
        if (frame.rowBytes % 2 == 1) {
            std::memmove(frame.bytes + frame.rowBytes, frame.bytes + frame.rowBytes + 4, 16);
        }
    });
}

// Draws into the frame that it gave before, if the host still has that.
csSDK_int32 drawsIntoTheLatestFrame(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static PPixHand latest = nullptr;
    const Request request(selector, stdParms, param1, param2);
    if (request.isFrame() && latest) {
        const Pixels frame = pixelsOf(stdParms, latest);
        if (frame.bytes) {
            frame.bytes[0] = static_cast<char>(frame.bytes[0] ^ 0x55);
        }
    }
    const csSDK_int32 result = request.pass();
    if (request.isFrame()) {
        latest = result == imNoErr ? request.frame() : nullptr;
    }
    return result;
}

// --- Formats and sizes ------------------------------------------------------------------------------------------

csSDK_int32 takesAnySize(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const Request request(selector, stdParms, param1, param2);
    return request.isFrame() && request.formatCount() > 0 ? request.passIn({{0, 0, request.format(0).inPixelFormat}})
                                                          : request.pass();
}

csSDK_int32 refusesSizeZero(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const Request request(selector, stdParms, param1, param2);
    return request.isFrame() && request.formatCount() > 0 && request.format(0).inFrameWidth == 0
               ? csSDK_int32{imOtherErr}
               : request.pass();
}

csSDK_int32 takesTheSecondFormat(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const Request request(selector, stdParms, param1, param2);
    return request.isFrame() && request.formatCount() > 1 ? request.passIn({request.format(1)}) : request.pass();
}

csSDK_int32 takesNoFormatForUyvy(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const Request request(selector, stdParms, param1, param2);
    return request.isFrame() && request.formatCount() == 0
               ? request.passIn({{0, 0, static_cast<csSDK_uint32>(PrPixelFormat_UYVY_422_8u_601)}})
               : request.pass();
}

csSDK_int32 answersUnknownFormats(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const Request request(selector, stdParms, param1, param2);
    const csSDK_int32 result = request.pass();
    return request.isFrame() && result == 99
               ? request.passIn({{0, 0, static_cast<csSDK_uint32>(PrPixelFormat_UYVY_422_8u_601)}})
               : result;
}

csSDK_int32 staysWithTheFirstFormat(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static std::map<void*, csSDK_uint32> first;
    const Request request(selector, stdParms, param1, param2);
    if (!request.isFrame() || request.formatCount() == 0) {
        return request.pass();
    }
    const csSDK_uint32 asked = request.format(0).inPixelFormat;
    const csSDK_uint32 format = first.emplace(request.privateData(), asked).first->second;
    return request.passIn({{0, 0, format}});
}

// The first frame after another format comes out of the decoder that still works in that.
csSDK_int32 isLateWithAnotherFormat(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static csSDK_uint32 latest = 0;
    const Request request(selector, stdParms, param1, param2);
    const bool isLate = request.isFrame() && request.formatCount() > 0 && latest != 0 &&
                        latest != request.format(0).inPixelFormat && request.index() > 0;
    if (request.isFrame() && request.formatCount() > 0) {
        latest = request.format(0).inPixelFormat;
    }
    return isLate ? request.passAt(request.index() - 1) : request.pass();
}

// --- Order ------------------------------------------------------------------------------------------------------

csSDK_int32 cannotGoBack(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static std::map<void*, PrTime> latest;
    const Request request(selector, stdParms, param1, param2);
    if (!request.isFrame()) {
        return request.pass();
    }
    PrTime& index = latest[request.privateData()];
    index = request.index() + 1 == index ? index : std::max<PrTime>(index - 1, request.index());
    return request.passAt(index);
}

bool looksTheSame(const Pixels& a, const Pixels& b) {
    return a.bytes && b.bytes && std::equal(a.bytes, a.bytes + a.rowBytes * a.height, b.bytes);
}

// A frame that looks like the one before it stands for an empty one.
template <class Answer>
csSDK_int32 emptyFrames(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2, Answer answer) {
    const Request request(selector, stdParms, param1, param2);
    if (!request.isFrame() || request.index() <= 0 || request.passAt(request.index() - 1) != imNoErr) {
        return request.pass();
    }
    const PPixHand before = std::exchange(request.frame(), nullptr);
    csSDK_int32 result = request.pass();
    if (result == imNoErr && looksTheSame(pixelsOf(stdParms, before), pixelsOf(stdParms, request.frame()))) {
        disposeFrame(stdParms, std::exchange(request.frame(), nullptr));
        result = answer(request);
    }
    disposeFrame(stdParms, before);
    return result;
}

csSDK_int32 refusesEmptyFrames(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return emptyFrames(selector, stdParms, param1, param2,
                       [](const Request&) { return csSDK_int32{imFrameNotFound}; });
}

csSDK_int32 showsTheFirstForEmptyFrames(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return emptyFrames(selector, stdParms, param1, param2, [](const Request& request) { return request.passAt(0); });
}

csSDK_int32 mixesClips(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static void* other = nullptr;
    const Request request(selector, stdParms, param1, param2);
    if (selector == imCloseFile && other == param2) {
        other = nullptr;
    }
    if (!request.isFrame()) {
        return request.pass();
    }
    void* const mine = request.privateData();
    if (other && other != mine && request.index() == 1) {
        request.setPrivateData(other);
    }
    const csSDK_int32 result = request.pass();
    other = mine;
    return result;
}

csSDK_int32 forgetsPicturesWhenQuieted(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static bool wasQuieted = false;
    wasQuieted = selector == imQuietFile || (wasQuieted && selector != imCloseFile);
    const Request request(selector, stdParms, param1, param2);
    return request.isFrame() && wasQuieted ? csSDK_int32{imFileReadFailed} : request.pass();
}

constexpr Fault kFrameFaults[] = {
    {"refuses-last-frame", refusesLastFrame},
    {"delivers-the-frame-behind", deliversTheFrameBehind},
    {"repeats-last-frame-past-end", repeatsLastFramePastEnd},
    {"takes-negative-times-for-the-first", takesNegativeTimesForTheFirst},
    {"refuses-every-negative-time", refusesEveryNegativeTime},
    {"rounds-times", roundsTimes},
    {"counts-times-exactly", countsTimesExactly},
    {"describes-no-rate-as-it-is", describesNoRateAsItIs},
    {"leaves-out-a-row", leavesOutARow},
    {"writes-past-the-frame", writesPastTheFrame},
    {"adds-to-what-the-buffer-held", addsToWhatTheBufferHeld},
    {"flips-pictures", flipsPictures},
    {"slants-odd-rows", slantsOddRows},
    {"draws-into-the-latest-frame", drawsIntoTheLatestFrame},
    {"takes-any-size", takesAnySize},
    {"refuses-size-zero", refusesSizeZero},
    {"takes-the-second-format", takesTheSecondFormat},
    {"takes-no-format-for-uyvy", takesNoFormatForUyvy},
    {"answers-unknown-formats", answersUnknownFormats},
    {"stays-with-the-first-format", staysWithTheFirstFormat},
    {"is-late-with-another-format", isLateWithAnotherFormat},
    {"cannot-go-back", cannotGoBack},
    {"refuses-empty-frames", refusesEmptyFrames},
    {"shows-the-first-for-empty-frames", showsTheFirstForEmptyFrames},
    {"mixes-clips", mixesClips},
    {"forgets-pictures-when-quieted", forgetsPicturesWhenQuieted},
};

}  // namespace

std::span<const Fault> frameFaults() { return kFrameFaults; }

}  // namespace wrong
