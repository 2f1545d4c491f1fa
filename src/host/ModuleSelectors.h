// The selectors that concern the module as a whole, and the ones that make and end the objects of files.
// Each gives a host result.
#pragma once

#include "importer/QuorvaneImporter.h"
#include "sdk/SdkImporter.h"

// Takes the Error Suite, builds the pixel format tables and states what the plug-in can do.
csSDK_int32 OnInit(const imStdParms* stdParms, imImportInfoRec* record);

// Gives the Error Suite back.
csSDK_int32 OnShutdown();

// Opens a file with the object the host has for it, or with a new one that the host gets if the open succeeds.
csSDK_int32 OnOpenFile8(const imStdParms* stdParms, imFileRef* fileRef, imFileOpenRec8* record);

// Makes the asynchronous importer of a file's object and gives it to the host; gives 0 or the result of its failure.
csSDK_int32 OnCreateAsyncImporter(const imStdParms* stdParms, QuorvaneImporter* source,
                                  imAsyncImporterCreationRec* record);

// Closes the file and destroys its object.
csSDK_int32 OnCloseFile(imFileRef* fileRef, QuorvaneImporter* importer);
