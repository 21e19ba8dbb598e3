#include "python_peers.h"

#include <cstdio>
#include <cstdlib>
#include <initializer_list>

#include <unistd.h>

namespace zul::bench {
namespace {

// The process ends when its input does, with this one.
class Python {
public:
    Python() {
        int questions[2];
        int answers[2];
        if (pipe(questions) != 0 || pipe(answers) != 0) Fail("pipe");
        const int child = fork();
        if (child < 0) Fail("fork");
        if (child == 0) {
            dup2(questions[0], STDIN_FILENO);
            dup2(answers[1], STDOUT_FILENO);
            for (const int end : {questions[0], questions[1], answers[0], answers[1]})
                close(end);
            execl(ZUL_BENCH_PYTHON, ZUL_BENCH_PYTHON, ZUL_BENCH_PYTHON_PEERS, nullptr);
            _exit(1);
        }
        close(questions[0]);
        close(answers[1]);
        questions_ = fdopen(questions[1], "w");
        answers_ = fdopen(answers[0], "r");
    }

    double Seconds(const char* function, int rows, int columns) {
        std::fprintf(questions_, "%s %d %d\n", function, rows, columns);
        std::fflush(questions_);
        char line[64];
        if (std::fgets(line, sizeof line, answers_) == nullptr) Fail("python_peers.py");
        return std::strtod(line, nullptr);
    }

private:
    [[noreturn]] static void Fail(const char* what) {
        std::perror(what);
        std::exit(1);
    }

    std::FILE* questions_;
    std::FILE* answers_;
};

}  // namespace

double SecondsInPython(const char* function, int rows, int columns) {
    static Python python;
    return python.Seconds(function, rows, columns);
}

}  // namespace zul::bench
