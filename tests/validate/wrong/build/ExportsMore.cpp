#include "wrong/Export.h"

WRONG_EXPORT int oneMoreExport();

int oneMoreExport() { return 1; }
