// What avidump needs of the system beyond files.
#pragma once

#include <string>
#include <vector>

namespace avidump {

/// The command line's arguments as UTF-8, without the program's name.
std::vector<std::string> utf8Arguments(int argc, char** argv);

/// Makes standard output take bytes as they are: the same lines on every system.
void useBinaryOutput();

}  // namespace avidump
