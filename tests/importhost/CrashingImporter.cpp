// A library whose loading ends the program, as a damaged plug-in's can.
#include <cstdlib>

namespace {

const int kEnded = (std::_Exit(7), 0);

}  // namespace

extern "C" int xImportEntry(int, void*, void*, void*) { return kEnded; }
