// Handlers that the host had before the library's: they get what the library does not translate. Each test
// runs in a process of its own, since a process installs the library's handler once.
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <stdexcept>
#include <thread>

#include "frame/traps.h"
#include "zul/frame.h"

namespace zul {
namespace {

constexpr int kPlainHandler = 41;
constexpr int kInfoHandler = 42;
constexpr int kSurvived = 43;
constexpr int kTranslated = 44;

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

// A trap of a thread that has registered.
void EndByTrap() {
    double (*volatile divide)(double, double) =
        test::Divide;  // which may throw, as far as the compiler knows
    SetKelFpuStates();
    try {
        divide(1, 0);
    } catch (const std::runtime_error&) {
        _exit(kTranslated);
    }
}

TEST(Registering, UnblocksTheSignalForItsThread) {
    EXPECT_EXIT(std::thread([] {
                    sigset_t all;
                    sigfillset(&all);
                    pthread_sigmask(SIG_SETMASK, &all, nullptr);
                    RegisterKelSigfpeHandler();
                    EndByTrap();
                }).join(),
                testing::ExitedWithCode(kTranslated), "");
}

TEST(Registering, InstallsAnewWhereTheHostPutTheDefaultBack) {
    for (void (*const handler)(int) : {SIG_DFL, SIG_IGN}) {
        EXPECT_EXIT((InstallHost(0), SetDisposition(handler, 0), EndByTrap()),
                    testing::ExitedWithCode(kTranslated), "");
    }
    // What is passed on then goes where the host wants it, not to its first handler.
    EXPECT_EXIT((InstallHost(0), SetDisposition(SIG_DFL, 0), raise(SIGFPE)), testing::KilledBySignal(SIGFPE),
                "");
    EXPECT_EXIT((InstallHost(0), SetDisposition(SIG_IGN, 0), raise(SIGFPE), _exit(kSurvived)),
                testing::ExitedWithCode(kSurvived), "");
    // A handler that the host sets later stays.
    EXPECT_EXIT((RegisterKelSigfpeHandler(), SetDisposition(OnSignal, 0), EndByTrap()),
                testing::ExitedWithCode(kPlainHandler), "");
}

}  // namespace
}  // namespace zul
