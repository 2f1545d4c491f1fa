#include "TrustRow.h"

constexpr TrustRow kLibraryTrust[] = {
    {"library-exports", "ExportsMore", "it exports 'oneMoreExport' beside its entry"},
    {"library-resource", "NotALibrary", "is no 64-bit library of this system."},
    {"library-loads", "leaks-suites", "The suite 'Premiere Error Suite' version 3 was acquired 1 time and released 0"},
    {"library-load-is-quiet", "WritesAtLoad", "the file 'loaded.txt' appeared in the current folder"},
    {"library-load-is-quiet", "DecodesAtLoad", "calls of the codec library: found 1, wanted 0"},
    {"library-load-is-quiet", "LogsAtLoad", ".log' was written although nothing was called"},
    {"library-comes-and-goes", "StaysLoaded", "round 1, loaded alone: the library stays in memory when it is unloaded"},
    {"unknown-selectors", "answers-every-selector",
     "the answer to selector -1: found imNoErr (0), wanted imUnsupported (3)"},
    {"unhandled-selectors", "answers-a-preferences-dialog",
     "selector 38 (imGetPrefs8): the answer: found imNoErr (0), wanted imUnsupported (3)"},
    {"unhandled-selectors", "fills-what-it-refuses",
     "selector 51 (imCopyFile): the memory that came with it was changed: bytes nothing of the first and 7 of the"},
    {"unhandled-selectors", "asks-the-host-before-it-refuses",
     "selector -8 (unknown): functions of the host that were called: found 1, wanted 0"},
    {"log-stays-off", "LogsAtLoad", ".log' was written although the switch is off"},
    {"log-of-load-and-unload", "LogsAtLoad", "lines 'Module init', written before the switch can be read: found 1"},
    {"log-of-load-and-unload", "ends-its-log-at-shutdown",
     "[imNoErr] (0) | Log closed, wanted ----"},
};

std::span<const TrustRow> libraryTrust() { return kLibraryTrust; }
