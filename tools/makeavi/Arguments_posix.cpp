#include "makeavi/Arguments.h"

namespace makeavi {

std::vector<std::string> utf8Arguments(int argc, char** argv) {
    return {argv + 1, argv + argc};
}

}  // namespace makeavi
