// hold_library LIBRARY: keeps a library loaded, as an editor does with its plug-ins, until its input ends.
// Prints "held" once it is loaded.
#include <windows.h>

#include <cstdio>

int main(int argc, char** argv) {
    if (argc != 2 || !LoadLibraryExA(argv[1], nullptr, LOAD_WITH_ALTERED_SEARCH_PATH)) {
        std::puts("the library cannot be loaded");
        return 1;
    }
    std::puts("held");
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    return 0;
}
