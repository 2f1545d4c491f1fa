// Which call is answered how: formats, opening, describing, closing.
#include "importhost/validate/checks/protocol/ProtocolParts.h"
#include "importhost/validate/framework/Groups.h"

namespace importhost::validate {

namespace {

constexpr Check kProtocolChecks[] = {
    // --- Before any file ---
    {"formats-end", 1,
     "The list of import formats has at least one entry and ends with imBadFormatIndex, which numbers far outside the "
     "list get too. An editor asks for formats until it is told to stop.",
     formatsEnd},
    {"format-facts", 1,
     "The one import format has the file type AVIV, the name 'Quorvane AVI' and the extension 'avi'. The editor shows "
     "the name in its dialogs and stores the type in its projects: another one loses the clips of old projects.",
     formatFacts},
    {"subtype-list", 2,
     "The list of subtypes has sixteen rows with codes and names that differ, each name with an end, and is the same "
     "for every file type, in memory of the host's. The editor shows these names in a clip's properties.",
     subtypeList},
    {"start-answers", 1,
     "imInit answers imNoErr with priority 200 and no conforming of sound, and imGetSupports8 answers malSupports8. "
     "With another priority the editor may ask another importer first, and without the latter it never sends "
     "imGetInfo8.",
     startAnswers},
    {"start-in-any-order", 3,
     "Version and format are told before imInit; imInit and imShutdown may come twice, or imShutdown without imInit, "
     "without a suite kept too long or given back too often. The editor starts and ends importers as it needs them.",
     startInAnyOrder},

    // --- Opening ---
    {"good-files-open", 1,
     "Every file opens, is described and closes. A file that is not opened here cannot be imported; for a user's own "
     "file that is a warning, because it may be one for another importer.",
     goodFilesOpen},
    {"open-refuses-no-file", 1,
     "What is no file is refused with imBadFile: missing, a folder, an empty path. Neither private data nor a file "
     "handle is given for it. The editor would take it for an open clip and keep it in the project.",
     openRefusesNoFile},
    {"foreign-files", 1,
     "Files that are no AVI, whatever their name, are refused with imBadFile at the latest when they are described, "
     "and nothing is told of them. Only then does the editor ask the next importer.",
     foreignFiles},
    {"damaged-files", 3,
     "A damaged file is refused with imBadFile, or described as far as it goes with answers that fit together; either "
     "way it closes. A user with a broken recording would lose the project besides.",
     damagedFiles},
    {"locked-file", 3,
     "A file that another program writes or locks is refused with imBadFile, and opens once it is free. The editor "
     "asks again later for files that are still being copied.",
     lockedFile},
    {"open-any-path", 3,
     "Files open whatever their path: blanks, letters of any language, signs beyond 16 bits, no extension, 240 "
     "characters. A user sees media offline that lie there for all to see.",
     openAnyPath},
    {"open-access-values", 5,
     "An opening with an access that is neither reading nor writing is refused with imBadFile.", openAccessValues},
    {"open-stream-index", 5,
     "A file opened for a later stream at once is described just like a file opened for the first. Editors differ in "
     "whether they open a clip once for each of its streams.",
     openStreamIndex},

    // --- Sharing files ---
    {"open-shares", 3,
     "An open clip may be read by other programs and changed by none; a quiet or closed one is left to them. Otherwise "
     "a user cannot rename or replace a file while the editor is in the background.",
     openShares},
    {"files-are-left-alone", 3,
     "A file is after its import what it was before, in size and time, and up to 16 MiB in content. Backup programs "
     "would copy it again, and an editor would believe it new.",
     filesAreLeftAlone},
    {"reopen-of-a-lost-file", 4,
     "A file that vanished while its clip was quiet is refused with imBadFile without ending the clip, and opens again "
     "once it is back, with the same private data. So a drive that was unplugged comes back in the editor.",
     reopenOfALostFile},

    // --- Describing ---
    {"file-facts", 2,
     "Frame size, subtype, depth and alpha, frame rate, duration, and the sound's channels, rate, type and length are "
     "those of the file; of an unknown file they are such as an editor can work with. Wrong ones are wrong on the "
     "timeline.",
     fileFacts},
    {"streams-iterate", 2,
     "Asked for streams from 0 on, every one but the last answers imIterateStreams, the last of several answers "
     "imBadStreamIndex and a single one imNoErr; later streams are sound alone. An editor that is not told to stop "
     "shows more sound tracks than the file has.",
     streamsIterate},
    {"streams-direct", 3,
     "A stream asked for directly, in any order, is told as it was in turn. Streams that the file does not have, "
     "negative ones too, answer imBadStreamIndex and are told as no pictures and a sound of no length.",
     streamsDirect},
    {"info-again", 3,
     "A file is described in the same words after pictures, sound, texts and other streams were asked for. Editors ask "
     "again whenever they like.",
     infoAgain},
    {"calls-before-info", 4,
     "Calls for pictures and sound on a clip that was opened and not described are answered with 99 and an event that "
     "the user sees, and the clip works once it is described. So are calls for pictures when a sound alone is "
     "selected.",
     callsBeforeInfo},
    {"host-fields-stay", 3,
     "Only those fields of the host's records are written that the importer has to fill, and they are filled whatever "
     "stood there. The editor keeps its own notes in the others.",
     hostFieldsStay},

    // --- Lists and texts ---
    {"pixel-formats-end", 2,
     "The list of pixel formats has no entry twice and none that the host cannot make frames of, ends with "
     "imBadFormatIndex for every number outside it, and is the same when asked for again or in another order.",
     pixelFormatsEnd},
    {"channel-layout", 3,
     "Every channel's label is the one that the file tells, or that goes with two or six channels, and slots without "
     "one keep what the host put there. Without sound the answer is 99. Wrong labels send voices to the wrong "
     "speakers.",
     channelLayout},
    {"analysis-text", 3,
     "The text of a clip's properties names codec, frame size, number of frames and frame rate, and each sound's "
     "channels, rate and type, as imGetInfo8 tells them. Support engineers go by this text.",
     analysisText},
    {"analysis-buffers", 4,
     "The text of a clip's properties fits every buffer from no byte up: cut to the room there is, always with an end, "
     "never beyond. A byte too many breaks the editor's memory, and it ends much later somewhere else.",
     analysisBuffers},
    {"data-rate", 3,
     "The data rates are told in two calls, the first for the size: one sample for each frame, all key frames of one "
     "frame's duration, empty where a frame was dropped, together not more than the file, and never beyond the buffer. "
     "The editor draws its data rate graph from them.",
     dataRate},

    // --- A clip's life ---
    {"quiet-and-reopen", 2,
     "A clip that was quiet and is opened again has the same private data, and all that it tells and shows is what it "
     "was. This happens every time a user leaves the editor and comes back.",
     quietAndReopen},
    {"close-in-any-state", 2,
     "A clip can be closed when it was described, just opened, opened twice, quiet or quiet twice, and gives back all "
     "that it took from the host. An editor with many clips runs out of memory otherwise.",
     closeInAnyState},
    {"info-of-a-quiet-file", 4,
     "A quiet clip is not described: imGetInfo8 answers imBadFile and writes nothing; opened again it is described as "
     "before.",
     infoOfAQuietFile},
    {"several-files", 3,
     "All files open at once, asked in turn, tell and show what each does alone, also while others are closed. A "
     "project has many clips.",
     severalFiles},
    {"one-file-several-times", 4,
     "A file opened three times at once gives three clips that do not disturb each other when one is closed or quiet. "
     "The editor opens a clip again for its own copy of it.",
     oneFileSeveralTimes},
};

}  // namespace

std::span<const Check> protocolChecks() { return kProtocolChecks; }

}  // namespace importhost::validate
