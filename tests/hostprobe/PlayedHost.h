// A small host that calls the probe's entry directly, with tables of its own that a test can spoil one by one. Its good
// functions are the host library's; unspoiled it does everything right.
#pragma once

#include "hostkit/host/Host.h"
#include "hostkit/plugin/PluginLibrary.h"
#include "sdk/SdkAsyncImporter.h"

#include <functional>
#include <map>
#include <string>
#include <tuple>
#include <vector>

// A zeroed record of any version, at one address for its whole life.
using RecordBytes = std::vector<char>;

struct HostTables {
    PlugMemoryFuncs memory;
    PlugUtilFuncs utility;
    ClassDataFuncs classData;
    SPBasicSuite basic;
    PrSDKPPixCreatorSuite creator;
    PrSDKPPixSuite frames;
    PrSDKPPixCacheSuite cache;
    PrSDKTimeSuite time;
    PrSDKImageProcessingSuite image;
    PrSDKAudioSuite audio;
    PrSDKErrorSuite3 error;

    template <class Table>
    Table& get() {
        return std::get<Table&>(
            std::tie(memory, utility, classData, basic, creator, frames, cache, time, image, audio, error));
    }
};

class PlayedHost {
public:
    explicit PlayedHost(hostkit::ImporterEntry entry);
    ~PlayedHost();
    PlayedHost(const PlayedHost&) = delete;
    PlayedHost& operator=(const PlayedHost&) = delete;

    static PlayedHost& current();           // host functions carry no context

    imStdParms parms = {};
    imCallbackFuncs callbacks = {};
    piSuites suites = {};
    HostTables used = {};                   // may be spoiled
    HostTables good = {};                   // what the spoiled functions may call

    // Changes the record of each call of a selector before the call. Other records than the selector's own have a key
    // of their own.
    static constexpr int kAccess = 1037;            // the first record of imGetInfo8
    static constexpr int kSamples = 1013;           // imDataRateAnalysis with a buffer
    static constexpr int kAsync = 2000;             // plus the asynchronous selector
    std::map<int, std::function<void(char* record)>> spoil;

    // Called once, inside the next CreatePPix for the clip's own picture.
    std::function<void()> duringFrame;
    void runDuringFrame();

    // A call without a record.
    csSDK_int32 call(csSDK_int32 selector, void* param1 = nullptr, void* param2 = nullptr);

    csSDK_int32 callWithoutParms(csSDK_int32 selector) { return m_entry(selector, nullptr, nullptr, nullptr); }

    void init();
    void format(csSDK_int32 index);
    void subTypes(csSDK_int32 fileType);
    void open();
    void info(csSDK_int32 stream);
    void pixelFormat(csSDK_int32 index);
    void layout();
    void analysis();
    void askForSamples();
    void takeSamples();
    void audio();
    void frame();
    void createAsync();
    void announce();
    void getFrame();
    csSDK_int32 async(csSDK_int32 selector, void* parameter);
    void flush() { async(aiFlush, asyncData); }
    void closeAsync() { async(aiClose, asyncData); }
    void quiet() { call(imQuietFile, &reference, privateData); }
    void close() { call(imCloseFile, &reference, privateData); }
    void shutdown() { call(imShutdown); }

    void begin();                           // up to a described file
    void end();                             // close and shutdown
    void play();                            // a whole life with every call

    std::u16string path = u"clip.probe";
    void* privateData = nullptr;
    imFileRef reference = imInvalidHandleValue();
    csSDK_int32 (*asyncEntry)(csSDK_int32 selector, void* parameter) = nullptr;
    void* asyncData = nullptr;
    csSDK_int32 fileType = 0;
    imFrameFormat wanted = {50, 28, PrPixelFormat_BGRA_4444_8u};

private:
    static SPErr acquire(const char* name, csSDK_int32 version, const void** suite);
    void fillVideo(char* record, void* owner, PPixHand* out);
    void apply(int key, RecordBytes& record);
    csSDK_int32 send(csSDK_int32 selector, void* param1, RecordBytes& record);
    void takeGoodTables();

    hostkit::Host m_base;
    hostkit::ImporterEntry m_entry;
};
