// Makes a function visible to whoever loads the library.
#pragma once

#ifdef _WIN32
#define WRONG_EXPORT extern "C" __declspec(dllexport)
#else
#define WRONG_EXPORT extern "C" __attribute__((visibility("default")))
#endif
