#include "importer/FormatDescription.h"

#include "codec/PixelFormatTables.h"
#include "log/Log.h"
#include "text/FourCC.h"
#include "text/Utf.h"

#include <cstddef>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <span>
#include <string>
#include <string_view>

namespace {

constexpr char kFormatName[] = "Quorvane AVI";
constexpr char kExtension[] = "avi";

// The layout of a record in the host's memory, which may be unaligned.
constexpr std::size_t kNameOffset = offsetof(imSubTypeDescriptionRec, subTypeName);
constexpr std::size_t kMaxNameLength = std::size(imSubTypeDescriptionRec{}.subTypeName) - 1;

void writeRecord(char* memory, std::uint32_t subType, std::u16string_view name) {
    const std::u16string terminated(name.substr(0, kMaxNameLength));
    std::memcpy(memory, &subType, sizeof subType);
    std::memcpy(memory + kNameOffset, terminated.c_str(), (terminated.size() + 1) * sizeof(prUTF16Char));
}

}  // namespace

csSDK_int32 OnGetIndFormat(csSDK_uint32 index, imIndFormatRec* record) {
    if (index != 0) {
        Log("index %u: imBadFormatIndex", index);
        return imBadFormatIndex;
    }
    record->filetype = kQuorvaneFileType;
    record->canWriteTimecode = 0;
    std::snprintf(record->FormatName, sizeof record->FormatName, "%s", kFormatName);
    std::snprintf(record->FormatShortName, sizeof record->FormatShortName, "%s", kFormatName);
    std::snprintf(record->PlatformExtension, sizeof record->PlatformExtension, "%s", kExtension);
    Log("index %u: %s", index, FourCCToString(kQuorvaneFileType, true).c_str());
    return imNoErr;
}

csSDK_int32 OnGetSubTypeNames(const imStdParms* stdParms, csSDK_uint32 fileType, imSubTypeDescriptionRec** subTypes) {
    Log("filetype: %s", FourCCToString(fileType, true).c_str());
    const std::span<const SubTypeInfo> infos = SubTypeInfos();
    char* memory = stdParms->piSuites->memFuncs->newPtr(
        static_cast<csSDK_uint32>(infos.size() * sizeof(imSubTypeDescriptionRec)));
    *subTypes = reinterpret_cast<imSubTypeDescriptionRec*>(memory);
    if (memory == nullptr && !infos.empty()) {
        Log("ERROR: the host gave no memory");
        return imMemErr;
    }
    for (const SubTypeInfo& info : infos) {
        Log("Adding subtype: '%s' : '%s'", FourCCToString(info.subType, true).c_str(),
            utf8FromUtf16(info.subTypeName).c_str());
        writeRecord(memory, info.subType, info.subTypeName);
        memory += sizeof(imSubTypeDescriptionRec);
    }
    return imNoErr;
}
