// Everything that the probe can complain about, one sentence each. {0}, {1} ... are replaced by details.
#pragma once

#include <cstddef>

namespace hostprobe {

#define HOSTPROBE_SENTENCES(SENTENCE) \
    /* the order of calls */ \
    SENTENCE(InitNotFirst, "{0} came before imInit.") \
    SENTENCE(InitTwice, "imInit came a second time.") \
    SENTENCE(AfterShutdown, "{0} came after imShutdown.") \
    SENTENCE(ShutdownWithOpenFile, "imShutdown came while a file was open.") \
    SENTENCE(ShutdownWithOpenAsync, "imShutdown came while an asynchronous importer was open.") \
    SENTENCE(ShutdownDuringCall, "imShutdown came while another call ran.") \
    SENTENCE(NoShutdown, "The library was unloaded without imShutdown.") \
    SENTENCE(IndexOutOfTurn, "{0} asked for index {1} out of turn.") \
    SENTENCE(UnknownFileType, "imGetSubTypeNames asked for a file type that was not offered.") \
    SENTENCE(UnknownPrivateData, "{0}: the private data is not from this importer.") \
    SENTENCE(AfterClose, "{0} came for a file that is closed.") \
    SENTENCE(WhileQuiet, "{0} came for a file that is quiet.") \
    SENTENCE(OpenTwice, "imOpenFile8 came for a file that is open.") \
    SENTENCE(BeforeInfo, "{0} came before imGetInfo8.") \
    SENTENCE(StreamNotPromised, "imGetInfo8 asked for stream {0}, which no answer had promised.") \
    SENTENCE(OtherFileReference, "{0}: the file reference is not the one that this importer stored.") \
    SENTENCE(OtherFileType, "{0}: the file type is not the one that this importer returned.") \
    SENTENCE(OtherPath, "{0}: the path is not the one that was opened first.") \
    SENTENCE(OtherImporterId, "{0}: the importer's number is not the one of the first opening.") \
    SENTENCE(OtherStream, "imOpenFile8: the stream is not the one of the first opening.") \
    SENTENCE(CallsOverlap, "{0} came while another call for the same file ran.") \
    /* parameters and records */ \
    SENTENCE(ParameterMissing, "{0}: {1} is missing.") \
    SENTENCE(NotZero, "{0}: the record is not zero at {1}.") \
    SENTENCE(BadValue, "{0}: {1} has a value that no host sends.") \
    SENTENCE(FormatCount, "{0}: the number of formats does not fit their list.") \
    SENTENCE(FormatsChanged, "{0}: the list of formats changed during the call.") \
    SENTENCE(BuffersOverlap, "imImportAudio7: the buffers of two channels overlap.") \
    SENTENCE(SamplesNotAskedFor, "imDataRateAnalysis: a buffer came before its size was asked for.") \
    SENTENCE(SamplesDoNotFit, "imDataRateAnalysis: the buffer has {0} bytes where {1} were asked for.") \
    /* tables of functions */ \
    SENTENCE(StdParmsChanged, "{0}: the standard parameters are not those of the first call.") \
    SENTENCE(InterfaceVersion, "The interface version is {0}, not {1}.") \
    SENTENCE(SuitesVersion, "The version of the plug-in suites is {0}, not 9.") \
    SENTENCE(CallbacksNotZero, "The unused members of the callback functions are not zero.") \
    SENTENCE(FunctionMissing, "{0}: function {1} is missing.") \
    SENTENCE(SerialNumber, "getSerialNumber returned no text that ends within 40 bytes.") \
    SENTENCE(NoMemory, "{0} returned no memory.") \
    SENTENCE(MemoryShared, "{0} returned memory that is in use.") \
    SENTENCE(MemorySize, "{0} returned {1} for {2} bytes.") \
    SENTENCE(MemoryNotClear, "{0} returned memory that is not zero.") \
    SENTENCE(ContentLost, "{0} lost the content.") \
    SENTENCE(CallFailed, "{0} failed with {1}.") \
    SENTENCE(IsEqual, "IsEqual returned {0} for {1} texts.") \
    SENTENCE(InventedSuite, "AcquireSuite returned no error for a suite that no host has.") \
    SENTENCE(AddressOfNoSuite, "AcquireSuite failed without writing null.") \
    SENTENCE(SuiteRefused, "AcquireSuite did not give version {1} of the {0}.") \
    SENTENCE(SuiteGiven, "AcquireSuite returned version {1} of the {0}, which this host lacks.") \
    SENTENCE(SuiteMoved, "AcquireSuite returned the {0} at two addresses.") \
    SENTENCE(SuiteGone, "The {0} did not outlive its first release of two.") \
    /* frames */ \
    SENTENCE(FrameRefused, "CreatePPix returned no frame ({0}).") \
    SENTENCE(ReadOnlyFrame, "CreatePPix returned a frame that nobody could write to.") \
    SENTENCE(FrameFormat, "GetPixelFormat returned another format than the frame was made with ({0}).") \
    SENTENCE(FrameBounds, "GetBounds returned other bounds than the frame was made with ({0}).") \
    SENTENCE(RowsTooShort, "GetRowBytes returned {1}, too few for a row ({0}).") \
    SENTENCE(RowPolicy, "GetRowBytes returned {1}, not {2} ({0}).") \
    SENTENCE(RowSize, "GetSizeForPixelBuffer returned {1} for one row, GetRowBytes {2} ({0}).") \
    SENTENCE(FrameSize, "GetSizeForPixelBuffer returned {1}, too few for {2} ({0}).") \
    SENTENCE(NoPixels, "GetPixels returned no pixels to {1} ({0}).") \
    SENTENCE(ReadablePixels, "GetPixels returned pixels to read of a frame that can only be written ({0}).") \
    SENTENCE(PixelsMisaligned, "GetPixels returned pixels that are not aligned to 16 bytes ({0}).") \
    SENTENCE(PixelAspect, "GetPixelAspectRatio returned {1}:{2} ({0}).") \
    SENTENCE(KeySize, "GetUniqueKeySize returned {0}.") \
    SENTENCE(RenderTime, "GetRenderTime returned {1} milliseconds ({0}).") \
    SENTENCE(CloneDiffers, "ClonePPix returned a frame that differs from its source ({0}).") \
    SENTENCE(OutFrameMissing, "{0}: there is no place for the frame.") \
    /* other suites */ \
    SENTENCE(TicksPerSecond, "GetTicksPerSecond returned {0}, not {1}.") \
    SENTENCE(TicksPerFrame, "GetTicksPerVideoFrame returned {0} for rate {1}.") \
    SENTENCE(TicksPerSample, "GetTicksPerAudioSample returned {0} with result {1} for {2} Hz.") \
    SENTENCE(NoBoolean, "{0} returned {1}, neither 0 nor 1 ({2}).") \
    SENTENCE(WrongBoolean, "{0} returned {1} ({2}).") \
    SENTENCE(FromInteger, "{0} returned {1} for {2}.") \
    SENTENCE(ToInteger, "{0} returned {1} for {2}.") \
    SENTENCE(SoundOverrun, "{0} wrote past its buffer.") \
    /* asynchronous importers */ \
    SENTENCE(AsyncUnexpected, "imCreateAsyncImporter came from a host that knows no asynchronous importers.") \
    SENTENCE(AsyncUnknown, "{0}: the private data is not from an asynchronous importer.") \
    SENTENCE(AsyncAfterClose, "{0} came after aiClose.") \
    SENTENCE(AsyncNotFlushed, "aiClose came without aiFlush before it.") \
    SENTENCE(AsyncDuringFlush, "aiFlush and another call ran at the same time.")

enum class Sentence : std::size_t {
#define HOSTPROBE_NAME(name, text) name,
    HOSTPROBE_SENTENCES(HOSTPROBE_NAME)
#undef HOSTPROBE_NAME
    Count
};

inline constexpr const char* kSentences[] = {
#define HOSTPROBE_TEXT(name, text) text,
    HOSTPROBE_SENTENCES(HOSTPROBE_TEXT)
#undef HOSTPROBE_TEXT
};

constexpr const char* textOf(Sentence sentence) { return kSentences[static_cast<std::size_t>(sentence)]; }

}  // namespace hostprobe
