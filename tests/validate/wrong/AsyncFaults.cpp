// Plug-ins whose asynchronous importers are wrong.
#include "wrong/AsyncEntry.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <deque>
#include <mutex>
#include <set>
#include <stdexcept>
#include <thread>

namespace wrong {

namespace {

PrTime announcedTime(void* parameter) { return static_cast<aiAsyncRequest*>(parameter)->inSourceRec.inFrameTime; }

csSDK_int32 collectAt(void* parameter, PrTime time) {
    imSourceVideoRec record = *static_cast<imSourceVideoRec*>(parameter);
    record.inFrameTime = time;
    return rightAsync(aiGetFrame, &record);
}

// --- Answers ----------------------------------------------------------------------------------------------------

csSDK_int32 answersEverySelector(csSDK_int32 selector, void* parameter) {
    const csSDK_int32 result = rightAsync(selector, parameter);
    return result == aiUnsupported && selector != aiCancelAsyncRead ? csSDK_int32{aiNoError} : result;
}

csSDK_int32 cancels(csSDK_int32 selector, void* parameter) {
    return selector == aiCancelAsyncRead ? csSDK_int32{aiNoError} : rightAsync(selector, parameter);
}

csSDK_int32 refusesTimesOutside(csSDK_int32 selector, void* parameter) {
    const bool isOutside = selector == aiInitiateAsyncRead && announcedTime(parameter) < 0;
    return isOutside ? csSDK_int32{aiUnknownError} : rightAsync(selector, parameter);
}

csSDK_int32 deliversTheFirstForAny(csSDK_int32 selector, void* parameter) {
    const csSDK_int32 result = rightAsync(selector, parameter);
    return selector == aiGetFrame && result == aiUnknownError ? collectAt(parameter, 0) : result;
}

csSDK_int32 letsExceptionsOut(csSDK_int32 selector, void* parameter) {
    const csSDK_int32 result = rightAsync(selector, parameter);
    if (result == kExceptionResult) {
        throw std::runtime_error("nobody caught this");
    }
    return result;
}

// --- Pictures ---------------------------------------------------------------------------------------------------

csSDK_int32 spoilsPictures(csSDK_int32 selector, void* parameter) {
    const csSDK_int32 result = rightAsync(selector, parameter);
    SPBasicSuite* basicSuite = asyncHost->piSuites->utilFuncs->getSPBasicSuite();
    const void* suite = nullptr;
    if (selector == aiGetFrame && result == aiNoError &&
        basicSuite->AcquireSuite(kPrSDKPPixSuite, kPrSDKPPixSuiteVersion, &suite) == kSPNoError) {
        char* pixels = nullptr;
        PPixHand frame = *static_cast<imSourceVideoRec*>(parameter)->outFrame;
        static_cast<const PrSDKPPixSuite*>(suite)->GetPixels(frame, PrPPixBufferAccess_WriteOnly, &pixels);
        pixels[0] = static_cast<char>(pixels[0] ^ 1);
        basicSuite->ReleaseSuite(kPrSDKPPixSuite, kPrSDKPPixSuiteVersion);
    }
    return result;
}

std::mutex pendingMutex;
std::deque<PrTime> pending;

// The oldest announced frame, whichever is asked for.
csSDK_int32 deliversInTurn(csSDK_int32 selector, void* parameter) {
    const std::lock_guard lock(pendingMutex);
    if (selector == aiInitiateAsyncRead) {
        pending.push_back(announcedTime(parameter));
    }
    if (selector != aiGetFrame || pending.empty()) {
        return rightAsync(selector, parameter);
    }
    const PrTime oldest = pending.front();
    pending.pop_front();
    return collectAt(parameter, oldest);
}

// --- What is announced ------------------------------------------------------------------------------------------

csSDK_int32 refusesWhatIsPending(csSDK_int32 selector, void* parameter) {
    const std::lock_guard lock(pendingMutex);
    if (selector == aiInitiateAsyncRead) {
        if (std::ranges::find(pending, announcedTime(parameter)) != pending.end()) {
            return aiUnknownError;
        }
        pending.push_back(announcedTime(parameter));
    } else if (selector == aiGetFrame) {
        std::erase(pending, PrTime{static_cast<imSourceVideoRec*>(parameter)->inFrameTime});
    }
    return rightAsync(selector, parameter);
}

csSDK_int32 needsAnnouncements(csSDK_int32 selector, void* parameter) {
    const std::lock_guard lock(pendingMutex);
    if (selector == aiInitiateAsyncRead) {
        pending.push_back(announcedTime(parameter));
    } else if (selector == aiGetFrame) {
        const auto found = std::ranges::find(pending, PrTime{static_cast<imSourceVideoRec*>(parameter)->inFrameTime});
        if (found == pending.end()) {
            return aiFrameNotFound;
        }
        pending.erase(found);
    } else if (selector == aiFlush) {
        pending.clear();
    }
    return rightAsync(selector, parameter);
}

csSDK_int32 refusesCrowds(csSDK_int32 selector, void* parameter) {
    constexpr int kMost = 64;
    static std::atomic<int> waiting = 0;
    if (selector == aiInitiateAsyncRead && ++waiting > kMost) {
        return aiUnknownError;
    }
    if (selector == aiGetFrame) {
        --waiting;
    }
    return rightAsync(selector, parameter);
}

// --- Flush and close --------------------------------------------------------------------------------------------

csSDK_int32 keepsFlushedFrames(csSDK_int32 selector, void* parameter) {
    return selector == aiFlush ? csSDK_int32{aiNoError} : rightAsync(selector, parameter);
}

csSDK_int32 failsAfterAFlush(csSDK_int32 selector, void* parameter) {
    static std::atomic<bool> isFlushed = false;
    isFlushed = isFlushed || selector == aiFlush;
    return selector == aiGetFrame && isFlushed ? csSDK_int32{aiUnknownError} : rightAsync(selector, parameter);
}

csSDK_int32 flushesBeforeAnnouncing(csSDK_int32 selector, void* parameter) {
    if (selector == aiInitiateAsyncRead) {
        rightAsync(aiFlush, static_cast<aiAsyncRequest*>(parameter)->inPrivateData);
    }
    return rightAsync(selector, parameter);
}

csSDK_int32 neverCloses(csSDK_int32 selector, void* parameter) {
    return selector == aiClose ? csSDK_int32{aiNoError} : rightAsync(selector, parameter);
}

// What was announced comes to its end, or it would go on in a library that is gone.
csSDK_int32 keepsEverythingAtTheClose(csSDK_int32 selector, void* parameter) {
    if (selector == aiClose) {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
    }
    return neverCloses(selector, parameter);
}

csSDK_int32 leavesAThread(csSDK_int32 selector, void* parameter) {
    if (selector == aiClose) {
        // Longer than any machine takes from the close to the unloading.
        std::thread([] {
            for (int i = 0; i < 3000; ++i) {
                std::this_thread::sleep_for(std::chrono::milliseconds(2));
            }
        }).detach();
    }
    return rightAsync(selector, parameter);
}

csSDK_int32 decodesWhenCollected(csSDK_int32 selector, void* parameter) {
    return selector == aiInitiateAsyncRead ? csSDK_int32{aiNoError} : rightAsync(selector, parameter);
}

// --- Several of them --------------------------------------------------------------------------------------------

csSDK_int32 mixesImporters(csSDK_int32 selector, void* parameter) {
    static std::atomic<void*> first = nullptr;
    if (selector == aiInitiateAsyncRead && !first) {
        first = static_cast<aiAsyncRequest*>(parameter)->inPrivateData;
    }
    if (selector == aiClose && parameter == first) {
        first = nullptr;
    }
    if (selector != aiGetFrame || !first) {
        return rightAsync(selector, parameter);
    }
    imSourceVideoRec record = *static_cast<imSourceVideoRec*>(parameter);
    record.inPrivateData = first;
    return rightAsync(selector, &record);
}

csSDK_int32 mixesThreads(csSDK_int32 selector, void* parameter) {
    if (selector != aiGetFrame) {
        return rightAsync(selector, parameter);
    }
    static std::atomic<PrTime> time = 0;
    time = static_cast<imSourceVideoRec*>(parameter)->inFrameTime;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return collectAt(parameter, time);
}

// --- The importer's own entry -----------------------------------------------------------------------------------

std::atomic<bool> isClipClosed = false;

csSDK_int32 failsWithoutItsClip(csSDK_int32 selector, void* parameter) {
    return selector == aiGetFrame && isClipClosed ? csSDK_int32{aiUnknownError} : rightAsync(selector, parameter);
}

csSDK_int32 endsWithItsClip(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    if (selector == imOpenFile8 || selector == imCloseFile) {
        isClipClosed = selector == imCloseFile;
    }
    return withAsyncEntry<failsWithoutItsClip>(selector, stdParms, param1, param2);
}

csSDK_int32 opensOneAtATime(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    if (selector != imOpenFile8) {
        return right(selector, stdParms, param1, param2);
    }
    static std::atomic<int> inside = 0;
    const bool isAlone = ++inside == 1;
    std::this_thread::sleep_for(std::chrono::milliseconds(40));
    const csSDK_int32 result = isAlone ? right(selector, stdParms, param1, param2) : csSDK_int32{imBadFile};
    --inside;
    return result;
}

csSDK_int32 promisesInVain(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return selector == imCreateAsyncImporter ? csSDK_int32{imUnsupported} : right(selector, stdParms, param1, param2);
}

constexpr Fault kAsyncFaults[] = {
    {"async-answers-every-selector", withAsyncEntry<answersEverySelector>},
    {"async-cancels", withAsyncEntry<cancels>},
    {"async-refuses-times-outside", withAsyncEntry<refusesTimesOutside>},
    {"async-delivers-the-first-for-any", withAsyncEntry<deliversTheFirstForAny>},
    {"async-lets-exceptions-out", withAsyncEntry<letsExceptionsOut>},
    {"async-spoils-pictures", withAsyncEntry<spoilsPictures>},
    {"async-delivers-in-turn", withAsyncEntry<deliversInTurn>},
    {"async-refuses-what-is-pending", withAsyncEntry<refusesWhatIsPending>},
    {"async-needs-announcements", withAsyncEntry<needsAnnouncements>},
    {"async-refuses-crowds", withAsyncEntry<refusesCrowds>},
    {"async-keeps-flushed-frames", withAsyncEntry<keepsFlushedFrames>},
    {"async-fails-after-a-flush", withAsyncEntry<failsAfterAFlush>},
    {"async-flushes-before-announcing", withAsyncEntry<flushesBeforeAnnouncing>},
    {"async-never-closes", withAsyncEntry<neverCloses>},
    {"async-keeps-everything-at-the-close", withAsyncEntry<keepsEverythingAtTheClose>},
    {"async-leaves-a-thread", withAsyncEntry<leavesAThread>},
    {"async-decodes-when-collected", withAsyncEntry<decodesWhenCollected>},
    {"async-mixes-importers", withAsyncEntry<mixesImporters>},
    {"async-mixes-threads", withAsyncEntry<mixesThreads>},
    {"async-ends-with-its-clip", endsWithItsClip},
    {"async-is-promised-in-vain", promisesInVain},
    {"opens-one-at-a-time", opensOneAtATime},
};

}  // namespace

std::span<const Fault> asyncFaults() { return kAsyncFaults; }

}  // namespace wrong
