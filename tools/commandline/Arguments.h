// A program's arguments in one spelling on every system.
#pragma once

#include <string>
#include <vector>

// The arguments after the program's name, in UTF-8; takes what main was given.
std::vector<std::string> utf8Arguments(int argc, char** argv);
