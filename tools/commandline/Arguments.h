// A program's arguments as UTF-8 on every system.
#pragma once

#include <string>
#include <vector>

// The arguments after the program's name, in UTF-8. Pass main's parameters.
std::vector<std::string> utf8Arguments(int argc, char** argv);
