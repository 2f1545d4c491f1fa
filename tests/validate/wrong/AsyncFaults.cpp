// Plug-ins whose asynchronous importers are wrong.
#include "wrong/FrameTools.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <deque>
#include <mutex>
#include <stdexcept>
#include <thread>

namespace wrong {

namespace {

using std::chrono::milliseconds;

// The entry of the real importers, and their host.
csSDK_int32 (*rightAsync)(csSDK_int32 selector, void* parameter) = nullptr;
imStdParms* asyncHost = nullptr;

// One call of an asynchronous importer's entry.
struct AsyncCall {
    csSDK_int32 selector;
    void* parameter;

    csSDK_int32 pass() const { return rightAsync(selector, parameter); }
    csSDK_int32 passAt(PrTime time) const {
        imSourceVideoRec record = collected();
        record.inFrameTime = time;
        return rightAsync(selector, &record);
    }
    aiAsyncRequest& announced() const { return *static_cast<aiAsyncRequest*>(parameter); }
    imSourceVideoRec& collected() const { return *static_cast<imSourceVideoRec*>(parameter); }
};

using AsyncAnswer = csSDK_int32 (*)(const AsyncCall& call);
AsyncAnswer wrongAsync = nullptr;

// The real plug-in, whose asynchronous importers get an entry with `answer`.
Answer async(AsyncAnswer answer) {
    return after(imCreateAsyncImporter, [=](const Call& call, csSDK_int32 result) {
        if (result == imNoErr) {
            auto* record = static_cast<imAsyncImporterCreationRec*>(call.param1);
            asyncHost = call.stdParms;
            rightAsync = record->outAsyncEntry;
            wrongAsync = answer;
            record->outAsyncEntry = [](csSDK_int32 selector, void* parameter) {
                return wrongAsync({selector, parameter});
            };
        }
    });
}

void flush(const AsyncCall& call) { rightAsync(aiFlush, call.announced().inPrivateData); }

// Returns `answer` to `selector` without calling the real entry.
template <csSDK_int32 selector, csSDK_int32 answer>
csSDK_int32 answersAsync(const AsyncCall& call) {
    return call.selector == selector ? answer : call.pass();
}

PrTime announcedTime(const AsyncCall& call) { return call.announced().inSourceRec.inFrameTime; }
PrTime collectedTime(const AsyncCall& call) { return call.collected().inFrameTime; }

// Announced and not yet collected.
std::mutex pendingMutex;
std::deque<PrTime> pending;

csSDK_int32 spoilsPictures(const AsyncCall& call) {
    const csSDK_int32 result = call.pass();
    if (call.selector == aiGetFrame && result == aiNoError) {
        char* pixels = pixelsOf(asyncHost, *call.collected().outFrame).bytes;
        pixels[0] = static_cast<char>(pixels[0] ^ 1);
    }
    return result;
}

// The oldest announced frame, whichever is collected.
csSDK_int32 deliversInTurn(const AsyncCall& call) {
    const std::lock_guard lock(pendingMutex);
    if (call.selector == aiInitiateAsyncRead) {
        pending.push_back(announcedTime(call));
    }
    if (call.selector != aiGetFrame || pending.empty()) {
        return call.pass();
    }
    const PrTime oldest = pending.front();
    pending.pop_front();
    return call.passAt(oldest);
}

csSDK_int32 refusesWhatIsPending(const AsyncCall& call) {
    const std::lock_guard lock(pendingMutex);
    if (call.selector == aiInitiateAsyncRead) {
        if (std::ranges::find(pending, announcedTime(call)) != pending.end()) {
            return aiUnknownError;
        }
        pending.push_back(announcedTime(call));
    } else if (call.selector == aiGetFrame) {
        std::erase(pending, collectedTime(call));
    }
    return call.pass();
}

csSDK_int32 needsAnnouncements(const AsyncCall& call) {
    const std::lock_guard lock(pendingMutex);
    if (call.selector == aiInitiateAsyncRead) {
        pending.push_back(announcedTime(call));
    } else if (call.selector == aiGetFrame) {
        const auto found = std::ranges::find(pending, collectedTime(call));
        if (found == pending.end()) {
            return aiFrameNotFound;
        }
        pending.erase(found);
    } else if (call.selector == aiFlush) {
        pending.clear();
    }
    return call.pass();
}

csSDK_int32 refusesCrowds(const AsyncCall& call) {
    constexpr int kMost = 64;
    static std::atomic<int> waiting = 0;
    if (call.selector == aiInitiateAsyncRead && ++waiting > kMost) {
        return aiUnknownError;
    }
    waiting -= call.selector == aiGetFrame ? 1 : 0;
    return call.pass();
}

// What was announced ends first, or it would go on in an unloaded library.
csSDK_int32 keepsEverythingAtTheClose(const AsyncCall& call) {
    if (call.selector != aiClose) {
        return call.pass();
    }
    std::this_thread::sleep_for(milliseconds(200));
    return aiNoError;
}

csSDK_int32 leavesAThread(const AsyncCall& call) {
    if (call.selector == aiClose) {
        // Longer than any machine takes from the close to the unloading.
        std::thread([] {
            for (int i = 0; i < 3000; ++i) {
                std::this_thread::sleep_for(milliseconds(2));
            }
        }).detach();
    }
    return call.pass();
}

csSDK_int32 mixesImporters(const AsyncCall& call) {
    static std::atomic<void*> first = nullptr;
    if (call.selector == aiInitiateAsyncRead && !first) {
        first = call.announced().inPrivateData;
    }
    if (call.selector == aiClose && call.parameter == first) {
        first = nullptr;
    }
    if (call.selector != aiGetFrame || !first) {
        return call.pass();
    }
    imSourceVideoRec record = call.collected();
    record.inPrivateData = first;
    return rightAsync(aiGetFrame, &record);
}

csSDK_int32 mixesThreads(const AsyncCall& call) {
    if (call.selector != aiGetFrame) {
        return call.pass();
    }
    static std::atomic<PrTime> time = 0;
    time = collectedTime(call);
    std::this_thread::sleep_for(milliseconds(1));
    return call.passAt(time);
}

std::atomic<bool> isClipClosed = false;

csSDK_int32 endsWithItsClip(const Call& call) {
    if (call.selector == imOpenFile8 || call.selector == imCloseFile) {
        isClipClosed = call.selector == imCloseFile;
    }
    return async([](const AsyncCall& asyncCall) {
        return asyncCall.selector == aiGetFrame && isClipClosed ? csSDK_int32{aiUnknownError} : asyncCall.pass();
    })(call);
}

csSDK_int32 opensOneAtATime(const Call& call) {
    static std::atomic<int> inside = 0;
    const bool isAlone = ++inside == 1;
    std::this_thread::sleep_for(milliseconds(40));
    const csSDK_int32 result = isAlone ? call.pass() : csSDK_int32{imBadFile};
    --inside;
    return result;
}

const Fault kAsyncFaults[] = {
    // --- Results ---
    {"async-answers-every-selector", async([](const AsyncCall& call) {
         const csSDK_int32 result = call.pass();
         return result == aiUnsupported && call.selector != aiCancelAsyncRead ? csSDK_int32{aiNoError} : result;
     })},
    {"async-cancels", async(answersAsync<aiCancelAsyncRead, aiNoError>)},
    {"async-refuses-times-outside", async([](const AsyncCall& call) {
         const bool isOutside = call.selector == aiInitiateAsyncRead && announcedTime(call) < 0;
         return isOutside ? csSDK_int32{aiUnknownError} : call.pass();
     })},
    {"async-delivers-the-first-for-any", async([](const AsyncCall& call) {
         const csSDK_int32 result = call.pass();
         return call.selector == aiGetFrame && result == aiUnknownError ? call.passAt(0) : result;
     })},
    {"async-lets-exceptions-out", async([](const AsyncCall& call) {
         const csSDK_int32 result = call.pass();
         if (result == kExceptionResult) {
             throw std::runtime_error("nobody caught this");
         }
         return result;
     })},

    // --- Pictures ---
    {"async-spoils-pictures", async(spoilsPictures)},
    {"async-delivers-in-turn", async(deliversInTurn)},
    {"collects-the-first-frame", async([](const AsyncCall& call) {
         return call.selector == aiGetFrame ? call.passAt(0) : call.pass();
     })},

    // --- What is announced ---
    {"async-refuses-what-is-pending", async(refusesWhatIsPending)},
    {"async-needs-announcements", async(needsAnnouncements)},
    {"async-refuses-crowds", async(refusesCrowds)},
    {"async-decodes-when-collected", async(answersAsync<aiInitiateAsyncRead, aiNoError>)},

    // --- Flush and close ---
    {"async-keeps-flushed-frames", async(answersAsync<aiFlush, aiNoError>)},
    {"never-flushes", async(answersAsync<aiFlush, aiNoError>)},
    {"async-fails-after-a-flush", async([](const AsyncCall& call) {
         static std::atomic<bool> isFlushed = false;
         isFlushed = isFlushed || call.selector == aiFlush;
         return call.selector == aiGetFrame && isFlushed ? csSDK_int32{aiUnknownError} : call.pass();
     })},
    {"async-flushes-before-announcing", async([](const AsyncCall& call) {
         if (call.selector == aiInitiateAsyncRead) {
             flush(call);
         }
         return call.pass();
     })},
    {"waits-when-announcing", async([](const AsyncCall& call) {
         const csSDK_int32 result = call.pass();
         if (call.selector == aiInitiateAsyncRead) {
             flush(call);
         }
         return result;
     })},
    {"async-never-closes", async(answersAsync<aiClose, aiNoError>)},
    {"async-keeps-everything-at-the-close", async(keepsEverythingAtTheClose)},
    {"async-leaves-a-thread", async(leavesAThread)},

    // --- Several of them, and the importer's own entry ---
    {"async-mixes-importers", async(mixesImporters)},
    {"async-mixes-threads", async(mixesThreads)},
    {"async-ends-with-its-clip", endsWithItsClip},
    {"async-is-promised-in-vain", always(imCreateAsyncImporter, imUnsupported)},
    {"opens-one-at-a-time", on(imOpenFile8, opensOneAtATime)},
};

}  // namespace

std::span<const Fault> asyncFaults() { return kAsyncFaults; }

}  // namespace wrong
