// The command line's arguments as UTF-8, without the program's name.
#pragma once

#include <string>
#include <vector>

namespace makeavi {

std::vector<std::string> utf8Arguments(int argc, char** argv);

}  // namespace makeavi
