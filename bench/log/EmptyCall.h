// A function in another source that does nothing: the minimum cost of a call.
#pragma once

void emptyCall(const char* format, ...);
