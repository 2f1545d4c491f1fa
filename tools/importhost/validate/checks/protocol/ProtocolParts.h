// The checks of the protocol group, for its table.
#pragma once

#include "importhost/validate/framework/CheckRun.h"

namespace importhost::validate {

// Before any file.
void formatsEnd(CheckRun& run);
void formatFacts(CheckRun& run);
void subtypeList(CheckRun& run);
void startAnswers(CheckRun& run);
void startInAnyOrder(CheckRun& run);

// Opening.
void goodFilesOpen(CheckRun& run);
void openRefusesNoFile(CheckRun& run);
void foreignFiles(CheckRun& run);
void damagedFiles(CheckRun& run);
void lockedFile(CheckRun& run);
void openAnyPath(CheckRun& run);
void openAccessValues(CheckRun& run);
void openStreamIndex(CheckRun& run);

// Sharing files with other programs.
void openShares(CheckRun& run);
void filesAreLeftAlone(CheckRun& run);
void reopenOfALostFile(CheckRun& run);

// Describing.
void fileFacts(CheckRun& run);
void streamsIterate(CheckRun& run);
void streamsDirect(CheckRun& run);
void infoAgain(CheckRun& run);
void callsBeforeInfo(CheckRun& run);
void hostFieldsStay(CheckRun& run);

// Lists and texts.
void pixelFormatsEnd(CheckRun& run);
void channelLayout(CheckRun& run);
void analysisText(CheckRun& run);
void analysisBuffers(CheckRun& run);
void dataRate(CheckRun& run);

// A clip's life, and several at once.
void quietAndReopen(CheckRun& run);
void closeInAnyState(CheckRun& run);
void infoOfAQuietFile(CheckRun& run);
void severalFiles(CheckRun& run);
void oneFileSeveralTimes(CheckRun& run);

}  // namespace importhost::validate
