#include "differential/wire.hpp"

#include <stdexcept>
#include <string>

namespace differential {

namespace {

/// A line without its end, whichever system's it is.
bool next_line(std::istream &in, std::string &line)
{
    if (!std::getline(in, line))
        return false;
    if (line.ends_with('\r'))
        line.pop_back();
    return true;
}

[[noreturn]] void refuse(std::string const &line)
{
    throw std::runtime_error("unexpected line: " + line);
}

constexpr std::string_view sequence_word = "sequence ", answer_word = "answer ",
                           tree_word = "tree ", end_word = "end";

} // namespace

void write_sequence(std::ostream &out, numbered_sequence const &one)
{
    out << sequence_word << one.number << '\n';
    for (step const &each : one.steps)
        out << to_line(each) << '\n';
    out << end_word << std::endl;
}

bool read_sequence(std::istream &in, numbered_sequence &one)
{
    std::string line;
    while (line.empty() || line.starts_with('#')) { // comments, for sequences in files
        if (!next_line(in, line))
            return false;
    }
    if (!line.starts_with(sequence_word))
        refuse(line);
    one = {static_cast<unsigned int>(std::stoul(line.substr(sequence_word.size()))), {}};
    while (next_line(in, line)) {
        if (line == end_word)
            return true;
        one.steps.push_back(from_line(line));
    }
    refuse("the input ends within a sequence");
}

void write_outcome(std::ostream &out, outcome const &one)
{
    for (std::string const &answer : one.answers)
        out << answer_word << answer << '\n';
    for (std::string const &line : one.tree)
        out << tree_word << line << '\n';
    out << end_word << std::endl;
}

outcome read_outcome(std::istream &in)
{
    outcome one;
    std::string line;
    while (next_line(in, line)) {
        if (line == end_word)
            return one;
        if (line.starts_with(answer_word))
            one.answers.push_back(line.substr(answer_word.size()));
        else if (line.starts_with(tree_word))
            one.tree.push_back(line.substr(tree_word.size()));
        else
            refuse(line);
    }
    refuse("the other side has ended");
}

} // namespace differential
