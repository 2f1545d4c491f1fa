// The host's callback tables and suites. A suite is a table of functions in a fixed order, acquired by name and version
// from the basic suite.
#pragma once

#include "sdk/SdkPixelFormat.h"
#include "sdk/SdkTypes.h"

#pragma pack(push, 1)

// ---- tables reached from the standard parameters ---------------------------------------------------------------

using SPErr = csSDK_int32;
using SPBoolean = csSDK_int32;

inline constexpr SPErr kSPNoError = 0;
inline constexpr SPErr kSPSuiteNotFoundError = 0x53214664;

struct SPBasicSuite {
    SPErr (*AcquireSuite)(const char* name, csSDK_int32 version, const void** suite);
    SPErr (*ReleaseSuite)(const char* name, csSDK_int32 version);
    SPBoolean (*IsEqual)(const char* token1, const char* token2);
    SPErr (*AllocateBlock)(csSDK_size_t size, void** block);
    SPErr (*FreeBlock)(void* block);
    SPErr (*ReallocateBlock)(void* block, csSDK_size_t newSize, void** newBlock);
    SPErr (*Undefined)();
};
SDK_ASSERT_SIZE(SPBasicSuite, 56);
SDK_ASSERT_OFFSET(SPBasicSuite, ReleaseSuite, 8);

struct PlugMemoryFuncs {
    char* (*newPtr)(csSDK_uint32 size);
    void (*setPtrSize)(PrMemoryPtr* ptr, csSDK_uint32 newSize);
    csSDK_int32 (*getPtrSize)(char* ptr);
    void (*disposePtr)(char* ptr);
    char** (*newHandle)(csSDK_uint32 size);
    csSDK_int16 (*setHandleSize)(PrMemoryHandle handle, csSDK_uint32 newSize);
    csSDK_int32 (*getHandleSize)(PrMemoryHandle handle);
    void (*disposeHandle)(PrMemoryHandle handle);
    char* (*newPtrClear)(csSDK_uint32 size);
    char** (*newHandleClear)(csSDK_uint32 size);
    void (*lockHandle)(PrMemoryHandle handle);
    void (*unlockHandle)(PrMemoryHandle handle);
};
SDK_ASSERT_SIZE(PlugMemoryFuncs, 96);
SDK_ASSERT_OFFSET(PlugMemoryFuncs, getPtrSize, 16);

struct PlugUtilFuncs {
    csSDK_size_t (*getSettings)(csSDK_uint32 selector);
    void (*getSerialNumber)(char* buffer);
    csSDK_int32 (*getFileTimebase)(void* file, csSDK_int32 audioOnly, void* timebase);
    csSDK_int32 (*getFileVideo)(void* file, csSDK_int32 frame, PPixHand frameBuffer, prRect* bounds, csSDK_int32 flags);
    csSDK_int32 (*getFileAudioSecond)(void* file, csSDK_int32 second, char* buffer, csSDK_int16 format,
                                      csSDK_int32 rate, csSDK_int16 channels);
    void* (*getPlugInResFile)();
    csSDK_int32 (*getFileVideoBounds)(void* file, prRect* bounds);
    SPBasicSuite* (*getSPBasicSuite)();
    csSDK_int32 (*getFileExtString)(csSDK_uint32 types, char* buffer, csSDK_uint32 size);
};
SDK_ASSERT_SIZE(PlugUtilFuncs, 72);
SDK_ASSERT_OFFSET(PlugUtilFuncs, getSPBasicSuite, 56);

struct piSuites {
    csSDK_int32 piInterfaceVer;
    PlugMemoryFuncs* memFuncs;
    void* windFuncs;
    void* ppixFuncs;
    PlugUtilFuncs* utilFuncs;
    void* timelineFuncs;
};
SDK_ASSERT_SIZE(piSuites, 44);
SDK_ASSERT_OFFSET(piSuites, memFuncs, 4);
SDK_ASSERT_OFFSET(piSuites, utilFuncs, 28);

struct ClassDataFuncs {
    csSDK_int32 (*setClassData)(csSDK_uint32 classID, void* data);
    void* (*getClassData)(csSDK_uint32 classID);
};
SDK_ASSERT_SIZE(ClassDataFuncs, 16);

struct imCallbackFuncs {
    ClassDataFuncs* classFuncs;
    csSDK_int32 unused1;
    csSDK_int32 unused2;
};
SDK_ASSERT_SIZE(imCallbackFuncs, 16);

struct imStdParms {
    csSDK_int32 imInterfaceVer;
    imCallbackFuncs* funcs;
    ::piSuites* piSuites;
};
SDK_ASSERT_SIZE(imStdParms, 20);
SDK_ASSERT_OFFSET(imStdParms, funcs, 4);
SDK_ASSERT_OFFSET(imStdParms, piSuites, 12);

// Interface versions of hosts.
inline constexpr csSDK_int32 IMPORTMOD_VERSION_17 = 17;
inline constexpr csSDK_int32 IMPORTMOD_VERSION_18 = 18;
inline constexpr csSDK_int32 IMPORTMOD_VERSION_23 = 23;

// ---- suites ------------------------------------------------------------------------------------------------------

enum PrPPixBufferAccess : csSDK_int32 {
    PrPPixBufferAccess_ReadOnly = 0,
    PrPPixBufferAccess_WriteOnly = 1,
    PrPPixBufferAccess_ReadWrite = 2,
};

inline constexpr char kPrSDKPPixCreatorSuite[] = "Premiere PPix Creator Suite";
inline constexpr csSDK_int32 kPrSDKPPixCreatorSuiteVersion = 1;

struct PrSDKPPixCreatorSuite {
    prSuiteError (*CreatePPix)(PPixHand* outPPix, PrPPixBufferAccess access, PrPixelFormat format,
                               const prRect* bounds);
    prSuiteError (*ClonePPix)(PPixHand source, PPixHand* outPPix, PrPPixBufferAccess access);
};
SDK_ASSERT_SIZE(PrSDKPPixCreatorSuite, 16);

inline constexpr char kPrSDKPPixSuite[] = "Premiere PPix Suite";
inline constexpr csSDK_int32 kPrSDKPPixSuiteVersion = 1;

struct PrSDKPPixSuite {
    prSuiteError (*Dispose)(PPixHand ppix);
    prSuiteError (*GetPixels)(PPixHand ppix, PrPPixBufferAccess access, char** outPixels);
    prSuiteError (*GetBounds)(PPixHand ppix, prRect* outBounds);
    prSuiteError (*GetRowBytes)(PPixHand ppix, csSDK_int32* outRowBytes);
    prSuiteError (*GetPixelAspectRatio)(PPixHand ppix, csSDK_uint32* outNumerator, csSDK_uint32* outDenominator);
    prSuiteError (*GetPixelFormat)(PPixHand ppix, PrPixelFormat* outFormat);
    prSuiteError (*GetUniqueKey)(PPixHand ppix, unsigned char* key, csSDK_size_t size);
    prSuiteError (*GetUniqueKeySize)(csSDK_size_t* outSize);
    prSuiteError (*GetRenderTime)(PPixHand ppix, csSDK_int32* outMilliseconds);
};
SDK_ASSERT_SIZE(PrSDKPPixSuite, 72);
SDK_ASSERT_OFFSET(PrSDKPPixSuite, GetPixels, 8);
SDK_ASSERT_OFFSET(PrSDKPPixSuite, GetRowBytes, 24);

// Acquired and held, never called.
inline constexpr char kPrSDKPPixCacheSuite[] = "Premiere PPix Cache Suite";
inline constexpr csSDK_int32 kPrSDKPPixCacheSuiteVersion = 6;

struct PrSDKPPixCacheSuite {
    void (*functions[14])();
};
SDK_ASSERT_SIZE(PrSDKPPixCacheSuite, 112);

inline constexpr char kPrSDKTimeSuite[] = "Premiere Time Suite";
inline constexpr csSDK_int32 kPrSDKTimeSuiteVersion = 1;

struct PrSDKTimeSuite {
    prSuiteError (*GetTicksPerSecond)(PrTime* outTicksPerSecond);
    prSuiteError (*GetTicksPerVideoFrame)(csSDK_int32 rate, PrTime* outTicksPerFrame);
    prSuiteError (*GetTicksPerAudioSample)(float rate, PrTime* outTicksPerSample);
};
SDK_ASSERT_SIZE(PrSDKTimeSuite, 24);

inline constexpr char kPrSDKImageProcessingSuite[] = "Premiere Image Processing Suite";
inline constexpr csSDK_int32 kPrSDKImageProcessingSuiteVersion = 2;

struct PrSDKImageProcessingSuite {
    prSuiteError (*FormatIsCompressed)(PrPixelFormat format, prBool* outIsCompressed);
    prSuiteError (*FormatHasAlpha)(PrPixelFormat format, prBool* outHasAlpha);
    prSuiteError (*FormatIsOriginTopLeft)(PrPixelFormat format, prBool* outIsTopLeft);
    prSuiteError (*GetSizeForPixelBuffer)(PrPixelFormat format, csSDK_int32 width, csSDK_int32 height,
                                          csSDK_int32* outBytes);
    prSuiteError (*ScaleConvert)(PrPixelFormat sourceFormat, csSDK_uint32 sourceWidth, csSDK_uint32 sourceHeight,
                                 csSDK_uint32 sourceRowBytes, csSDK_int32 sourceFieldType, const void* sourceData,
                                 PrPixelFormat format, csSDK_uint32 width, csSDK_uint32 height, csSDK_uint32 rowBytes,
                                 csSDK_int32 fieldType, void* data, csSDK_int32 quality);
    prSuiteError (*CompressDV100720p)(PrPixelFormat sourceFormat, csSDK_uint32 sourceWidth, csSDK_uint32 sourceHeight,
                                      csSDK_uint32 sourceRowBytes, const void* sourceData, PrPixelFormat format,
                                      csSDK_size_t length, void* data, csSDK_int32 channelOffset, csSDK_int32 quality);
    prSuiteError (*StampDVFrameAspect)(PrPixelFormat format, void* data, csSDK_int32 size, prBool isWide);
};
SDK_ASSERT_SIZE(PrSDKImageProcessingSuite, 56);
SDK_ASSERT_OFFSET(PrSDKImageProcessingSuite, FormatHasAlpha, 8);
SDK_ASSERT_OFFSET(PrSDKImageProcessingSuite, FormatIsOriginTopLeft, 16);
SDK_ASSERT_OFFSET(PrSDKImageProcessingSuite, GetSizeForPixelBuffer, 24);

inline constexpr char kPrSDKAudioSuite[] = "Premiere Audio Suite";
inline constexpr csSDK_int32 kPrSDKAudioSuiteVersion = 1;

struct PrSDKAudioSuite {
    prSuiteError (*ConvertAndInterleaveTo8BitInteger)(const float** source, char* out, csSDK_uint32 channels,
                                                      csSDK_uint32 frames);
    prSuiteError (*ConvertAndInterleaveTo16BitInteger)(const float** source, csSDK_int16* out, csSDK_uint32 channels,
                                                       csSDK_uint32 frames);
    prSuiteError (*ConvertAndInterleaveTo24BitInteger)(const float** source, char* out, csSDK_uint32 channels,
                                                       csSDK_uint32 frames);
    prSuiteError (*ConvertAndInterleaveTo32BitInteger)(const float** source, csSDK_int32* out, csSDK_uint32 channels,
                                                       csSDK_uint32 frames);
    prSuiteError (*UninterleaveAndConvertFrom8BitInteger)(const char* source, float** out, csSDK_uint32 channels,
                                                          csSDK_uint32 frames);
    prSuiteError (*UninterleaveAndConvertFrom16BitInteger)(const csSDK_int16* source, float** out,
                                                           csSDK_uint32 channels, csSDK_uint32 frames);
    prSuiteError (*UninterleaveAndConvertFrom24BitInteger)(const char* source, float** out, csSDK_uint32 channels,
                                                           csSDK_uint32 frames);
    prSuiteError (*UninterleaveAndConvertFrom32BitInteger)(const csSDK_int32* source, float** out,
                                                           csSDK_uint32 channels, csSDK_uint32 frames);
};
SDK_ASSERT_SIZE(PrSDKAudioSuite, 64);
SDK_ASSERT_OFFSET(PrSDKAudioSuite, UninterleaveAndConvertFrom8BitInteger, 32);
SDK_ASSERT_OFFSET(PrSDKAudioSuite, UninterleaveAndConvertFrom16BitInteger, 40);
SDK_ASSERT_OFFSET(PrSDKAudioSuite, UninterleaveAndConvertFrom24BitInteger, 48);
SDK_ASSERT_OFFSET(PrSDKAudioSuite, UninterleaveAndConvertFrom32BitInteger, 56);

inline constexpr char kPrSDKErrorSuite[] = "Premiere Error Suite";
inline constexpr csSDK_int32 kPrSDKErrorSuiteVersion3 = 3;

enum PrErrorEventType : csSDK_uint32 {
    kEventTypeInformational = 1,
    kEventTypeWarning = 2,
    kEventTypeError = 3,
};

struct PrSDKErrorSuite3 {
    prSuiteError (*SetEventStringUnicode)(csSDK_uint32 eventType, prUTF16Char* title, prUTF16Char* text);
};
SDK_ASSERT_SIZE(PrSDKErrorSuite3, 8);

#pragma pack(pop)
