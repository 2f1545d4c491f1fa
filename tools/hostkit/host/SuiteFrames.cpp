// The PPix Creator Suite and the PPix Suite.
#include "hostkit/host/HostTables.h"
#include "hostkit/system/Text.h"

#include <algorithm>
#include <cstring>

namespace hostkit {

namespace {

// A key names a frame's content within one run: the serial number is enough.
constexpr csSDK_size_t kUniqueKeyBytes = sizeof(csSDK_int64);

FrameStore& store() { return Host::current().frames(); }

// Runs `use` on a living frame; a dead or unknown one is reported.
template <class Use>
prSuiteError withFrame(PPixHand frame, Use use) {
    const std::optional<FrameView> view = store().view(frame);
    if (!view) {
        Host::current().report("A frame was used that the host never gave out, or after it was disposed.");
        return kSuiteInvalidParms;
    }
    use(*view);
    return kSuiteNoError;
}

// --- PPix Creator Suite -----------------------------------------------------------------------------------------

prSuiteError createPPix(PPixHand* out, PrPPixBufferAccess access, PrPixelFormat format, const prRect* bounds) {
    *out = nullptr;
    const auto forced = enter(HostCall::CreatePPix, "access ", access, ", ", codeText(format), ", ", bounds->left, " ",
                              bounds->top, " ", bounds->right, " ", bounds->bottom);
    if (forced) {
        return *forced;
    }
    // A frame that nobody may write into would stay empty.
    const bool writable = access == PrPPixBufferAccess_WriteOnly || access == PrPPixBufferAccess_ReadWrite;
    return writable ? store().create(*out, access, format, *bounds) : kSuiteInvalidParms;
}

prSuiteError clonePPix(PPixHand source, PPixHand* out, PrPPixBufferAccess access) {
    *out = nullptr;
    const auto forced = enter(HostCall::ClonePPix, "access ", access);
    if (forced) {
        return *forced;
    }
    return access == PrPPixBufferAccess_ReadOnly ? store().clone(source, *out, access) : kSuiteInvalidParms;
}

// --- PPix Suite -------------------------------------------------------------------------------------------------

prSuiteError dispose(PPixHand frame) {
    const auto forced = enter(HostCall::DisposePPix);
    return forced ? *forced : store().dispose(frame);
}

bool allows(PrPPixBufferAccess granted, PrPPixBufferAccess wanted) {
    return granted == PrPPixBufferAccess_ReadWrite || granted == wanted;
}

prSuiteError getPixels(PPixHand frame, PrPPixBufferAccess access, char** outPixels) {
    *outPixels = nullptr;
    if (const auto forced = enter(HostCall::GetPixels, "access ", access)) {
        return *forced;
    }
    return withFrame(frame, [&](const FrameView& view) {
        *outPixels = allows(view.access, access) ? reinterpret_cast<char*>(view.pixels) : nullptr;
    });
}

prSuiteError getBounds(PPixHand frame, prRect* outBounds) {
    if (const auto forced = enter(HostCall::GetBounds)) {
        return *forced;
    }
    return withFrame(frame, [&](const FrameView& view) { *outBounds = view.bounds; });
}

prSuiteError getRowBytes(PPixHand frame, csSDK_int32* outRowBytes) {
    if (const auto forced = enter(HostCall::GetRowBytes)) {
        return *forced;
    }
    return withFrame(frame, [&](const FrameView& view) { *outRowBytes = view.rowBytes; });
}

prSuiteError getPixelAspectRatio(PPixHand frame, csSDK_uint32* outNumerator, csSDK_uint32* outDenominator) {
    if (const auto forced = enter(HostCall::GetPixelAspectRatio)) {
        return *forced;
    }
    return withFrame(frame, [&](const FrameView&) {
        *outNumerator = 1;
        *outDenominator = 1;
    });
}

prSuiteError getPixelFormat(PPixHand frame, PrPixelFormat* outFormat) {
    if (const auto forced = enter(HostCall::GetPixelFormat)) {
        return *forced;
    }
    return withFrame(frame, [&](const FrameView& view) { *outFormat = view.format; });
}

prSuiteError getUniqueKey(PPixHand frame, unsigned char* key, csSDK_size_t size) {
    if (const auto forced = enter(HostCall::GetUniqueKey, size)) {
        return *forced;
    }
    const std::optional<csSDK_int64> serial = store().serialNumber(frame);
    if (!serial || size < kUniqueKeyBytes) {
        return kSuiteInvalidParms;
    }
    std::memcpy(key, &*serial, sizeof(*serial));
    return kSuiteNoError;
}

prSuiteError getUniqueKeySize(csSDK_size_t* outSize) {
    const auto forced = enter(HostCall::GetUniqueKeySize);
    *outSize = kUniqueKeyBytes;
    return forced.value_or(kSuiteNoError);
}

prSuiteError getRenderTime(PPixHand frame, csSDK_int32* outMilliseconds) {
    if (const auto forced = enter(HostCall::GetRenderTime)) {
        return *forced;
    }
    return withFrame(frame, [&](const FrameView&) { *outMilliseconds = 0; });
}

}  // namespace

const PrSDKPPixCreatorSuite* framesCreatorTable() {
    static const PrSDKPPixCreatorSuite table = {createPPix, clonePPix};
    return &table;
}

const PrSDKPPixSuite* framesTable() {
    static const PrSDKPPixSuite table = {dispose, getPixels, getBounds, getRowBytes, getPixelAspectRatio,
                                         getPixelFormat, getUniqueKey, getUniqueKeySize, getRenderTime};
    return &table;
}

}  // namespace hostkit
