#include "avidump/System.h"

namespace avidump {

std::vector<std::string> utf8Arguments(int argc, char** argv) {
    return {argv + 1, argv + argc};
}

void useBinaryOutput() {}

}  // namespace avidump
