// What the log needs from the operating system.
#pragma once

#include <ctime>
#include <string>

namespace logSystem {

// The user's switch; false unless set.
bool switchIsOn();

std::tm localTime();

// The id of the calling thread, as the system's own tools show it.
unsigned long threadNumber();

// The full path of the running program; empty if unknown.
std::string applicationPath();

// Opens a console window of 120 columns by 500 rows; writes a line to it.
void openConsole();
void writeConsole(const char* line);

}  // namespace logSystem
