// Runs random sequences on the simulated machine and on the other side and compares
// what comes of them. Ends at the first disagreement, with the shortest sequence that
// shows it.

#include "differential/comparison.hpp"
#include "differential/generator.hpp"
#include "differential/other_side.hpp"
#include "differential/shrinking.hpp"

#include <CLI/CLI.hpp>

#include <iostream>
#include <map>

namespace differential {

namespace {

struct options
{
    std::uint64_t seed = 1;
    std::size_t calls = 24000;
    std::size_t length = 12;
    std::string other;
    bool is_survey = false;
};

class runner
{
public:
    explicit runner(options const &chosen)
        : chosen_(chosen), other_(chosen.other), generator_(chosen.seed, all_functions())
    {
    }

    /// Returns the exit code.
    int run();

private:
    verdict run_both(sequence const &steps);
    void report(sequence const &steps);
    void survey(sequence const &steps, disagreement const &found);
    void summarize() const;

    options chosen_;
    other_side other_;
    generator generator_;
    unsigned int number_ = 0;
    std::size_t compared_ = 0, sequences_ = 0, cut_short_ = 0, disagreements_ = 0;
    std::map<intended_difference const *, std::size_t> intended_;
};

verdict runner::run_both(sequence const &steps)
{
    ++number_; // a folder of its own each time: nothing is left of the one before
    outcome const ours = run_sequence(steps, number_);
    outcome const theirs = other_.run(steps, number_);
    verdict found = compare(steps, ours, theirs, number_);
    if (found.comparable == steps.size())
        return found;
    // the part that is comparable, to see that the trees agree up to there
    sequence const part(steps.begin(),
                        steps.begin() + static_cast<std::ptrdiff_t>(found.comparable) - 1);
    ++number_;
    verdict ahead = compare(part, run_sequence(part, number_), other_.run(part, number_), number_);
    if (ahead.first)
        found.first = ahead.first;
    return found;
}

void runner::report(sequence const &steps)
{
    sequence const shortest =
        shrunk(steps, [this](sequence const &part) { return run_both(part).first.has_value(); });
    verdict const found = run_both(shortest);
    std::cout << "The two sides disagree. The shortest sequence that shows it:\n\n";
    write_sequence(std::cout, {1, shortest});
    if (!found.first) {
        std::cout << "\nIt did, but does no longer: something else plays a part.\n";
        return;
    }
    bool const is_tree = found.first->step == shortest.size();
    std::cout << '\n'
              << (is_tree ? "in the tree at its end"
                          : "at step " + std::to_string(found.first->step + 1))
              << ":\n    simulation: " << found.first->ours
              << "\n    other side: " << found.first->theirs << '\n';
}

void runner::survey(sequence const &steps, disagreement const &found)
{
    std::string const where =
        found.step < steps.size() ? to_line(steps[found.step]) : "the tree at the end";
    std::cout << where << "\n    simulation: " << found.ours << "\n    other side: " << found.theirs
              << '\n';
}

void runner::summarize() const
{
    std::cout << compared_ << " calls in " << sequences_ << " sequences, seed " << chosen_.seed
              << ", " << cut_short_ << " of them cut short by an intended difference\n";
    std::size_t sum = 0;
    for (auto const &[known, count] : intended_)
        sum += count;
    std::cout << sum << " of them differ as intended:\n";
    for (intended_difference const &known : intended_differences()) {
        auto const found = intended_.find(&known);
        std::size_t const count = found == intended_.end() ? 0 : found->second;
        std::cout << "    " << count << '\t' << signature_of(known.what).name << ": " << known.ours
                  << " here, " << known.theirs << " there: " << known.reason
                  << (count == 0 ? " (not met in this run)" : "") << '\n';
    }
    std::cout << compared_ << " passed, " << disagreements_ << " failed" << std::endl;
}

int runner::run()
{
    while (compared_ < chosen_.calls) {
        sequence const steps = generator_.next(chosen_.length);
        verdict const found = run_both(steps);
        ++sequences_;
        compared_ += found.compared;
        cut_short_ += found.comparable != steps.size();
        for (auto const *known : found.intended)
            ++intended_[known];
        if (!found.first)
            continue;
        ++disagreements_;
        if (!chosen_.is_survey) {
            report(steps);
            break;
        }
        survey(steps, *found.first);
        if (sequences_ * chosen_.length > 2 * chosen_.calls)
            break;
    }
    summarize();
    return disagreements_ == 0 ? 0 : 1;
}

} // namespace

} // namespace differential

int main(int argc, char **argv)
{
    CLI::App app("Compares the simulated machine with another side, call by call.");
    differential::options chosen;
    app.add_option("--seed", chosen.seed, "Where the random numbers start");
    app.add_option("--calls", chosen.calls, "How many calls to compare")
        ->check(CLI::PositiveNumber);
    app.add_option("--length", chosen.length, "Calls in one sequence")->check(CLI::PositiveNumber);
    app.add_option("--other", chosen.other, "The command that runs differential_replay there")
        ->required();
    app.add_flag("--survey", chosen.is_survey, "Go on after a disagreement and list them all");
    CLI11_PARSE(app, argc, argv);
    try {
        return differential::runner(chosen).run();
    } catch (std::exception const &failure) {
        std::cerr << "differential_run: " << failure.what() << '\n';
        return 2;
    }
}
