#include "importer/FormatDescription.h"

#include "codec/PixelFormatTables.h"
#include "importer/QuorvaneImporter.h"
#include "log/Log.h"
#include "text/FourCC.h"
#include "text/Utf.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace {

constexpr char kFormatName[] = "Quorvane AVI";
constexpr char kExtension[] = "avi";

// Writes the text and its end into the host's field, unaligned as the record may be.
template <std::size_t N>
void copyName(prUTF16Char (&field)[N], std::u16string_view name) {
    const std::size_t length = std::min(name.size(), N - 1);
    std::memcpy(field, name.data(), length * sizeof(prUTF16Char));
    const prUTF16Char terminator = 0;
    std::memcpy(reinterpret_cast<char*>(field) + length * sizeof terminator, &terminator, sizeof terminator);
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
    auto* record = reinterpret_cast<imSubTypeDescriptionRec*>(memory);
    *subTypes = record;
    if (memory == nullptr) {
        return imMemErr;
    }
    for (const SubTypeInfo& info : infos) {
        Log("Adding subtype: '%s' : '%s'", FourCCToString(info.subType, true).c_str(),
            utf8FromUtf16(info.subTypeName).c_str());
        record->subType = static_cast<csSDK_int32>(info.subType);
        copyName(record->subTypeName, info.subTypeName);
        ++record;
    }
    return imNoErr;
}
