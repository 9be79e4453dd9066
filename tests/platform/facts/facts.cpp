#include "platform/facts/facts.hpp"

#include "platform/facts/script.hpp"

#include <stdexcept>
#include <string>

namespace contract::facts {

namespace {

bool holds_here(fact const &row)
{
    switch (row.where) {
    case on::all:
        return true;
    case on::names_kept:
        return !frees_names_at_once();
    case on::names_freed:
        return frees_names_at_once();
    case on::devices_anywhere:
        return finds_devices_anywhere();
    case on::devices_alone:
        return !finds_devices_anywhere();
    case on::short_pathnames:
        return !takes_long_pathnames() && !runs_under_wine(); // which knows no limit
    case on::long_pathnames:
        return takes_long_pathnames();
    case on::no_host:
        return !runs_under_wine();
    }
    throw std::logic_error("a row holds somewhere");
}

/// What is wrong, or nothing.
std::string run(fact const &row, stage &on_stage)
{
    for (std::string const &text : steps_of(row.script)) {
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

} // namespace

void check(std::span<fact const> rows)
{
    for (fact const &row : rows) {
        EXPECT_NE(*row.source, '\0') << row.script;
        stage on_stage;
        if (!holds_here(row) || !on_stage.obstacle(row.script).empty())
            continue;
        std::string wrong;
        try {
            wrong = run(row, on_stage);
        } catch (std::exception const &failed) {
            wrong = failed.what();
        }
        if (row.wine == nullptr || !runs_under_wine()) {
            EXPECT_EQ(wrong, "") << row.script << "\n  " << row.source << ": " << row.says;
        } else if (test_support::wine_version() == 8) { // the one that rows tell about
            EXPECT_NE(wrong, "") << row.script
                                 << "\n  Wine 8 does as Windows, although it is said: " << row.wine;
        }
    }
}

} // namespace contract::facts
