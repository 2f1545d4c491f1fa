#include "commandline/Arguments.h"
#include "importhost/commands/Command.h"
#include "importhost/console/System.h"

int main(int argc, char** argv) {
    importhost::useUtf8Output();
    importhost::failWithoutDialogs();
    return importhost::runCommandLine(utf8Arguments(argc, argv));
}
