#include "ProbeRun.h"

#include <cstdlib>

// The C library's own copy of the environment is the one that the probe reads; it passes changes on to the system.
void setEnvironment(const char* name, const std::string& value) { ::_putenv_s(name, value.c_str()); }
