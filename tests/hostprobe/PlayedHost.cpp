#include "PlayedHost.h"

#include "hostkit/sessions/ImporterSession.h"

#include <array>
#include <cstring>
#include <utility>

namespace {

PlayedHost* played = nullptr;

constexpr std::size_t kRecordBytes = 5376;      // the biggest record of all
constexpr csSDK_int32 kImporterId = 1001;
constexpr csSDK_uint32 kSoundFrames = 64;

template <class Record>
Record& as(RecordBytes& bytes) {
    return *reinterpret_cast<Record*>(bytes.data());
}

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
    RecordBytes record(kRecordBytes);
    apply(imGetIndFormat, record);
    if (call(imGetIndFormat, hostkit::asPointer(index), record.data()) == imNoErr) {
        fileType = as<imIndFormatRec>(record).filetype;
    }
}

void PlayedHost::subTypes(csSDK_int32 type) {
    void* block = nullptr;
    call(imGetSubTypeNames, hostkit::asPointer(type), &block);
    good.memory.disposePtr(static_cast<char*>(block));
}

// --- A file -------------------------------------------------------------------------------------------------------

void PlayedHost::open() {
    RecordBytes record(kRecordBytes);
    auto& open = as<imFileOpenRec8>(record);
    open.fileinfo.filepath = path.c_str();
    open.fileinfo.fileref = reference;
    open.fileinfo.filetype = fileType;
    open.privatedata = privateData;
    open.inImporterID = kImporterId;
    apply(imOpenFile8, record);
    call(imOpenFile8, &reference, record.data());
    privateData = open.privatedata;
    fileType = open.fileinfo.filetype;
}

void PlayedHost::info(csSDK_int32 stream) {
    RecordBytes access(kRecordBytes);
    as<imFileAccessRec8>(access).filepath = path.c_str();
    as<imFileAccessRec8>(access).fileref = reference;
    as<imFileAccessRec8>(access).filetype = fileType;
    RecordBytes record(kRecordBytes);
    auto& info = as<imFileInfoRec8>(record);
    info.privatedata = privateData;
    info.streamIdx = stream;
    info.vidInfo.importerID = kImporterId;
    apply(kAccess, access);
    apply(imGetInfo8, record);
    call(imGetInfo8, access.data(), record.data());
}

void PlayedHost::pixelFormat(csSDK_int32 index) {
    RecordBytes record(kRecordBytes);
    as<imIndPixelFormatRec>(record).privatedata = privateData;
    apply(imGetIndPixelFormat, record);
    call(imGetIndPixelFormat, hostkit::asPointer(index), record.data());
}

void PlayedHost::layout() {
    RecordBytes record(kRecordBytes);
    as<imGetAudioChannelLayoutRec>(record).inPrivateData = privateData;
    call(imGetAudioChannelLayout, reference, record.data());
}

void PlayedHost::analysis() {
    char buffer[256];
    RecordBytes record(kRecordBytes);
    auto& analysis = as<imAnalysisRec>(record);
    analysis.privatedata = privateData;
    analysis.buffersize = sizeof(buffer);
    analysis.buffer = buffer;
    apply(imAnalysis, record);
    call(imAnalysis, reference, record.data());
}

void PlayedHost::askForSamples() {
    RecordBytes record(kRecordBytes);
    as<imDataRateAnalysisRec>(record).privatedata = privateData;
    apply(imDataRateAnalysis, record);
    call(imDataRateAnalysis, reference, record.data());
}

void PlayedHost::takeSamples() {
    std::array<imDataSample, 12> samples;
    RecordBytes record(kRecordBytes);
    auto& analysis = as<imDataRateAnalysisRec>(record);
    analysis.privatedata = privateData;
    analysis.buffersize = sizeof(samples);
    analysis.buffer = samples.data();
    apply(kSamples, record);
    call(imDataRateAnalysis, reference, record.data());
}

void PlayedHost::audio() {
    float sound[2][kSoundFrames];
    float* channels[2] = {sound[0], sound[1]};
    RecordBytes record(kRecordBytes);
    auto& import = as<imImportAudioRec7>(record);
    import.size = kSoundFrames;
    import.buffer = channels;
    import.privateData = privateData;
    apply(imImportAudio7, record);
    call(imImportAudio7, reference, record.data());
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
    RecordBytes record(kRecordBytes);
    fillVideo(record.data(), privateData, &delivered);
    apply(imGetSourceVideo, record);
    if (call(imGetSourceVideo, reference, record.data()) == imNoErr) {
        good.frames.Dispose(delivered);
    }
}

// --- Asynchronous -------------------------------------------------------------------------------------------------

void PlayedHost::createAsync() {
    RecordBytes record(kRecordBytes);
    auto& creation = as<imAsyncImporterCreationRec>(record);
    creation.inPrivateData = privateData;
    apply(imCreateAsyncImporter, record);
    call(imCreateAsyncImporter, record.data());
    asyncEntry = creation.outAsyncEntry;
    asyncData = creation.outAsyncPrivateData;
}

csSDK_int32 PlayedHost::async(csSDK_int32 selector, void* parameter) {
    return asyncEntry ? asyncEntry(selector, parameter) : static_cast<csSDK_int32>(aiUnknownError);
}

void PlayedHost::announce() {
    RecordBytes record(kRecordBytes);
    as<aiAsyncRequest>(record).inPrivateData = asyncData;
    fillVideo(record.data() + 12, asyncData, nullptr);
    apply(kAsync + aiInitiateAsyncRead, record);
    async(aiInitiateAsyncRead, record.data());
}

void PlayedHost::getFrame() {
    PPixHand delivered = nullptr;
    RecordBytes record(kRecordBytes);
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
