// Leaves a file in the current folder.
#include <fstream>

namespace {

struct Writer {
    Writer() { std::ofstream("loaded.txt") << "loaded\n"; }
} writer;

}  // namespace
