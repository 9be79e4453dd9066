#ifndef FL_FILESYSTEM_TESTS_SUPPORT_TABLES_HPP
#define FL_FILESYSTEM_TESTS_SUPPORT_TABLES_HPP
// The rows that most tables have, and what plays them.

#include "support/failure.hpp"
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

/// The same where it fails.
template <typename Given>
using failing_row = row_of<Given, failure>;

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

inline std::string printable(std::wstring_view text)
{
    return printable(units(text));
}

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

/// What a row gives, as a failing test shows it.
template <typename Row>
std::string given_by(Row const &row)
{
    if constexpr (requires { printable(row.text); })
        return printable(row.text);
    else if constexpr (requires { printable(row.first); })
        return printable(row.first) + ", " + printable(row.second);
    else if constexpr (requires { row.given; })
        return testing::PrintToString(row.given);
    else
        return "row";
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
