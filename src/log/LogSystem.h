// What the log asks of the operating system.
#pragma once

#include <ctime>
#include <string>

namespace logSystem {

// The user's switch, false unless set.
bool switchIsOn();

std::tm localTime();

// The calling thread's number, as the system's own tools show it.
unsigned long threadNumber();

// The full path of the running program; empty when the system does not tell.
std::string applicationPath();

// A console window of 120 columns by 500 rows, and a line written to it.
void openConsole();
void writeConsole(const char* line);

}  // namespace logSystem
