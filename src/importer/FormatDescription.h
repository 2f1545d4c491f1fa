// What the plug-in declares of itself before any file is opened: the import format and the codec's subtypes.
#pragma once

#include "sdk/SdkImporter.h"

// The one file type the plug-in declares, as a number whose bytes read AVIV from the highest down.
inline constexpr csSDK_int32 kQuorvaneFileType = 0x41564956;

// Describes import format number `index`: 0, or imBadFormatIndex beyond the only one.
csSDK_int32 OnGetIndFormat(csSDK_uint32 index, imIndFormatRec* record);

// Gives the host an array of subtype names, allocated with and owned by the host: 0, or imMemErr and a null pointer
// when the host has no memory. Every file type has the same subtypes.
csSDK_int32 OnGetSubTypeNames(const imStdParms* stdParms, csSDK_uint32 fileType, imSubTypeDescriptionRec** subTypes);
