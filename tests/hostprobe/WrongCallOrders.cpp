// Hosts that make calls in an order, or about a file, that no legal host does.
#include "WrongCase.h"

#include <thread>

using enum hostprobe::Sentence;

namespace {

void shutDownDuringNewPtr(Host& host) {
    host.init();
    host.format(0);
    host.used.memory.newPtr = [](csSDK_uint32 size) {
        Host::current().shutdown();
        return Host::current().good.memory.newPtr(size);
    };
    host.subTypes(host.fileType);
}

void soundDuringFrame(Host& host) {
    host.duringFrame = [&host] { std::thread([&host] { host.audio(); }).join(); };
    host.frame();
}

void otherPathAtReopen(Host& host) {
    host.quiet();
    host.path = u"other.probe";
    host.open();
    host.path = u"clip.probe";
}

// Opens a quiet file again, with another value in the record.
template <auto Member, csSDK_int32 Value>
void reopenWith(Host& host) {
    host.quiet();
    host.spoil[imOpenFile8] = [](char* record) { reinterpret_cast<imFileOpenRec8*>(record)->*Member = Value; };
    host.open();
}

// A call with another file reference than the importer's.
Play withOtherReference(Play call) {
    return within([call](Host& host) {
        const imFileRef right = host.reference;
        host.reference = &host;
        call(host);
        host.reference = right;
    });
}

void reopenWithOtherReference(Host& host) {
    host.quiet();
    host.reference = &host;
    host.open();
}

}  // namespace

WrongCases wrongCallOrders() {
    const std::string notStored = ": the file reference is not the one that this importer stored.";
    return {
        {"CallBeforeInit", InitNotFirst, "imGetSupports8 came before imInit.",
         [](Host& host) { host.call(imGetSupports8); host.play(); }},
        {"SecondInit", InitTwice, "imInit came a second time.", [](Host& host) { host.init(); host.play(); }},
        {"CallAfterShutdown", AfterShutdown, "imGetSupports8 came after imShutdown.",
         [](Host& host) { host.play(); host.call(imGetSupports8); }},
        {"AsyncCallAfterShutdown", AfterShutdown, "aiGetFrame came after imShutdown.",
         [](Host& host) { host.play(); host.getFrame(); }},
        {"ShutdownWithOpenFile", ShutdownWithOpenFile, "imShutdown came while a file was open.",
         [](Host& host) { host.begin(); host.shutdown(); }},
        {"ShutdownWithQuietFile", ShutdownWithOpenFile, "imShutdown came while a file was open.",
         [](Host& host) { host.begin(); host.quiet(); host.shutdown(); }},
        {"ShutdownDuringCall", ShutdownDuringCall, "imShutdown came while another call ran.", shutDownDuringNewPtr},
        {"NoShutdown", NoShutdown, "The library was unloaded without imShutdown.",
         [](Host& host) { host.begin(); host.close(); }},
        {"FormatOutOfTurn", IndexOutOfTurn, "imGetIndFormat asked for index 1 out of turn.",
         [](Host& host) { host.init(); host.format(1); host.shutdown(); }},
        {"FormatPastTheEnd", IndexOutOfTurn, "imGetIndFormat asked for index 2 out of turn.",
         [](Host& host) { host.init(); host.format(0); host.format(1); host.format(2); host.shutdown(); }},
        {"PixelFormatOutOfTurn", IndexOutOfTurn, "imGetIndPixelFormat asked for index 2 out of turn.",
         within([](Host& host) { host.pixelFormat(0); host.pixelFormat(2); })},
        {"SubTypesOfAnUnknownType", UnknownFileType, "imGetSubTypeNames asked for a file type that was not offered.",
         within([](Host& host) { host.subTypes(1); })},
        {"SecondClose", AfterClose, "imCloseFile came for a file that is closed.",
         [](Host& host) { host.begin(); host.close(); host.end(); }},
        {"FrameAfterClose", AfterClose, "imGetSourceVideo came for a file that is closed.",
         [](Host& host) { host.begin(); host.close(); host.frame(); host.shutdown(); }},
        {"SoundAfterClose", AfterClose, "imImportAudio7 came for a file that is closed.",
         [](Host& host) { host.begin(); host.close(); host.audio(); host.shutdown(); }},
        {"FrameWhileQuiet", WhileQuiet, "imGetSourceVideo came for a file that is quiet.",
         within([](Host& host) { host.quiet(); host.frame(); })},
        {"SecondQuiet", WhileQuiet, "imQuietFile came for a file that is quiet.",
         within([](Host& host) { host.quiet(); host.quiet(); })},
        {"SecondOpen", OpenTwice, "imOpenFile8 came for a file that is open.",
         within([](Host& host) { host.open(); })},
        {"FrameBeforeInfo", BeforeInfo, "imGetSourceVideo came before imGetInfo8.",
         [](Host& host) { host.init(); host.open(); host.frame(); host.end(); }},
        {"AsyncBeforeInfo", BeforeInfo, "imCreateAsyncImporter came before imGetInfo8.",
         [](Host& host) { host.init(); host.open(); host.createAsync(); host.end(); }},
        {"StreamPastTheLastPromise", StreamNotPromised,
         "imGetInfo8 asked for stream 2, which no answer had promised.", within([](Host& host) { host.info(2); })},
        {"StreamPastTheEnd", StreamNotPromised, "imGetInfo8 asked for stream 3, which no answer had promised.",
         within([](Host& host) { host.info(1); host.info(2); host.info(3); })},
        {"OtherReferenceForFrame", OtherFileReference, "imGetSourceVideo" + notStored,
         withOtherReference([](Host& host) { host.frame(); })},
        {"OtherReferenceForSound", OtherFileReference, "imImportAudio7" + notStored,
         withOtherReference([](Host& host) { host.audio(); })},
        {"OtherReferenceForInfo", OtherFileReference, "imGetInfo8" + notStored,
         withOtherReference([](Host& host) { host.info(0); })},
        {"OtherReferenceForLayout", OtherFileReference, "imGetAudioChannelLayout" + notStored,
         withOtherReference([](Host& host) { host.layout(); })},
        {"OtherReferenceForAnalysis", OtherFileReference, "imAnalysis" + notStored,
         withOtherReference([](Host& host) { host.analysis(); })},
        {"OtherReferenceForDataRate", OtherFileReference, "imDataRateAnalysis" + notStored,
         withOtherReference([](Host& host) { host.askForSamples(); })},
        {"OtherReferenceForReopen", OtherFileReference, "imOpenFile8" + notStored,
         within(reopenWithOtherReference)},
        {"OtherReferenceForQuiet", OtherFileReference, "imQuietFile" + notStored,
         [](Host& host) { host.begin(); host.reference = &host; host.quiet(); host.end(); }},
        {"OtherReferenceForClose", OtherFileReference, "imCloseFile" + notStored,
         [](Host& host) { host.begin(); host.reference = &host; host.end(); }},
        {"OtherPathForReopen", OtherPath, "imOpenFile8: the path is not the one that was opened first.",
         within(otherPathAtReopen)},
        {"OtherPathForInfo", OtherPath, "imGetInfo8: the path is not the one that was opened first.",
         within([](Host& host) { host.path = u"other.probe"; host.info(0); })},
        {"OtherIdForReopen", OtherImporterId,
         "imOpenFile8: the importer's number is not the one of the first opening.",
         within(reopenWith<&imFileOpenRec8::inImporterID, 7>)},
        {"OtherStreamForReopen", OtherStream, "imOpenFile8: the stream is not the one of the first opening.",
         within(reopenWith<&imFileOpenRec8::inStreamIdx, 1>)},
        {"SoundDuringFrame", CallsOverlap, "imImportAudio7 came while another call for the same file ran.",
         within(soundDuringFrame)},
    };
}
