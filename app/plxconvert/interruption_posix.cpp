#include <csignal>

#include "plxconvert/interruption.h"
#include "plxutils/core/WholeFile.h"

namespace plx::tool {

namespace {

extern "C" void remove_files_and_end(int number) {
    remove_unfinished_files();
    // The handler is gone by now, and the signal not blocked: this ends the program.
    std::raise(number);
}

}  // namespace

void clean_up_when_interrupted() {
    struct sigaction action {};
    action.sa_handler = &remove_files_and_end;
    sigfillset(&action.sa_mask);
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE, SIGXCPU}) {
        struct sigaction before {};
        // What the caller ignores stays ignored, as under nohup.
        if (sigaction(number, nullptr, &before) != 0 || before.sa_handler == SIG_IGN) continue;
        sigdelset(&action.sa_mask, number);
        action.sa_flags = static_cast<int>(SA_RESETHAND | SA_NODEFER);
        sigaction(number, &action, nullptr);
        sigaddset(&action.sa_mask, number);
    }
    std::signal(SIGXFSZ, SIG_IGN);
}

}  // namespace plx::tool
