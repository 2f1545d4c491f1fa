// abidump [FILE]: prints the host's interface according to the headers it was compiled with, or compares it with the
// text of an earlier run. Exit codes: 0 printed, or no difference; 1 a difference; 2 usage.
#include "abidump/Dump.h"

#include <fstream>
#include <iostream>
#include <sstream>

namespace {

int compareWith(const char* path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        std::cerr << "abidump: '" << path << "' cannot be read.\n";
        return 2;
    }
    std::ostringstream wanted;
    wanted << file.rdbuf();
    const std::string text = abidump::differences(wanted.str(), abidump::dumpText());
    std::cout << (text.empty() ? "No difference.\n" : text);
    return text.empty() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc > 2 || (argc == 2 && argv[1][0] == '-')) {
        std::cerr << "abidump          print sizes, offsets and numbers of the host's interface\n"
                     "abidump FILE     compare them with the text of an earlier run\n";
        return 2;
    }
    if (argc == 2) {
        return compareWith(argv[1]);
    }
    std::cout << abidump::dumpText();
    return 0;
}
