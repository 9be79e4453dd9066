#include "platform/facts/facts.hpp"

#include "platform/facts/script.hpp"

#include <stdexcept>

namespace contract::facts {

namespace {

/// What is wrong, or nothing.
std::string run(fact const &told, stage &on_stage)
{
    for (std::string const &text : steps_of(told.script)) {
        step const next = parse_step(text);
        std::string answer;
        DWORD const code = on_stage.run(next, answer);
        if (code != next.code)
            return text + " has the code " + std::to_string(code);
        if (next.answer && answer != *next.answer)
            return text + " answers " + answer;
    }
    return {};
}

void check(fact const &told)
{
    stage on_stage;
    bool const holds_here = told.only == nullptr || told.only->holds();
    if (!holds_here || !on_stage.obstacle(told.script).empty())
        return;
    std::string wrong;
    try {
        wrong = run(told, on_stage);
    } catch (std::exception const &failed) {
        wrong = failed.what();
    }
    std::string const shown = told.place + ": " + told.script + "\n  ";
    if (!told.wine || !runs_under_wine()) {
        EXPECT_EQ(wrong, "") << shown << told.witness << ": " << told.says;
    } else if (test_support::wine_version() == 8) { // the one that facts tell about
        EXPECT_NE(wrong, "") << shown
                             << "Wine 8 does as Windows, although it is said: " << *told.wine;
    }
}

} // namespace

void check(std::string const &file, std::span<char const *const> lines)
{
    for (fact const &told : parse(file, lines))
        check(told);
}

} // namespace contract::facts
