// What the probe has against its host, collected for the whole life of the library and written as a report.
//
// The report is the file that HOSTPROBE_REPORT names: one complaint a line, each once, and at last the line
// "N calls checked", without which the report is not whole. Safe on any thread.
#pragma once

#include "probe/Sentences.h"

#include <initializer_list>
#include <string>

namespace hostprobe {

void complain(Sentence sentence, std::initializer_list<std::string> details = {});

// One call of either entry.
void countCall();

// Writes the report, and again whenever something comes later. Without this it is written when the library is
// unloaded, with the complaint that it was never shut down.
void writeReport();

// "{0}" and so on replaced.
std::string fill(const char* text, std::initializer_list<std::string> details);

}  // namespace hostprobe
