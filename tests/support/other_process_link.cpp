#include "support/other_process.h"

#include <array>
#include <stdexcept>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tamrix::tests {

other_process::other_process()
{
    int down[2], up[2];
    if (::pipe2(down, O_CLOEXEC) != 0 || ::pipe2(up, O_CLOEXEC) != 0) throw std::runtime_error{"pipe"};
    pid_ = ::fork();
    if (pid_ < 0) throw std::runtime_error{"fork"};
    if (pid_ == 0) {
        ::dup2(down[0], STDIN_FILENO);
        ::dup2(up[1], STDOUT_FILENO);
        ::execl(TAMRIX_OTHER_PROCESS, TAMRIX_OTHER_PROCESS, static_cast<char*>(nullptr));
        ::_exit(127);
    }
    ::close(down[0]);
    ::close(up[1]);
    orders_ = ::fdopen(down[1], "w");
    answers_ = ::fdopen(up[0], "r");
}

other_process::~other_process()
{
    std::fclose(orders_);  // the end of its input ends it
    std::fclose(answers_);
    ::waitpid(pid_, nullptr, 0);
}

std::string other_process::order(const std::string& line)
{
    std::fprintf(orders_, "%s\n", line.c_str());
    std::fflush(orders_);
    std::string answer;
    for (std::array<char, 4096> part; std::fgets(part.data(), part.size(), answers_) != nullptr;) {
        answer += part.data();
        if (answer.back() == '\n') return answer.substr(0, answer.size() - 1);
    }
    throw std::runtime_error{"the other process is gone"};
}

}  // namespace tamrix::tests
