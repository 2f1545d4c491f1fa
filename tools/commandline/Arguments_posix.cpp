#include "commandline/Arguments.h"

std::vector<std::string> utf8Arguments(int argc, char** argv) {
    return {argv + 1, argv + argc};
}
