// libc++ takes the functions for fibers from here; Wine has them in windows.h.
#pragma once
#include <windows.h>
