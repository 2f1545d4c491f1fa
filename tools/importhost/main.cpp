#include "commandline/Arguments.h"
#include "importhost/Command.h"
#include "importhost/System.h"

int main(int argc, char** argv) {
    importhost::useUtf8Output();
    importhost::failWithoutDialogs();
    return importhost::runCommandLine(utf8Arguments(argc, argv));
}
