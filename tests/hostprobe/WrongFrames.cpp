// Hosts whose frames are not what was asked for. Each is wrong for one shape only: bgrx, 37 x 5.
#include "WrongCase.h"

using enum hostprobe::Sentence;
using Host = PlayedHost;

namespace {

constexpr csSDK_int32 kChosenWidth = 37;

const HostTables& good() { return Host::current().good; }

bool isChosen(PrPixelFormat format, csSDK_int32 width) {
    return format == PrPixelFormat_BGRX_4444_8u && width == kChosenWidth;
}

bool isChosen(PPixHand frame) {
    PrPixelFormat format = PrPixelFormat_Invalid;
    prRect bounds;
    good().frames.GetPixelFormat(frame, &format);
    good().frames.GetBounds(frame, &bounds);
    return isChosen(format, bounds.right - bounds.left);
}

template <class Spoil>
auto spoilt(Spoil spoil) {
    return [spoil](Host& host) {
        spoil(host.used);
        host.play();
    };
}

// The functions that ask a frame for one value, with another value or another result for the chosen shape.
template <auto Function, class Value>
struct Answering {
    static inline Value value = {};
    static inline prSuiteError error = 0;

    static prSuiteError call(PPixHand frame, Value* out) {
        const prSuiteError result = (good().frames.*Function)(frame, out);
        if (!isChosen(frame)) {
            return result;
        }
        *out = error < 0 ? *out : value;
        return error;
    }
    static auto with(Value other, prSuiteError result = 0) {
        return spoilt([other, result](HostTables& used) {
            value = other;
            error = result;
            used.frames.*Function = call;
        });
    }
};

using RowBytes = Answering<&PrSDKPPixSuite::GetRowBytes, csSDK_int32>;
using Format = Answering<&PrSDKPPixSuite::GetPixelFormat, PrPixelFormat>;
using Bounds = Answering<&PrSDKPPixSuite::GetBounds, prRect>;
using RenderTimes = Answering<&PrSDKPPixSuite::GetRenderTime, csSDK_int32>;

// Rows of 160 bytes where the policy wants 256; everything that is said of sizes agrees with it.
void shorterRows(HostTables& used) {
    used.frames.GetRowBytes = [](PPixHand frame, csSDK_int32* rowBytes) {
        const prSuiteError error = good().frames.GetRowBytes(frame, rowBytes);
        *rowBytes = isChosen(frame) ? 160 : *rowBytes;
        return error;
    };
    used.image.GetSizeForPixelBuffer = [](PrPixelFormat format, csSDK_int32 width, csSDK_int32 height,
                                          csSDK_int32* bytes) {
        const prSuiteError error = good().image.GetSizeForPixelBuffer(format, width, height, bytes);
        *bytes = isChosen(format, width) ? 160 * height : *bytes;
        return error;
    };
}

template <csSDK_int32 Height, csSDK_int32 Bytes>
void otherSize(HostTables& used) {
    used.image.GetSizeForPixelBuffer = [](PrPixelFormat format, csSDK_int32 width, csSDK_int32 height,
                                          csSDK_int32* bytes) {
        const prSuiteError error = good().image.GetSizeForPixelBuffer(format, width, height, bytes);
        *bytes = isChosen(format, width) && height == Height ? Bytes : *bytes;
        return error;
    };
}

// GetPixels of the chosen shape moved by Offset, or null for another Access.
template <PrPPixBufferAccess Access, int Offset, bool IsNull>
void otherPixels(HostTables& used) {
    used.frames.GetPixels = [](PPixHand frame, PrPPixBufferAccess access, char** pixels) {
        const prSuiteError error = good().frames.GetPixels(frame, access, pixels);
        if (access == Access && *pixels && isChosen(frame)) {
            *pixels = IsNull ? nullptr : *pixels + Offset;
        }
        return error;
    };
}

WrongCases wrongCreation() {
    return {
        {"FrameRefused", FrameRefused, "CreatePPix gave no frame (bgrx, 37 x 5).", spoilt([](HostTables& used) {
             used.creator.CreatePPix = [](PPixHand* out, PrPPixBufferAccess access, PrPixelFormat format,
                                          const prRect* bounds) {
                 *out = nullptr;
                 return isChosen(format, bounds->right - bounds->left)
                            ? prSuiteError{-1}
                            : good().creator.CreatePPix(out, access, format, bounds);
             };
         })},
        {"FrameThatIsNull", FrameRefused, "CreatePPix gave no frame (bgrx, 37 x 5).", spoilt([](HostTables& used) {
             used.creator.CreatePPix = [](PPixHand* out, PrPPixBufferAccess access, PrPixelFormat format,
                                          const prRect* bounds) {
                 *out = nullptr;
                 return isChosen(format, bounds->right - bounds->left)
                            ? prSuiteError{0}
                            : good().creator.CreatePPix(out, access, format, bounds);
             };
         })},
        {"ReadOnlyFrame", ReadOnlyFrame, "CreatePPix gave a frame that nobody could write to.",
         spoilt([](HostTables& used) {
             used.creator.CreatePPix = [](PPixHand* out, PrPPixBufferAccess, PrPixelFormat format,
                                          const prRect* bounds) {
                 return good().creator.CreatePPix(out, PrPPixBufferAccess_WriteOnly, format, bounds);
             };
         })},
        {"CloneThatDiffers", CloneDiffers, "ClonePPix gave a frame that differs from its source (bgrx, 37 x 5).",
         spoilt([](HostTables& used) {
             used.creator.ClonePPix = [](PPixHand source, PPixHand* out, PrPPixBufferAccess access) {
                 const prSuiteError error = good().creator.ClonePPix(source, out, access);
                 char* pixels = nullptr;
                 good().frames.GetPixels(*out, PrPPixBufferAccess_ReadOnly, &pixels);
                 pixels[0] = static_cast<char>(isChosen(source) ? pixels[0] + 1 : pixels[0]);
                 return error;
             };
         })},
        {"CloneFails", CallFailed, "ClonePPix failed with -1.", spoilt([](HostTables& used) {
             used.creator.ClonePPix = [](PPixHand, PPixHand*, PrPPixBufferAccess) { return prSuiteError{-1}; };
         })},
        {"DisposeFails", CallFailed, "Dispose failed with -2.", spoilt([](HostTables& used) {
             used.frames.Dispose = [](PPixHand frame) { return good().frames.Dispose(frame) - 2; };
         })},
    };
}

WrongCases wrongShapes() {
    prRect shifted;
    shifted.right = kChosenWidth;
    shifted.bottom = 6;
    return {
        {"OtherFormat", FrameFormat, "GetPixelFormat gave another format than the frame was made with (bgrx, 37 x 5).",
         Format::with(PrPixelFormat_BGRA_4444_8u)},
        {"GetPixelFormatFails", CallFailed, "GetPixelFormat failed with -1.", Format::with({}, -1)},
        {"OtherBounds", FrameBounds, "GetBounds gave other bounds than the frame was made with (bgrx, 37 x 5).",
         Bounds::with(shifted)},
        {"GetBoundsFails", CallFailed, "GetBounds failed with -1.", Bounds::with({}, -1)},
        {"RowsTooShort", RowsTooShort, "GetRowBytes gave 147, too few for a row (bgrx, 37 x 5).", RowBytes::with(147)},
        {"NegativeRowsTooShort", RowsTooShort, "GetRowBytes gave -147, too few for a row (bgrx, 37 x 5).",
         RowBytes::with(-147)},
        {"GetRowBytesFails", CallFailed, "GetRowBytes failed with -1.", RowBytes::with({}, -1)},
        {"RowsOfAnotherPolicy", RowPolicy, "GetRowBytes gave 160, not 256 (bgrx, 37 x 5).", spoilt(shorterRows),
         "rows=rounded"},
        {"SizeOfOneRow", RowSize, "GetSizeForPixelBuffer gave 300 for one row, GetRowBytes 256 (bgrx, 37 x 5).",
         spoilt(otherSize<1, 300>)},
        {"SizeOfAllRows", FrameSize, "GetSizeForPixelBuffer gave 1279, too few for 1280 (bgrx, 37 x 5).",
         spoilt(otherSize<5, 1279>)},
        {"NegativeRenderTime", RenderTime, "GetRenderTime gave -1 milliseconds (bgrx, 37 x 5).", RenderTimes::with(-1)},
        {"GetRenderTimeFails", CallFailed, "GetRenderTime failed with -1.", RenderTimes::with({}, -1)},
        {"NoPixelAspect", PixelAspect, "GetPixelAspectRatio gave 1:0 (bgrx, 37 x 5).", spoilt([](HostTables& used) {
             used.frames.GetPixelAspectRatio = [](PPixHand frame, csSDK_uint32* num, csSDK_uint32* den) {
                 *num = 1;
                 *den = isChosen(frame) ? 0 : 1;
                 return prSuiteError{0};
             };
         })},
        {"GetPixelAspectRatioFails", CallFailed, "GetPixelAspectRatio failed with -1.", spoilt([](HostTables& used) {
             used.frames.GetPixelAspectRatio = [](PPixHand, csSDK_uint32*, csSDK_uint32*) { return prSuiteError{-1}; };
         })},
        {"EmptyKey", KeySize, "GetUniqueKeySize gave 0.", spoilt([](HostTables& used) {
             used.frames.GetUniqueKeySize = [](csSDK_size_t* size) {
                 *size = 0;
                 return prSuiteError{0};
             };
         })},
        {"GetUniqueKeySizeFails", CallFailed, "GetUniqueKeySize failed with -1.", spoilt([](HostTables& used) {
             used.frames.GetUniqueKeySize = [](csSDK_size_t*) { return prSuiteError{-1}; };
         })},
        {"GetUniqueKeyFails", CallFailed, "GetUniqueKey failed with -1.", spoilt([](HostTables& used) {
             used.frames.GetUniqueKey = [](PPixHand, unsigned char*, csSDK_size_t) { return prSuiteError{-1}; };
         })},
        {"GetSizeFails", CallFailed, "GetSizeForPixelBuffer failed with -1.", spoilt([](HostTables& used) {
             used.image.GetSizeForPixelBuffer = [](PrPixelFormat, csSDK_int32, csSDK_int32, csSDK_int32*) {
                 return prSuiteError{-1};
             };
         })},
    };
}

WrongCases wrongPixels() {
    return {
        {"NothingToWrite", NoPixels, "GetPixels gave no pixels to write (bgrx, 37 x 5).",
         spoilt(otherPixels<PrPPixBufferAccess_WriteOnly, 0, true>)},
        {"NothingToRead", NoPixels, "GetPixels gave no pixels to read (bgrx, 37 x 5).",
         spoilt(otherPixels<PrPPixBufferAccess_ReadOnly, 0, true>)},
        {"MisalignedByOne", PixelsMisaligned, "GetPixels gave pixels that are not aligned to 16 bytes (bgrx, 37 x 5).",
         spoilt(otherPixels<PrPPixBufferAccess_WriteOnly, 1, false>)},
        {"MisalignedByEight", PixelsMisaligned,
         "GetPixels gave pixels that are not aligned to 16 bytes (bgrx, 37 x 5).",
         spoilt(otherPixels<PrPPixBufferAccess_WriteOnly, 8, false>)},
        {"ReadableFrame", ReadablePixels,
         "GetPixels gave pixels to read of a frame that can only be written (bgrx, 37 x 5).",
         spoilt([](HostTables& used) {
             used.frames.GetPixels = [](PPixHand frame, PrPPixBufferAccess access, char** pixels) {
                 const prSuiteError error = good().frames.GetPixels(frame, access, pixels);
                 return *pixels || !isChosen(frame)
                            ? error
                            : good().frames.GetPixels(frame, PrPPixBufferAccess_WriteOnly, pixels);
             };
         })},
        {"GetPixelsFails", CallFailed, "GetPixels failed with -1.", spoilt([](HostTables& used) {
             used.frames.GetPixels = [](PPixHand, PrPPixBufferAccess, char**) { return prSuiteError{-1}; };
         })},
    };
}

}  // namespace

WrongCases wrongFrames() {
    WrongCases cases = wrongCreation();
    for (WrongCases& more : std::vector<WrongCases>{wrongShapes(), wrongPixels()}) {
        cases.insert(cases.end(), more.begin(), more.end());
    }
    return cases;
}
