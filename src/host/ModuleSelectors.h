// The selectors for the module as a whole, and those that create and destroy the objects of files. Each returns a host
// result.
#pragma once

#include "importer/QuorvaneImporter.h"
#include "sdk/SdkImporter.h"

// Acquires the Error Suite, builds the pixel format tables and reports the plug-in's capabilities.
csSDK_int32 OnInit(const imStdParms* stdParms, imImportInfoRec* record);

// Releases the Error Suite.
csSDK_int32 OnShutdown();

// Opens a file with the object the host has for it, or with a new one, which the host gets if the open succeeds.
csSDK_int32 OnOpenFile8(const imStdParms* stdParms, imFileRef* fileRef, imFileOpenRec8* record);

// Creates the asynchronous importer of a file and passes it to the host; returns imNoErr or its error.
csSDK_int32 OnCreateAsyncImporter(const imStdParms* stdParms, QuorvaneImporter* source,
                                  imAsyncImporterCreationRec* record);

// Closes the file and destroys its object.
csSDK_int32 OnCloseFile(imFileRef* fileRef, QuorvaneImporter* importer);
