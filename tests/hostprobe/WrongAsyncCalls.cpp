// Hosts that break the rules of asynchronous importers.
#include "WrongCase.h"

#include <thread>

using enum hostprobe::Sentence;

namespace {

Play withAsync(Play calls) {
    return within([calls](Host& host) {
        host.createAsync();
        calls(host);
    });
}

Play beforeFlushAndClose(Play calls) {
    return withAsync([calls](Host& host) {
        calls(host);
        host.flush();
        host.closeAsync();
    });
}

void flushDuringFrame(Host& host) {
    host.duringFrame = [&host] { std::thread([&host] { host.flush(); }).join(); };
    host.getFrame();
}

// Only the flush asks for the ticks in this life.
void frameDuringFlush(Host& host) {
    host.used.time.GetTicksPerSecond = [](PrTime* ticks) {
        Host& playedHost = Host::current();
        playedHost.used.time.GetTicksPerSecond = playedHost.good.time.GetTicksPerSecond;
        std::thread([&playedHost] { playedHost.announce(); }).join();
        return playedHost.good.time.GetTicksPerSecond(ticks);
    };
    host.flush();
}

}  // namespace

WrongCases wrongAsyncCalls() {
    return {
        {"AsyncFromAHostThatKnowsNone", AsyncUnexpected,
         "imCreateAsyncImporter came from a host that knows no asynchronous importers.",
         spoilt([](Host&) {}), "async=no"},
        {"ShutdownWithOpenAsync", ShutdownWithOpenAsync,
         "imShutdown came while an asynchronous importer was open.", withAsync([](Host&) {})},
        {"AsyncFrameForTheImporter", AsyncUnknown,
         "aiGetFrame: the private data is not from an asynchronous importer.", beforeFlushAndClose([](Host& host) {
             host.spoil[Host::kAsync + aiGetFrame] = [](char* record) {
                 reinterpret_cast<imSourceVideoRec*>(record)->inPrivateData = Host::current().privateData;
             };
             host.getFrame();
         })},
        {"RequestWhoseFrameIsForTheImporter", AsyncUnknown,
         "aiInitiateAsyncRead: the private data is not from an asynchronous importer.",
         beforeFlushAndClose([](Host& host) {
             host.spoil[Host::kAsync + aiInitiateAsyncRead] = [](char* record) {
                 reinterpret_cast<aiAsyncRequest*>(record)->inSourceRec.inPrivateData = Host::current().privateData;
             };
             host.announce();
         })},
        {"AsyncForAFileThatIsUnknown", UnknownPrivateData,
         "imCreateAsyncImporter: the private data is not from this importer.", within([](Host& host) {
             host.spoil[imCreateAsyncImporter] = [](char* record) {
                 reinterpret_cast<imAsyncImporterCreationRec*>(record)->inPrivateData = &Host::current();
             };
             host.createAsync();
         })},
        {"FrameAfterAsyncClose", AsyncAfterClose, "aiGetFrame came after aiClose.",
         withAsync([](Host& host) { host.flush(); host.closeAsync(); host.getFrame(); })},
        {"SecondAsyncClose", AsyncAfterClose, "aiClose came after aiClose.",
         withAsync([](Host& host) { host.flush(); host.closeAsync(); host.closeAsync(); })},
        {"FlushAfterAsyncClose", AsyncAfterClose, "aiFlush came after aiClose.",
         withAsync([](Host& host) { host.flush(); host.closeAsync(); host.flush(); })},
        {"CloseWithoutFlush", AsyncNotFlushed, "aiClose came without aiFlush before it.",
         withAsync([](Host& host) { host.announce(); host.closeAsync(); })},
        {"AnnouncedBetweenFlushAndClose", AsyncNotFlushed, "aiClose came without aiFlush before it.",
         withAsync([](Host& host) { host.flush(); host.announce(); host.closeAsync(); })},
        {"FlushDuringFrame", AsyncDuringFlush, "aiFlush and another call ran at the same time.",
         beforeFlushAndClose(flushDuringFrame)},
        {"AnnouncedDuringFlush", AsyncDuringFlush, "aiFlush and another call ran at the same time.",
         beforeFlushAndClose(frameDuringFlush)},
        {"AsyncFrameWithoutAPlace", OutFrameMissing, "aiGetFrame: there is no place for the frame.",
         beforeFlushAndClose([](Host& host) {
             host.spoil[Host::kAsync + aiGetFrame] = [](char* record) {
                 reinterpret_cast<imSourceVideoRec*>(record)->outFrame = nullptr;
             };
             host.getFrame();
         })},
        {"NoAsyncParameter", ParameterMissing, "aiGetFrame: the parameter is missing.",
         beforeFlushAndClose([](Host& host) { host.async(aiGetFrame, nullptr); })},
    };
}
