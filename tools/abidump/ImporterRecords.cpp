// The records that selectors carry, and those they contain.
#include "abidump/Tables.h"

namespace abidump {

std::vector<Record> basicRecords() {
    return {
        RECORD(prRect, MEMBER(left), MEMBER(top), MEMBER(right), MEMBER(bottom)),
        RECORD(PrSDKString, MEMBER(opaque)),
        RECORD(prPluginID, MEMBER(text)),
    };
}

std::vector<Record> importerRecords() {
    return {
        RECORD(imImportInfoRec, MEMBER(importerType), MEMBER(unused1), MEMBER(canSave), MEMBER(canDelete),
               MEMBER(canResize), MEMBER(canDoSubsize), MEMBER(canDoContinuousTime), MEMBER(noFile), MEMBER(addToMenu),
               MEMBER(hasSetup), MEMBER(dontCache), MEMBER(setupOnDblClk), MEMBER(keepLoaded), MEMBER(priority),
               MEMBER(canAsync), MEMBER(canCreate), MEMBER(canCalcSizes), MEMBER(canTrim), MEMBER(avoidAudioConform),
               MEMBER(acceleratorFileExt), MEMBER(canCopy), MEMBER(canSupplyMetadataClipName), MEMBER(canValidatePrefs),
               MEMBER(canProvidePeakAudio), MEMBER(canProvideFileList), MEMBER(canProvideClosedCaptions),
               MEMBER(fileInfoVersion), MEMBER(hasSourceSettingsEffect), MEMBER(hasPersistentData), MEMBER(reserved)),
        RECORD(imIndFormatRec, MEMBER(filetype), MEMBER(flags), MEMBER(canWriteTimecode), MEMBER(FormatName),
               MEMBER(FormatShortName), MEMBER(PlatformExtension), MEMBER(hasAlternateTypes), MEMBER(alternateTypes),
               MEMBER(canWriteMetaData)),
        RECORD(imSubTypeDescriptionRec, MEMBER(subType), MEMBER(subTypeName)),
        RECORD(imFileAccessRec8, MEMBER(importID), MEMBER(filetype), MEMBER(filepath), MEMBER(fileref),
               MEMBER(newfilename)),
        RECORD(imFileOpenRec8, MEMBER(fileinfo), MEMBER(privatedata), MEMBER(delegatetype), MEMBER(inReadWrite),
               MEMBER(inImporterID), MEMBER(outExtraMemoryUsage), MEMBER(inStreamIdx)),
        RECORD(matColRec, MEMBER(red), MEMBER(blue), MEMBER(green)),
        RECORD(imImageInfoRec, MEMBER(imageWidth), MEMBER(imageHeight), MEMBER(pixelAspectV1), MEMBER(depth),
               MEMBER(subType), MEMBER(fieldType), MEMBER(fieldsStacked), MEMBER(reserved_1), MEMBER(reserved_2),
               MEMBER(alphaType), MEMBER(matteColor), MEMBER(alphaInverted), MEMBER(isVectors), MEMBER(drawsExternal),
               MEMBER(canForceInternalDraw), MEMBER(dontObscure), MEMBER(isStill), MEMBER(noDuration),
               MEMBER(reserved_3), MEMBER(pixelAspectNum), MEMBER(pixelAspectDen), MEMBER(isRollCrawl),
               MEMBER(reservedc), MEMBER(importerID), MEMBER(supportsAsyncIO), MEMBER(supportsGetSourceVideo),
               MEMBER(hasPulldown), MEMBER(pulldownCadence), MEMBER(posterFrame), MEMBER(canTransform),
               MEMBER(interpretationUncertain), MEMBER(colorProfileSupport), MEMBER(codecDescription),
               MEMBER(reserved)),
        RECORD(imAudioInfoRec7, MEMBER(numChannels), MEMBER(sampleRate), MEMBER(sampleType)),
        RECORD(imFileInfoRec8, MEMBER(hasVideo), MEMBER(hasAudio), MEMBER(vidInfo), MEMBER(vidScale),
               MEMBER(vidSampleSize), MEMBER(vidDuration), MEMBER(audInfo), MEMBER(audDuration), MEMBER(accessModes),
               MEMBER(privatedata), MEMBER(prefs), MEMBER(hasDataRate), MEMBER(streamIdx), MEMBER(streamsAsComp),
               MEMBER(streamName), MEMBER(sessionPluginID), MEMBER(alwaysUnquiet), MEMBER(unused), MEMBER(filePath),
               MEMBER(canProvidePeakData), MEMBER(mayBeGrowing), MEMBER(ignoreGrowing), MEMBER(sourceSettingsMatchName),
               MEMBER(vidDurationInFrames), MEMBER(ivProjectionType), MEMBER(ivFrameLayout),
               MEMBER(ivHorizontalCapturedView), MEMBER(ivVerticalCapturedView)),
        RECORD(imIndPixelFormatRec, MEMBER(privatedata), MEMBER(outPixelFormat), MEMBER(prefs)),
        RECORD(imAnalysisRec, MEMBER(privatedata), MEMBER(prefs), MEMBER(buffersize), MEMBER(buffer),
               MEMBER(timecodeFormat)),
        RECORD(imDataSample, MEMBER(sampledur), MEMBER(samplesize)),
        RECORD(imDataRateAnalysisRec, MEMBER(privatedata), MEMBER(prefs), MEMBER(buffersize), MEMBER(buffer),
               MEMBER(baserate)),
        RECORD(imImportAudioRec7, MEMBER(position), MEMBER(size), MEMBER(buffer), MEMBER(privateData), MEMBER(prefs)),
        RECORD(imGetAudioChannelLayoutRec, MEMBER(inPrivateData), MEMBER(outChannelLabels)),
        RECORD(imAsyncImporterCreationRec, MEMBER(inPrivateData), MEMBER(inPrefs), MEMBER(outAsyncEntry),
               MEMBER(outAsyncPrivateData)),
        RECORD(imFrameFormat, MEMBER(inFrameWidth), MEMBER(inFrameHeight), MEMBER(inPixelFormat)),
        RECORD(imRenderContext, MEMBER(inIntent), MEMBER(inPlaybackRatio), MEMBER(inPlaybackRate)),
        RECORD(imSourceVideoRec, MEMBER(inPrivateData), MEMBER(currentStreamIdx), MEMBER(inFrameTime),
               MEMBER(inFrameFormats), MEMBER(inNumFrameFormats), MEMBER(removePulldown), MEMBER(unused2),
               MEMBER(outFrame), MEMBER(prefs), MEMBER(prefsSize), MEMBER(selectedColorProfileName), MEMBER(inQuality),
               MEMBER(inRenderContext)),
    };
}

std::vector<Record> asyncRecords() {
    return {
        RECORD(aiAsyncRequest, MEMBER(inPrivateData), MEMBER(unused1), MEMBER(inSourceRec)),
        RECORD(aiSelectEfficientRenderTimeRec, MEMBER(inPrivateData), MEMBER(prefs), MEMBER(prefsSize), MEMBER(ioTime),
               MEMBER(inRenderContext)),
    };
}

}  // namespace abidump
