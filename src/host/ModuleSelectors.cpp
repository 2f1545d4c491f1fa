#include "host/ModuleSelectors.h"

#include "codec/PixelFormatDump.h"
#include "codec/PixelFormatTables.h"
#include "host/ModuleState.h"
#include "importer/QuorvaneAsyncImporter.h"

#include <memory>
#include <utility>

namespace {

// Higher than every importer that ships with the host, so that its AVI importer does not take our files.
constexpr csSDK_int32 kPriority = 200;

// The new holder is in place before the old one is released, so a second init always leaves a suite available.
void replaceErrorSuite(std::unique_ptr<ErrorSuite> errorSuite) {
    const std::unique_ptr<ErrorSuite> older(std::exchange(moduleState.errorSuite, errorSuite.release()));
    if (older != nullptr) {
        older->release();
    }
}

}  // namespace

csSDK_int32 OnInit(const imStdParms* stdParms, imImportInfoRec* record) {
    SPBasicSuite* basicSuite = basicSuiteOf(stdParms);
    replaceErrorSuite(std::make_unique<ErrorSuite>(basicSuite, kPrSDKErrorSuite, kPrSDKErrorSuiteVersion3));
    BuildPixelFormatTables(basicSuite);
    DumpPixelFormats(basicSuite);
    record->priority = kPriority;
    record->avoidAudioConform = 1;
    return imNoErr;
}

csSDK_int32 OnShutdown() {
    replaceErrorSuite(nullptr);
    return imNoErr;
}

csSDK_int32 OnOpenFile8(const imStdParms* stdParms, imFileRef* fileRef, imFileOpenRec8* record) {
    if (record->privatedata != nullptr) {
        return static_cast<QuorvaneImporter*>(record->privatedata)->OnOpenFile(record, fileRef);
    }
    auto importer = std::make_unique<QuorvaneImporter>(stdParms);
    const csSDK_int32 result = importer->OnOpenFile(record, fileRef);
    if (result == imNoErr) {
        record->privatedata = importer.release();
    }
    return result;
}

csSDK_int32 OnCloseFile(imFileRef* fileRef, QuorvaneImporter* importer) {
    const std::unique_ptr<QuorvaneImporter> ended(importer);
    return importer->OnCloseFile(fileRef);
}

csSDK_int32 OnCreateAsyncImporter(const imStdParms* stdParms, QuorvaneImporter* source,
                                  imAsyncImporterCreationRec* record) {
    auto asyncImporter = std::make_unique<QuorvaneAsyncImporter>(stdParms);
    const csSDK_int32 result =
        asyncImporter->Initialize(source->filePath(), source->streamIndex(), source->accessMode());
    if (result == imNoErr) {
        record->outAsyncEntry = xAsyncImportEntry;
        record->outAsyncPrivateData = asyncImporter.release();
    }
    return result;
}
