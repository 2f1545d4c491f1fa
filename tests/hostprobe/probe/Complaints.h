// The complaints about the host, collected for the whole life of the library and written as a report.
//
// The report is the file that HOSTPROBE_REPORT names: one complaint a line, each once, and at the end the line
// "N calls checked", without which the report is not whole. Safe on any thread.
#pragma once

#include "probe/Sentences.h"
#include "sdk/SdkTypes.h"

#include <initializer_list>
#include <string>

namespace hostprobe {

void complain(Sentence sentence, std::initializer_list<std::string> details = {});

// Complains unless `isTrue`, which it returns.
bool expect(bool isTrue, Sentence sentence, std::initializer_list<std::string> details = {});

// Complains that `function` failed, of a suite's negative result or of any but zero; returns whether it did not.
bool expectGood(const char* function, csSDK_int32 result);
bool expectZero(const char* function, csSDK_int32 result);

// One call of either entry.
void countCall();

// Writes the report, and writes it again whenever it changes later. Otherwise it is written when the library is
// unloaded, with the complaint that it was never shut down.
void writeReport();

}  // namespace hostprobe
