// The folder for the plug-in's logs in this program.
#pragma once

// Natively: a temporary folder of the program, instead of the user's home. On Windows the plug-in asks the system for
// the folder, which cannot be replaced. Call once, before the first log.
void useTestHome();
