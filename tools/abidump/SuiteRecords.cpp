// The host's tables of functions: those in the standard parameters, and the suites with their names.
#include "abidump/Tables.h"

namespace abidump {

std::vector<Record> callbackTables() {
    return {
        RECORD(SPBasicSuite, MEMBER(AcquireSuite), MEMBER(ReleaseSuite), MEMBER(IsEqual), MEMBER(AllocateBlock),
               MEMBER(FreeBlock), MEMBER(ReallocateBlock), MEMBER(Undefined)),
        RECORD(PlugMemoryFuncs, MEMBER(newPtr), MEMBER(setPtrSize), MEMBER(getPtrSize), MEMBER(disposePtr),
               MEMBER(newHandle), MEMBER(setHandleSize), MEMBER(getHandleSize), MEMBER(disposeHandle),
               MEMBER(newPtrClear), MEMBER(newHandleClear), MEMBER(lockHandle), MEMBER(unlockHandle)),
        RECORD(PlugUtilFuncs, MEMBER(getSettings), MEMBER(getSerialNumber), MEMBER(getFileTimebase),
               MEMBER(getFileVideo), MEMBER(getFileAudioSecond), MEMBER(getPlugInResFile), MEMBER(getFileVideoBounds),
               MEMBER(getSPBasicSuite), MEMBER(getFileExtString)),
        RECORD(piSuites, MEMBER(piInterfaceVer), MEMBER(memFuncs), MEMBER(windFuncs), MEMBER(ppixFuncs),
               MEMBER(utilFuncs), MEMBER(timelineFuncs)),
        RECORD(ClassDataFuncs, MEMBER(setClassData), MEMBER(getClassData)),
        RECORD(imCallbackFuncs, MEMBER(classFuncs), MEMBER(unused1), MEMBER(unused2)),
        RECORD(imStdParms, MEMBER(imInterfaceVer), MEMBER(funcs), MEMBER(piSuites)),
    };
}

std::vector<Record> suiteTables() {
    return {
        RECORD(PrSDKPPixCreatorSuite, MEMBER(CreatePPix), MEMBER(ClonePPix)),
        RECORD(PrSDKPPixSuite, MEMBER(Dispose), MEMBER(GetPixels), MEMBER(GetBounds), MEMBER(GetRowBytes),
               MEMBER(GetPixelAspectRatio), MEMBER(GetPixelFormat), MEMBER(GetUniqueKey), MEMBER(GetUniqueKeySize),
               MEMBER(GetRenderTime)),
        RECORD(PrSDKPPixCacheSuite, MEMBER(functions)),
        RECORD(PrSDKTimeSuite, MEMBER(GetTicksPerSecond), MEMBER(GetTicksPerVideoFrame),
               MEMBER(GetTicksPerAudioSample)),
        RECORD(PrSDKImageProcessingSuite, MEMBER(FormatIsCompressed), MEMBER(FormatHasAlpha),
               MEMBER(FormatIsOriginTopLeft), MEMBER(GetSizeForPixelBuffer), MEMBER(ScaleConvert),
               MEMBER(CompressDV100720p), MEMBER(StampDVFrameAspect)),
        RECORD(PrSDKAudioSuite, MEMBER(ConvertAndInterleaveTo8BitInteger), MEMBER(ConvertAndInterleaveTo16BitInteger),
               MEMBER(ConvertAndInterleaveTo24BitInteger), MEMBER(ConvertAndInterleaveTo32BitInteger),
               MEMBER(UninterleaveAndConvertFrom8BitInteger), MEMBER(UninterleaveAndConvertFrom16BitInteger),
               MEMBER(UninterleaveAndConvertFrom24BitInteger), MEMBER(UninterleaveAndConvertFrom32BitInteger)),
        RECORD(PrSDKErrorSuite3, MEMBER(SetEventStringUnicode)),
    };
}

std::vector<Suite> suites() {
    return {
        {"PrSDKPPixCreatorSuite", kPrSDKPPixCreatorSuite, kPrSDKPPixCreatorSuiteVersion},
        {"PrSDKPPixSuite", kPrSDKPPixSuite, kPrSDKPPixSuiteVersion},
        {"PrSDKPPixCacheSuite", kPrSDKPPixCacheSuite, kPrSDKPPixCacheSuiteVersion},
        {"PrSDKTimeSuite", kPrSDKTimeSuite, kPrSDKTimeSuiteVersion},
        {"PrSDKImageProcessingSuite", kPrSDKImageProcessingSuite, kPrSDKImageProcessingSuiteVersion},
        {"PrSDKAudioSuite", kPrSDKAudioSuite, kPrSDKAudioSuiteVersion},
        {"PrSDKErrorSuite3", kPrSDKErrorSuite, kPrSDKErrorSuiteVersion3},
    };
}

}  // namespace abidump
