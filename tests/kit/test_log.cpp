#include "kit/test_log.hpp"

#include <cstdlib>
#include <sstream>

namespace kit {

namespace {

bool begins(std::string const &line, char const *beginning)
{
    return line.rfind(beginning, 0) == 0;
}

/// The first number in a line, from a place on.
int number_in(std::string const &line, std::size_t from)
{
    return std::atoi(line.c_str() + from);
}

constexpr char bar[] = "[==========] ";
constexpr char run_mark[] = "[ RUN      ] ";
constexpr char passed_mark[] = "[  PASSED  ] ";
constexpr char failed_mark[] = "[  FAILED  ] ";
constexpr char skipped_mark[] = "[  SKIPPED ] ";
constexpr std::size_t mark = sizeof bar - 1; // all have this length

/// A closing line: `12 tests, listed below:`, behind its mark.
void count(std::string const &line, test_log &log)
{
    bool const counts = line.find(" test") != std::string::npos;
    if (begins(line, passed_mark))
        log.passed = number_in(line, mark);
    else if (begins(line, skipped_mark) && counts)
        log.skipped = number_in(line, mark);
    else if (begins(line, failed_mark) && counts)
        log.failed = number_in(line, mark);
}

} // namespace

test_log read_test_log(std::string const &output)
{
    test_log log;
    std::istringstream stream(output);
    std::string printed; // by the test that runs
    bool tells_why = false;
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (tells_why)
            ++log.reasons[line];
        tells_why = line.size() > 7 && line.compare(line.size() - 7, 7, "Skipped") == 0;
        if (begins(line, bar) && line.find(" ran.") != std::string::npos) {
            log.ended = true;
            log.ran = number_in(line, mark);
        } else if (log.ended) {
            count(line, log);
        } else if (begins(line, run_mark)) {
            printed.clear();
        } else if (begins(line, failed_mark)) {
            log.failures.push_back(printed + line + "\n");
        } else {
            printed += line + "\n";
        }
    }
    return log;
}

std::string fitting(std::vector<std::string> const &failures, std::size_t room)
{
    std::string text;
    for (std::size_t at = 0; at < failures.size(); ++at) {
        if (text.size() + failures[at].size() > room)
            return text + "... and " + std::to_string(failures.size() - at) + " more\n";
        text += failures[at];
    }
    return text;
}

std::string last_lines(std::string const &text, int count)
{
    std::size_t from = text.size();
    while (from > 0 && count >= 0) {
        --from;
        if (text[from] == '\n' && from + 1 != text.size())
            --count;
        if (count == 0)
            return text.substr(from + 1);
    }
    return text;
}

} // namespace kit
