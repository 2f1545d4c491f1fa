// Hosts whose frames are not as requested. Each is wrong for one shape only: bgrx, 37 x 5.
#include "WrongCase.h"

using enum hostprobe::Sentence;

namespace {

constexpr csSDK_int32 kChosenWidth = 37;

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

// Frames of the chosen shape are not created; the result is `error`.
template <prSuiteError Error>
Play refusing() {
    return spoilt([](Host& host) {
        host.used.creator.CreatePPix = [](PPixHand* out, PrPPixBufferAccess access, PrPixelFormat format,
                                          const prRect* bounds) {
            *out = nullptr;
            return isChosen(format, bounds->right - bounds->left)
                       ? Error
                       : good().creator.CreatePPix(out, access, format, bounds);
        };
    });
}

// A function that asks a frame for one value returns `Other` for the chosen shape.
template <auto Other, class Value>
Play telling(prSuiteError (*PrSDKPPixSuite::*function)(PPixHand frame, Value* out)) {
    return changed(function, [](PPixHand frame, Value* out) { *out = isChosen(frame) ? Other : *out; });
}

template <csSDK_int32 Height, csSDK_int32 Bytes>
Play otherSize() {
    return changed(&PrSDKImageProcessingSuite::GetSizeForPixelBuffer,
                   [](PrPixelFormat format, csSDK_int32 width, csSDK_int32 height, csSDK_int32* bytes) {
                       *bytes = isChosen(format, width) && height == Height ? Bytes : *bytes;
                   });
}

// Rows of 160 bytes where the policy requires 256; all sizes agree with it.
void shorterRows(Host& host) {
    host.used.frames.GetRowBytes = [](PPixHand frame, csSDK_int32* rowBytes) {
        const prSuiteError error = good().frames.GetRowBytes(frame, rowBytes);
        *rowBytes = isChosen(frame) ? 160 : *rowBytes;
        return error;
    };
    host.used.image.GetSizeForPixelBuffer = [](PrPixelFormat format, csSDK_int32 width, csSDK_int32 height,
                                               csSDK_int32* bytes) {
        const prSuiteError error = good().image.GetSizeForPixelBuffer(format, width, height, bytes);
        *bytes = isChosen(format, width) ? 160 * height : *bytes;
        return error;
    };
}

// Pixels of the chosen shape are moved by `Offset`, or none if that is negative.
template <PrPPixBufferAccess Access, int Offset>
Play otherPixels() {
    return changed(&PrSDKPPixSuite::GetPixels, [](PPixHand frame, PrPPixBufferAccess access, char** pixels) {
        if (access == Access && *pixels && isChosen(frame)) {
            *pixels = Offset < 0 ? nullptr : *pixels + Offset;
        }
    });
}

}  // namespace

WrongCases wrongFrames() {
    constexpr char refused[] = "CreatePPix returned no frame (bgrx, 37 x 5).";
    constexpr char misaligned[] = "GetPixels returned pixels that are not aligned to 16 bytes (bgrx, 37 x 5).";
    return {
        // --- Creation ---
        {"FrameRefused", FrameRefused, refused, refusing<-1>()},
        {"FrameThatIsNull", FrameRefused, refused, refusing<0>()},
        {"ReadOnlyFrame", ReadOnlyFrame, "CreatePPix returned a frame that nobody could write to.",
         spoilt([](Host& host) {
             host.used.creator.CreatePPix = [](PPixHand* out, PrPPixBufferAccess, PrPixelFormat format,
                                               const prRect* bounds) {
                 return good().creator.CreatePPix(out, PrPPixBufferAccess_WriteOnly, format, bounds);
             };
         })},
        {"CloneThatDiffers", CloneDiffers, "ClonePPix returned a frame that differs from its source (bgrx, 37 x 5).",
         changed(&PrSDKPPixCreatorSuite::ClonePPix, [](PPixHand source, PPixHand* out, PrPPixBufferAccess) {
             char* pixels = nullptr;
             good().frames.GetPixels(*out, PrPPixBufferAccess_ReadOnly, &pixels);
             pixels[0] = static_cast<char>(isChosen(source) ? pixels[0] + 1 : pixels[0]);
         })},

        // --- Shape ---
        {"OtherFormat", FrameFormat,
         "GetPixelFormat returned another format than the frame was made with (bgrx, 37 x 5).",
         telling<PrPixelFormat_BGRA_4444_8u>(&PrSDKPPixSuite::GetPixelFormat)},
        {"OtherBounds", FrameBounds, "GetBounds returned other bounds than the frame was made with (bgrx, 37 x 5).",
         changed(&PrSDKPPixSuite::GetBounds,
                 [](PPixHand frame, prRect* bounds) { bounds->bottom += isChosen(frame) ? 1 : 0; })},
        {"RowsTooShort", RowsTooShort, "GetRowBytes returned 147, too few for a row (bgrx, 37 x 5).",
         telling<147>(&PrSDKPPixSuite::GetRowBytes)},
        {"NegativeRowsTooShort", RowsTooShort, "GetRowBytes returned -147, too few for a row (bgrx, 37 x 5).",
         telling<-147>(&PrSDKPPixSuite::GetRowBytes)},
        {"RowsOfAnotherPolicy", RowPolicy, "GetRowBytes returned 160, not 256 (bgrx, 37 x 5).", spoilt(shorterRows),
         "rows=rounded"},
        {"SizeOfOneRow", RowSize, "GetSizeForPixelBuffer returned 300 for one row, GetRowBytes 256 (bgrx, 37 x 5).",
         otherSize<1, 300>()},
        {"SizeOfAllRows", FrameSize, "GetSizeForPixelBuffer returned 1279, too few for 1280 (bgrx, 37 x 5).",
         otherSize<5, 1279>()},
        {"NegativeRenderTime", RenderTime, "GetRenderTime returned -1 milliseconds (bgrx, 37 x 5).",
         telling<-1>(&PrSDKPPixSuite::GetRenderTime)},
        {"NoPixelAspect", PixelAspect, "GetPixelAspectRatio returned 1:0 (bgrx, 37 x 5).",
         changed(&PrSDKPPixSuite::GetPixelAspectRatio, [](PPixHand frame, csSDK_uint32* num, csSDK_uint32* den) {
             *num = 1;
             *den = isChosen(frame) ? 0 : 1;
         })},
        {"EmptyKey", KeySize, "GetUniqueKeySize returned 0.",
         changed(&PrSDKPPixSuite::GetUniqueKeySize, [](csSDK_size_t* size) { *size = 0; })},

        // --- Pixels ---
        {"NothingToWrite", NoPixels, "GetPixels returned no pixels to write (bgrx, 37 x 5).",
         otherPixels<PrPPixBufferAccess_WriteOnly, -1>()},
        {"NothingToRead", NoPixels, "GetPixels returned no pixels to read (bgrx, 37 x 5).",
         otherPixels<PrPPixBufferAccess_ReadOnly, -1>()},
        {"MisalignedByOne", PixelsMisaligned, misaligned, otherPixels<PrPPixBufferAccess_WriteOnly, 1>()},
        {"MisalignedByEight", PixelsMisaligned, misaligned, otherPixels<PrPPixBufferAccess_WriteOnly, 8>()},
        {"ReadableFrame", ReadablePixels,
         "GetPixels returned pixels to read of a frame that can only be written (bgrx, 37 x 5).",
         changed(&PrSDKPPixSuite::GetPixels, [](PPixHand frame, PrPPixBufferAccess, char** pixels) {
             if (!*pixels && isChosen(frame)) {
                 good().frames.GetPixels(frame, PrPPixBufferAccess_WriteOnly, pixels);
             }
         })},
    };
}
