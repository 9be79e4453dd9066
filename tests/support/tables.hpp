#ifndef FL_FILESYSTEM_TESTS_SUPPORT_TABLES_HPP
#define FL_FILESYSTEM_TESTS_SUPPORT_TABLES_HPP
// The rows that most tables have, and what plays them.

#include "support/text.hpp"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace test_support {

/// A row of a table: what is given, what comes of it, and why.
template <typename Given, typename Expected>
struct row_of
{
    Given given;
    Expected expected;
    char const *why;
};

/// The same where two things are given.
template <typename First, typename Second, typename Expected>
struct row_of_two
{
    First first;
    Second second;
    Expected expected;
    char const *why;
};

/// The same where it is two texts.
template <typename Char, typename Expected = Char const *>
using row_of_texts = row_of_two<Char const *, Char const *, Expected>;

/// What `of` makes of what a row gives.
template <typename Row, typename Of>
auto outcome_of_row(Row const &row, Of of)
{
    if constexpr (requires { row.text; })
        return of(row.text);
    else if constexpr (requires { row.first; })
        return of(row.first, row.second);
    else
        return of(row.given);
}

/// A value as a failing test shows it.
template <typename Value>
std::string shown_value(Value const &value)
{
    if constexpr (requires { printable(value); })
        return printable(value);
    else
        return testing::PrintToString(value);
}

/// What a row gives.
template <typename Row>
std::string given_by(Row const &row)
{
    if constexpr (requires { row.text; })
        return shown_value(row.text);
    else if constexpr (requires { row.first; })
        return shown_value(row.first) + ", " + shown_value(row.second);
    else
        return shown_value(row.given);
}

/// Plays a table: `of` makes of what each row gives what the row expects.
template <typename Rows, typename Of>
void expect_rows(Rows const &rows, Of of)
{
    for (auto const &row : rows)
        EXPECT_EQ(outcome_of_row(row, of), row.expected) << given_by(row) << ": " << row.why;
}

} // namespace test_support

#endif
