#include "TestHome.h"

void useTestHome() {}
