#include "wrong/FrameTools.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <utility>

namespace wrong {

namespace {

constexpr imFrameFormat kUyvy = {0, 0, static_cast<csSDK_uint32>(PrPixelFormat_UYVY_422_8u_601)};

csSDK_int32 notFound() { return imFrameNotFound; }

// Changes the pixels of each delivered frame.
Answer changesPixels(std::function<void(const Pixels& frame)> change) {
    return frames([=](const FrameRequest& request) {
        const csSDK_int32 result = request.pass();
        if (result == imNoErr) {
            change(pixelsOf(request.stdParms, request.frame()));
        }
        return result;
    });
}

// Delivers another frame with all rows but the last one copied.
csSDK_int32 leavesOutARow(const FrameRequest& request) {
    const csSDK_int32 result = request.pass();
    if (result == imNoErr) {
        const Pixels whole = pixelsOf(request.stdParms, request.frame());
        const PPixHand copy = newFrame(request.stdParms, whole);
        std::memcpy(pixelsOf(request.stdParms, copy).bytes, whole.bytes,
                    static_cast<std::size_t>(whole.rowBytes) * static_cast<std::size_t>(whole.height - 1));
        disposeFrame(request.stdParms, std::exchange(request.frame(), copy));
    }
    return result;
}

void flip(const Pixels& frame) {
    for (int top = 0, bottom = frame.height - 1; top < bottom; ++top, --bottom) {
        std::swap_ranges(frame.bytes + frame.rowBytes * top, frame.bytes + frame.rowBytes * (top + 1),
                         frame.bytes + frame.rowBytes * bottom);
    }
}

// Draws into the frame that it delivered before, if the host still has that.
csSDK_int32 drawsIntoTheLatestFrame(const FrameRequest& request) {
    static PPixHand latest = nullptr;
    const Pixels before = latest ? pixelsOf(request.stdParms, latest) : Pixels{};
    if (before.bytes) {
        before.bytes[0] = static_cast<char>(before.bytes[0] ^ 0x55);
    }
    const csSDK_int32 result = request.pass();
    latest = result == imNoErr ? request.frame() : nullptr;
    return result;
}

csSDK_int32 staysWithTheFirstFormat(const FrameRequest& request) {
    static std::map<void*, csSDK_uint32> first;
    if (request.formatCount() == 0) {
        return request.pass();
    }
    void* const clip = request.video().inPrivateData;
    const csSDK_uint32 asked = request.format(0).inPixelFormat;
    return request.passIn({{0, 0, first.emplace(clip, asked).first->second}});
}

// The first frame after a change of format is the one before it.
csSDK_int32 isLateWithAnotherFormat(const FrameRequest& request) {
    static csSDK_uint32 latest = 0;
    if (request.formatCount() == 0) {
        return request.pass();
    }
    const csSDK_uint32 asked = request.format(0).inPixelFormat;
    const csSDK_uint32 before = std::exchange(latest, asked);
    return before != 0 && before != asked && request.index() > 0 ? request.passAt(request.index() - 1) : request.pass();
}

csSDK_int32 cannotGoBack(const FrameRequest& request) {
    static std::map<void*, PrTime> latest;
    void* const clip = request.video().inPrivateData;
    PrTime& index = latest[clip];
    index = request.index() + 1 == index ? index : std::max<PrTime>(index - 1, request.index());
    return request.passAt(index);
}

bool looksTheSame(const Pixels& a, const Pixels& b) {
    return a.bytes && b.bytes && std::equal(a.bytes, a.bytes + a.rowBytes * a.height, b.bytes);
}

// A frame that looks like the one before it counts as empty.
Answer emptyFrames(std::function<csSDK_int32(const FrameRequest& request)> answer) {
    return frames([=](const FrameRequest& request) {
        if (request.index() <= 0 || request.passAt(request.index() - 1) != imNoErr) {
            return request.pass();
        }
        const PPixHand before = std::exchange(request.frame(), nullptr);
        csSDK_int32 result = request.pass();
        if (result == imNoErr && looksTheSame(pixelsOf(request.stdParms, before),
                                              pixelsOf(request.stdParms, request.frame()))) {
            disposeFrame(request.stdParms, std::exchange(request.frame(), nullptr));
            result = answer(request);
        }
        disposeFrame(request.stdParms, before);
        return result;
    });
}

void* otherClip = nullptr;

csSDK_int32 mixClips(const FrameRequest& request) {
    void* const mine = request.video().inPrivateData;
    if (otherClip && otherClip != mine && request.index() == 1) {
        request.video().inPrivateData = otherClip;
    }
    otherClip = mine;
    return request.pass();
}

csSDK_int32 mixesClips(const Call& call) {
    static const Answer mixing = frames(mixClips);
    if (call.selector == imCloseFile && otherClip == call.param2) {
        otherClip = nullptr;
    }
    return mixing(call);
}

csSDK_int32 forgetsPicturesWhenQuieted(const Call& call) {
    static bool wasQuieted = false;
    wasQuieted = call.selector == imQuietFile || (wasQuieted && call.selector != imCloseFile);
    return call.selector == imGetSourceVideo && wasQuieted ? csSDK_int32{imFileReadFailed} : call.pass();
}

const Fault kFrameFaults[] = {
    // --- Times ---
    {"refuses-last-frame", frames([](const FrameRequest& request) {
         return request.index() == request.lastIndex() ? notFound() : request.pass();
     })},
    {"delivers-the-next-frame", frames([](const FrameRequest& request) {
         return request.index() < request.lastIndex() ? request.passAt(request.index() + 1) : request.pass();
     })},
    {"repeats-last-frame-past-end", frames([](const FrameRequest& request) {
         return request.index() > request.lastIndex() ? request.passAt(request.lastIndex()) : request.pass();
     })},
    {"takes-negative-times-for-the-first", frames([](const FrameRequest& request) {
         return request.time() < 0 ? request.passAt(0) : request.pass();
     })},
    {"refuses-every-negative-time", frames([](const FrameRequest& request) {
         return request.time() < 0 ? notFound() : request.pass();
     })},
    {"rounds-times", frames([](const FrameRequest& request) {
         const PrTime ticks = request.ticksPerFrame();
         return request.time() >= 0 ? request.passAt((request.time() + ticks / 2 - 1) / ticks) : request.pass();
     })},
    {"counts-times-exactly", frames([](const FrameRequest& request) {
         return request.time() >= 0 ? request.passAt(request.exactIndex()) : request.pass();
     })},
    {"describes-no-rate-as-it-is", after(imGetInfo8, [](const Call& call, csSDK_int32) {
         auto& info = call.record<imFileInfoRec8>();
         if (info.vidScale == 30 && info.vidSampleSize == 1) {
             info.vidScale = 0;
             info.vidSampleSize = 0;
         }
     })},

    // --- Pixels ---
    {"leaves-out-a-row", frames(leavesOutARow)},
    {"writes-past-the-frame", changesPixels([](const Pixels& frame) {
         frame.bytes[frame.rowBytes * frame.height] = 0;
     })},
    {"adds-to-what-the-buffer-held", changesPixels([count = char{0}](const Pixels& frame) mutable {
         frame.bytes[5] = count++;
     })},
    {"flips-pictures", changesPixels(flip)},
    {"slants-odd-rows", changesPixels([](const Pixels& frame) {
         if (frame.rowBytes % 2 == 1) {
             std::memmove(frame.bytes + frame.rowBytes, frame.bytes + frame.rowBytes + 4, 16);
         }
     })},
    {"draws-into-the-latest-frame", frames(drawsIntoTheLatestFrame)},

    // --- Formats and sizes ---
    {"takes-any-size", frames([](const FrameRequest& request) {
         return request.formatCount() > 0 ? request.passIn({{0, 0, request.format(0).inPixelFormat}}) : request.pass();
     })},
    {"refuses-size-zero", frames([](const FrameRequest& request) {
         const bool isZero = request.formatCount() > 0 && request.format(0).inFrameWidth == 0;
         return isZero ? csSDK_int32{imOtherErr} : request.pass();
     })},
    {"takes-the-second-format", frames([](const FrameRequest& request) {
         return request.formatCount() > 1 ? request.passIn({request.format(1)}) : request.pass();
     })},
    {"takes-no-format-for-uyvy", frames([](const FrameRequest& request) {
         return request.formatCount() == 0 ? request.passIn({kUyvy}) : request.pass();
     })},
    {"answers-unknown-formats", frames([](const FrameRequest& request) {
         const csSDK_int32 result = request.pass();
         return result == kExceptionResult ? request.passIn({kUyvy}) : result;
     })},
    {"stays-with-the-first-format", frames(staysWithTheFirstFormat)},
    {"is-late-with-another-format", frames(isLateWithAnotherFormat)},

    // --- Order ---
    {"cannot-go-back", frames(cannotGoBack)},
    {"refuses-empty-frames", emptyFrames([](const FrameRequest&) { return notFound(); })},
    {"shows-the-first-for-empty-frames", emptyFrames([](const FrameRequest& request) { return request.passAt(0); })},
    {"mixes-clips", mixesClips},
    {"forgets-pictures-when-quieted", forgetsPicturesWhenQuieted},
};

}  // namespace

std::span<const Fault> frameFaults() { return kFrameFaults; }

}  // namespace wrong
