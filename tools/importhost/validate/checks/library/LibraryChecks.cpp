// The plug-in's library: its file, loading and unloading, and answers that need no clip.
#include "importhost/validate/checks/library/LibraryParts.h"
#include "importhost/validate/framework/Groups.h"

namespace importhost::validate {

namespace {

constexpr Check kLibraryChecks[] = {
    {"library-exports", 1,
     "The library exports one function, xImportEntry, and nothing else. The editor looks for that name; others would "
     "be taken for its own by libraries that are loaded later.",
     libraryExports},
    {"library-imports", 1,
     "The library is loaded with the codec's library and with libraries that every system has, and no others. On a "
     "user's machine a missing one keeps the plug-in from loading, and the editor says nothing about it.",
     libraryImports},
    {"library-resource", 1,
     "The file is a 64-bit library with the resource IMPT 1000, of a 16-bit 0 and a code of the importer's own. "
     "Without it the editor does not take the library for an importer and never loads it. Only Windows has such "
     "resources, so elsewhere the check is skipped.",
     libraryResource},
    {"library-loads", 1,
     "The library loads with the libraries that it needs, exports its entry, starts, shuts down and unloads, and gives "
     "back all that it took from the host. An editor marks a plug-in that does not load as one to ignore.",
     libraryLoads},
    {"library-load-is-quiet", 2,
     "Loading and unloading alone calls no function of the codec and writes no log, even with the log switched on, and "
     "no file to the current folder. The editor loads every plug-in only to see what it is; work there makes its start "
     "slow.",
     libraryLoadIsQuiet, Company::Alone},
    {"library-comes-and-goes", 3,
     "The library can be loaded and unloaded again and again in one process, with and without being started, and is "
     "gone from memory each time. The editor unloads importers that it does not need for a while.",
     libraryComesAndGoes},
    {"unknown-selectors", 1,
     "Selectors that this importer does not know, negative ones too, are answered with imUnsupported. Newer editors "
     "send ones that did not exist when the plug-in was made.",
     unknownSelectors},
    {"unhandled-selectors", 3,
     "Every selector that this importer does not serve, known to the host or not, is answered with imUnsupported and "
     "touches nothing: neither the records that come with it nor the host. An editor believes what it finds in a "
     "record, so a trim or a preference dialog would go wrong.",
     unhandledSelectors},
    {"log-stays-off", 2,
     "With the log switch off, starting and ending the plug-in writes no log. A user who never asked for logs would "
     "find the profile folder full of them.",
     logStaysOff, Company::Alone},
    {"log-of-load-and-unload", 3,
     "With the log switch on, every load writes one file of its own that begins with the application and the first "
     "call and ends with the shutdown, 'Module destroy' and 'Log closed', each line with time and thread. A support "
     "engineer tells by these lines whether the editor ended in order.",
     logOfLoadAndUnload, Company::Alone},
};

}  // namespace

std::span<const Check> libraryChecks() { return kLibraryChecks; }

}  // namespace importhost::validate
