// Calls about the importer as a whole.
#include "probe/AsyncImporters.h"
#include "probe/Clips.h"
#include "probe/Complaints.h"
#include "probe/InventedClip.h"
#include "probe/RecordPromises.h"
#include "probe/Selectors.h"

#include <atomic>

namespace hostprobe {

namespace {

void putText(void* record, std::size_t offset, const char* text) {
    std::memcpy(static_cast<char*>(record) + offset, text, std::strlen(text) + 1);
}

}  // namespace

csSDK_int32 onInit(void* record) {
    expectZeros("imInit", RecordKind::ImportInfo, record, hostVersion());
    return imNoErr;
}

csSDK_int32 onShutdown() {
    expect(!isAnyClipOpen(), Sentence::ShutdownWithOpenFile);
    expect(!isAnyAsyncImporterOpen(), Sentence::ShutdownWithOpenAsync);
    dropClips();
    dropAsyncImporters();
    writeReport();
    return imNoErr;
}

csSDK_int32 onGetIndFormat(csSDK_int32 index, void* record) {
    // The list may be read again from its start.
    static std::atomic<csSDK_int32> next = 0;
    expect(index == 0 || index == next, Sentence::IndexOutOfTurn, {"imGetIndFormat", std::to_string(index)});
    expectZeros("imGetIndFormat", RecordKind::Format, record, hostVersion());
    next = index == 0 ? 1 : 0;
    if (index != 0) {
        return imBadFormatIndex;
    }
    putAt(record, kFormatType, kFileType);
    putText(record, kFormatName, "Host probe clip");
    putText(record, kFormatShortName, "Host probe");
    putText(record, kFormatExtension, "probe");
    return imNoErr;
}

csSDK_int32 onGetSubTypeNames(imStdParms* stdParms, csSDK_int32 fileType, void* out) {
    if (!expect(fileType == kFileType, Sentence::UnknownFileType)) {
        return imUnsupported;
    }
    // The host frees the block with its own function.
    constexpr csSDK_uint32 bytes = sizeof(imSubTypeDescriptionRec);
    char* block = stdParms->piSuites->memFuncs->newPtr(bytes);
    if (!block) {
        return imMemErr;
    }
    imSubTypeDescriptionRec description = {};
    description.subType = kSubType;
    description.subTypeName[0] = u'P';
    std::memcpy(block, &description, bytes);
    putAt<void*>(out, 0, block);
    return imNoErr;
}

}  // namespace hostprobe
