#include "differential/other_side.hpp"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <sstream>
#include <stdexcept>

namespace differential {

namespace {

/// The two ends of a pipe.
struct pipe_ends
{
    int reading = -1;
    int writing = -1;
};

pipe_ends make_pipe()
{
    int ends[2];
    if (::pipe(ends) != 0)
        throw std::runtime_error("no pipe");
    return {ends[0], ends[1]};
}

[[noreturn]] void become(std::string const &command, pipe_ends in, pipe_ends out)
{
    ::dup2(in.reading, STDIN_FILENO);
    ::dup2(out.writing, STDOUT_FILENO);
    for (int const end : {in.reading, in.writing, out.reading, out.writing})
        ::close(end);
    ::execl("/bin/sh", "sh", "-c", command.c_str(), static_cast<char *>(nullptr));
    ::_exit(127);
}

} // namespace

other_side::other_side(std::string const &command)
{
    std::signal(SIGPIPE, SIG_IGN); // writing fails then, and that is reported
    pipe_ends const in = make_pipe();
    pipe_ends const out = make_pipe();
    process_ = ::fork();
    if (process_ == 0)
        become(command, in, out);
    ::close(in.reading);
    ::close(out.writing);
    to_.reset(::fdopen(in.writing, "w"));
    from_.reset(::fdopen(out.reading, "r"));
    if (process_ < 0 || !to_ || !from_)
        throw std::runtime_error("the other side can't be started");
}

other_side::~other_side()
{
    to_.reset();
    from_.reset();
    if (process_ > 0)
        ::waitpid(process_, nullptr, 0);
}

std::string other_side::answer_text()
{
    std::string text, line;
    for (int unit; (unit = std::fgetc(from_.get())) != EOF;) {
        line += static_cast<char>(unit);
        if (unit != '\n')
            continue;
        text += line;
        if (line == "end\n" || line == "end\r\n")
            return text;
        line.clear();
    }
    throw std::runtime_error("the other side has ended");
}

outcome other_side::run(sequence const &steps, unsigned int number)
{
    std::ostringstream question;
    write_sequence(question, {number, steps});
    std::string const text = question.str();
    if (std::fwrite(text.data(), 1, text.size(), to_.get()) != text.size() ||
        std::fflush(to_.get()) != 0)
        throw std::runtime_error("the other side doesn't listen");
    try {
        std::istringstream answer(answer_text());
        return read_outcome(answer);
    } catch (std::runtime_error const &trouble) {
        throw std::runtime_error(trouble.what() + (" at this sequence:\n" + text));
    }
}

} // namespace differential
