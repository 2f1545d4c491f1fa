// What the plug-in declares before any file is opened: the import format and the codec's subtypes.
#pragma once

#include "sdk/SdkImporter.h"

// The only file type of the plug-in; its bytes read AVIV from the highest to the lowest.
inline constexpr csSDK_int32 kQuorvaneFileType = 0x41564956;

// Describes import format number `index`. Returns imNoErr, or imBadFormatIndex past the only one.
csSDK_int32 OnGetIndFormat(csSDK_uint32 index, imIndFormatRec* record);

// Returns the subtype names in an array that is allocated and owned by the host. Returns imNoErr, or imMemErr and a
// null pointer if the host has no memory. Every file type has the same subtypes.
csSDK_int32 OnGetSubTypeNames(const imStdParms* stdParms, csSDK_uint32 fileType, imSubTypeDescriptionRec** subTypes);
