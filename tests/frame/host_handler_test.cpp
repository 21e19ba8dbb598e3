// Handlers that the host had before the library's: they get what the library does not translate. Each test
// runs in a process of its own, since a process installs the library's handler once.
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <thread>

#include "frame/traps.h"
#include "zul/frame.h"

namespace zul {
namespace {

constexpr int kPlainHandler = 41;
constexpr int kInfoHandler = 42;
constexpr int kSurvived = 43;

void OnSignal(int) {
    _exit(kPlainHandler);
}

void OnSignalWithInfo(int, siginfo_t* info, void*) {
    _exit(info->si_code == FPE_FLTDIV || info->si_code == SI_TKILL ? kInfoHandler : 1);
}

void InstallHost(int flags) {
    struct sigaction action = {};
    if (flags == SA_SIGINFO) {
        action.sa_sigaction = OnSignalWithInfo;
    } else {
        action.sa_handler = OnSignal;
    }
    action.sa_flags = flags;
    sigaction(SIGFPE, &action, nullptr);
    RegisterKelSigfpeHandler();
    RegisterKelSigfpeHandler();  // again: the handler must not become its own predecessor
}

void TrapOnAThreadThatDidNotRegister() {
    std::thread([] {
        SetKelFpuStates();
        volatile double result = test::Divide(1, 0);
        (void)result;
    }).join();
}

TEST(HostHandler, GetsForeignTrapsAndSentSignals) {
    EXPECT_EXIT((InstallHost(0), TrapOnAThreadThatDidNotRegister()), testing::ExitedWithCode(kPlainHandler),
                "");
    EXPECT_EXIT((InstallHost(SA_SIGINFO), TrapOnAThreadThatDidNotRegister()),
                testing::ExitedWithCode(kInfoHandler), "");
    EXPECT_EXIT((InstallHost(SA_SIGINFO), raise(SIGFPE)), testing::ExitedWithCode(kInfoHandler), "");
}

void SetDisposition(void (*handler)(int), int flags) {
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = flags;
    sigaction(SIGFPE, &action, nullptr);
    RegisterKelSigfpeHandler();
}

TEST(HostHandler, DefaultAndIgnoreStayWhatTheyAre) {
    for (const int flags : {0, SA_SIGINFO}) {
        EXPECT_EXIT((SetDisposition(SIG_DFL, flags), raise(SIGFPE)), testing::KilledBySignal(SIGFPE), "");
        EXPECT_EXIT((SetDisposition(SIG_IGN, flags), raise(SIGFPE), _exit(kSurvived)),
                    testing::ExitedWithCode(kSurvived), "");
        EXPECT_EXIT((SetDisposition(SIG_IGN, flags), TrapOnAThreadThatDidNotRegister()),
                    testing::KilledBySignal(SIGFPE), "");
    }
}

}  // namespace
}  // namespace zul
