#include "PlayedHost.h"

#include "hostkit/sessions/ImporterSession.h"

#include <array>
#include <cstring>
#include <utility>

namespace {

PlayedHost* played = nullptr;

constexpr std::size_t kRecordBytes = 5376;      // the largest record
constexpr csSDK_int32 kImporterId = 1001;
constexpr csSDK_uint32 kSoundFrames = 64;

// A record with room for that of any version.
template <class T>
struct Record : RecordBytes {
    Record() : RecordBytes(kRecordBytes) {}
    T* operator->() { return reinterpret_cast<T*>(data()); }
};

// The played table in place of the host library's.
const void* tableFor(const std::string& name) {
    HostTables& used = PlayedHost::current().used;
    if (name == kPrSDKPPixCreatorSuite) return &used.creator;
    if (name == kPrSDKPPixSuite) return &used.frames;
    if (name == kPrSDKPPixCacheSuite) return &used.cache;
    if (name == kPrSDKTimeSuite) return &used.time;
    if (name == kPrSDKImageProcessingSuite) return &used.image;
    if (name == kPrSDKAudioSuite) return &used.audio;
    return &used.error;
}

prSuiteError createPPix(PPixHand* out, PrPPixBufferAccess access, PrPixelFormat format, const prRect* bounds) {
    PlayedHost& host = PlayedHost::current();
    if (bounds->right == host.wanted.inFrameWidth) {
        host.runDuringFrame();
    }
    return host.good.creator.CreatePPix(out, access, format, bounds);
}

SPBasicSuite* basicSuite() { return &PlayedHost::current().used.basic; }

template <class Suite>
void copySuite(SPBasicSuite* basic, const char* name, csSDK_int32 version, Suite& copy) {
    const void* suite = nullptr;
    basic->AcquireSuite(name, version, &suite);
    std::memcpy(&copy, suite, sizeof(Suite));
    basic->ReleaseSuite(name, version);
}

}  // namespace

PlayedHost::PlayedHost(hostkit::ImporterEntry entry) : m_entry(entry) {
    played = this;
    takeGoodTables();
    good.basic.AcquireSuite = acquire;
    used = good;
    used.utility.getSPBasicSuite = basicSuite;
    used.creator.CreatePPix = createPPix;
    callbacks.classFuncs = &used.classData;
    suites = {9, &used.memory, nullptr, nullptr, &used.utility, nullptr};
    parms = {IMPORTMOD_VERSION_18, &callbacks, &suites};
}

PlayedHost::~PlayedHost() { played = nullptr; }

PlayedHost& PlayedHost::current() { return *played; }

SPErr PlayedHost::acquire(const char* name, csSDK_int32 version, const void** suite) {
    const SPErr error = played->m_base.basicSuite()->AcquireSuite(name, version, suite);
    if (error == kSPNoError) {
        *suite = tableFor(name);
    }
    return error;
}

void PlayedHost::takeGoodTables() {
    const imStdParms* base = m_base.stdParms();
    SPBasicSuite* basic = m_base.basicSuite();
    good.memory = *base->piSuites->memFuncs;
    good.utility = *base->piSuites->utilFuncs;
    good.classData = *base->funcs->classFuncs;
    good.basic = *basic;
    copySuite(basic, kPrSDKPPixCreatorSuite, kPrSDKPPixCreatorSuiteVersion, good.creator);
    copySuite(basic, kPrSDKPPixSuite, kPrSDKPPixSuiteVersion, good.frames);
    copySuite(basic, kPrSDKPPixCacheSuite, kPrSDKPPixCacheSuiteVersion, good.cache);
    copySuite(basic, kPrSDKTimeSuite, kPrSDKTimeSuiteVersion, good.time);
    copySuite(basic, kPrSDKImageProcessingSuite, kPrSDKImageProcessingSuiteVersion, good.image);
    copySuite(basic, kPrSDKAudioSuite, kPrSDKAudioSuiteVersion, good.audio);
    copySuite(basic, kPrSDKErrorSuite, kPrSDKErrorSuiteVersion3, good.error);
}

void PlayedHost::runDuringFrame() {
    if (auto once = std::exchange(duringFrame, nullptr)) {
        once();
    }
}

void PlayedHost::apply(int key, RecordBytes& record) {
    if (const auto found = spoil.find(key); found != spoil.end()) {
        found->second(record.data());
    }
}

csSDK_int32 PlayedHost::send(csSDK_int32 selector, void* param1, RecordBytes& record) {
    apply(selector, record);
    return call(selector, param1, record.data());
}

csSDK_int32 PlayedHost::call(csSDK_int32 selector, void* param1, void* param2) {
    return m_entry(selector, &parms, param1, param2);
}

// --- The importer as a whole --------------------------------------------------------------------------------------

void PlayedHost::init() {
    RecordBytes record(kRecordBytes);
    apply(imInit, record);
    call(imInit, record.data());
}

void PlayedHost::format(csSDK_int32 index) {
    Record<imIndFormatRec> record;
    if (send(imGetIndFormat, hostkit::asPointer(index), record) == imNoErr) {
        fileType = record->filetype;
    }
}

void PlayedHost::subTypes(csSDK_int32 type) {
    void* block = nullptr;
    call(imGetSubTypeNames, hostkit::asPointer(type), &block);
    good.memory.disposePtr(static_cast<char*>(block));
}

// --- A file -------------------------------------------------------------------------------------------------------

void PlayedHost::open() {
    Record<imFileOpenRec8> record;
    record->fileinfo.filepath = path.c_str();
    record->fileinfo.fileref = reference;
    record->fileinfo.filetype = fileType;
    record->privatedata = privateData;
    record->inImporterID = kImporterId;
    send(imOpenFile8, &reference, record);
    privateData = record->privatedata;
    fileType = record->fileinfo.filetype;
}

void PlayedHost::info(csSDK_int32 stream) {
    Record<imFileAccessRec8> access;
    access->filepath = path.c_str();
    access->fileref = reference;
    access->filetype = fileType;
    apply(kAccess, access);
    Record<imFileInfoRec8> record;
    record->privatedata = privateData;
    record->streamIdx = stream;
    record->vidInfo.importerID = kImporterId;
    send(imGetInfo8, access.data(), record);
}

void PlayedHost::pixelFormat(csSDK_int32 index) {
    Record<imIndPixelFormatRec> record;
    record->privatedata = privateData;
    send(imGetIndPixelFormat, hostkit::asPointer(index), record);
}

void PlayedHost::layout() {
    Record<imGetAudioChannelLayoutRec> record;
    record->inPrivateData = privateData;
    send(imGetAudioChannelLayout, reference, record);
}

void PlayedHost::analysis() {
    char buffer[256];
    Record<imAnalysisRec> record;
    record->privatedata = privateData;
    record->buffersize = sizeof(buffer);
    record->buffer = buffer;
    send(imAnalysis, reference, record);
}

void PlayedHost::askForSamples() {
    Record<imDataRateAnalysisRec> record;
    record->privatedata = privateData;
    send(imDataRateAnalysis, reference, record);
}

void PlayedHost::takeSamples() {
    std::array<imDataSample, 12> samples;
    Record<imDataRateAnalysisRec> record;
    record->privatedata = privateData;
    record->buffersize = sizeof(samples);
    record->buffer = samples.data();
    apply(kSamples, record);
    call(imDataRateAnalysis, reference, record.data());
}

void PlayedHost::audio() {
    float sound[2][kSoundFrames];
    float* channels[2] = {sound[0], sound[1]};
    Record<imImportAudioRec7> record;
    record->size = kSoundFrames;
    record->buffer = channels;
    record->privateData = privateData;
    send(imImportAudio7, reference, record);
}

void PlayedHost::fillVideo(char* record, void* owner, PPixHand* out) {
    auto& video = *reinterpret_cast<imSourceVideoRec*>(record);
    wanted.inFrameHeight = 28;
    video.inPrivateData = owner;
    video.inFrameFormats = &wanted;
    video.inNumFrameFormats = 1;
    video.outFrame = out;
}

void PlayedHost::frame() {
    PPixHand delivered = nullptr;
    Record<imSourceVideoRec> record;
    fillVideo(record.data(), privateData, &delivered);
    if (send(imGetSourceVideo, reference, record) == imNoErr) {
        good.frames.Dispose(delivered);
    }
}

// --- Asynchronous -------------------------------------------------------------------------------------------------

void PlayedHost::createAsync() {
    Record<imAsyncImporterCreationRec> record;
    record->inPrivateData = privateData;
    apply(imCreateAsyncImporter, record);
    call(imCreateAsyncImporter, record.data());
    asyncEntry = record->outAsyncEntry;
    asyncData = record->outAsyncPrivateData;
}

csSDK_int32 PlayedHost::async(csSDK_int32 selector, void* parameter) {
    return asyncEntry ? asyncEntry(selector, parameter) : static_cast<csSDK_int32>(aiUnknownError);
}

void PlayedHost::announce() {
    Record<aiAsyncRequest> record;
    record->inPrivateData = asyncData;
    fillVideo(record.data() + 12, asyncData, nullptr);
    apply(kAsync + aiInitiateAsyncRead, record);
    async(aiInitiateAsyncRead, record.data());
}

void PlayedHost::getFrame() {
    PPixHand delivered = nullptr;
    Record<imSourceVideoRec> record;
    fillVideo(record.data(), asyncData, &delivered);
    apply(kAsync + aiGetFrame, record);
    if (async(aiGetFrame, record.data()) == aiNoError) {
        good.frames.Dispose(delivered);
    }
}

// --- Lives --------------------------------------------------------------------------------------------------------

void PlayedHost::begin() {
    init();
    format(0);
    open();
    info(0);
}

void PlayedHost::end() {
    close();
    shutdown();
}

void PlayedHost::play() {
    init();
    format(0);
    format(1);
    subTypes(fileType);
    open();
    info(0);
    pixelFormat(0);
    pixelFormat(1);
    layout();
    analysis();
    askForSamples();
    takeSamples();
    audio();
    frame();
    createAsync();
    announce();
    getFrame();
    flush();
    closeAsync();
    quiet();
    open();
    frame();
    end();
}
