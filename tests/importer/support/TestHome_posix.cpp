#include "TestHome.h"

#include "support/TempFolder.h"

#include <cstdlib>

void useTestHome() {
    static const TempFolder home;
    setenv("HOME", home.folder().c_str(), 1);
}
