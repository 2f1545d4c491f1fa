// Where the plug-in's logs of this program go.
#pragma once

// Natively: a folder of the program's own, gone at its end, instead of the home of whoever runs the tests. On Windows
// the plug-in asks the system, so nothing can be put in its way. Call once, before the first log.
void useTestHome();
