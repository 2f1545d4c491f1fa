// A library whose loading ends the program, as that of a damaged plug-in may.
#include <cstdlib>

namespace {

const int kEnded = (std::_Exit(7), 0);

}  // namespace

extern "C" int xImportEntry(int, void*, void*, void*) { return kEnded; }
