#include "ProbeRun.h"

#include <cstdlib>

void setEnvironment(const char* name, const std::string& value) { ::setenv(name, value.c_str(), 1); }
