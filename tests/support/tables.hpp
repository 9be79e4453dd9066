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

/// Each row's text comes to what it expects by `of`: a text, an answer, or any other value.
template <typename Rows, typename Of>
void expect_rows(Rows const &rows, Of of)
{
    for (auto const &row : rows)
        EXPECT_EQ(of(row.text), row.expected) << printable(row.text) << ": " << row.why;
}

} // namespace test_support

#endif
