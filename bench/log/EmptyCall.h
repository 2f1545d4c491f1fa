// A function that does nothing, elsewhere: what a call costs at least.
#pragma once

void emptyCall(const char* format, ...);
