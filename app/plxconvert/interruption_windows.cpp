#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include "plxconvert/interruption.h"
#include "plxutils/core/WholeFile.h"

namespace plx::tool {

namespace {

BOOL WINAPI remove_files(DWORD) {
    remove_unfinished_files();
    // The system's own handler comes next and ends the program.
    return FALSE;
}

}  // namespace

void clean_up_when_interrupted() { SetConsoleCtrlHandler(&remove_files, TRUE); }

}  // namespace plx::tool
