#include <fl/filesystem/path.hpp>

#include <fl/filesystem/exceptions.hpp>

#include "support/names.hpp"

#include <boost/exception_ptr.hpp>

#include <type_traits>

namespace fl::filesystem::tests {
namespace {

using namespace std::string_view_literals;

test_support::failure conversion_failure()
{
    return {fsys_excp_file_name_conversion_failure,
            "fl:filesystem:FileNameConversionFailure",
            {},
            {},
            0};
}

struct utf8_case
{
    std::u16string_view text;
    std::string_view bytes;
    char const *why;
};

constexpr utf8_case utf8_cases[] = {
    {u""sv, ""sv, "nothing"},
    {u"C:\\a"sv, "C:\\a"sv, "ASCII is itself"},
    {u"\0a"sv, "\0a"sv, "a NUL is one byte"},
    {u"\x7F"sv, "\x7F"sv, "the last with one byte"},
    {u"\x80"sv, "\xC2\x80"sv, "the first with two"},
    {u"C:\\caf\u00E9"sv, "C:\\caf\xC3\xA9"sv, "a letter with an accent"},
    {u"\u07FF"sv, "\xDF\xBF"sv, "the last with two"},
    {u"\u0800"sv, "\xE0\xA0\x80"sv, "the first with three"},
    {u"\uD7FF"sv, "\xED\x9F\xBF"sv, "the last before the surrogates"},
    {u"\xD800"sv, "\xED\xA0\x80"sv, "the first half of nothing"},
    {u"\xDBFF"sv, "\xED\xAF\xBF"sv, "the last first half"},
    {u"\xDC00"sv, "\xED\xB0\x80"sv, "a second half without a first"},
    {u"\xDFFF"sv, "\xED\xBF\xBF"sv, "the last second half"},
    {u"\xDC00\xD800"sv, "\xED\xB0\x80\xED\xA0\x80"sv, "halves in the wrong order"},
    {u"\xD800\xD800\xDC00"sv, "\xED\xA0\x80\xF0\x90\x80\x80"sv, "a half ahead of a pair"},
    {u"\xD800x\xDC00"sv, "\xED\xA0\x80x\xED\xB0\x80"sv, "halves with a letter between"},
    {u"\uE000"sv, "\xEE\x80\x80"sv, "the first behind the surrogates"},
    {u"\xFFFF"sv, "\xEF\xBF\xBF"sv, "the last with three"},
    {u"\U00010000"sv, "\xF0\x90\x80\x80"sv, "the first pair"},
    {u"\U0001F600"sv, "\xF0\x9F\x98\x80"sv, "a pair"},
    {u"\U0001F601"sv, "\xF0\x9F\x98\x81"sv, "the next, whose last byte is another"},
    {u"\U0010FFFF"sv, "\xF4\x8F\xBF\xBF"sv, "the last number"},
};

TEST(Utf8, BothWays)
{
    for (auto const &row : utf8_cases) {
        EXPECT_EQ(to_utf8(row.text), row.bytes) << row.why;
        EXPECT_EQ(from_utf8(row.bytes), row.text) << row.why;
    }
}

struct refused_case
{
    std::string_view bytes;
    char const *why;
};

constexpr refused_case refused_cases[] = {
    {"\x80"sv, "a tail without a lead"},
    {"\xBF"sv, "another"},
    {"\xC3"sv, "ends after the lead"},
    {"\xE2\x82"sv, "ends within three"},
    {"\xF0\x9F\x98"sv, "ends within four"},
    {"\xC3x"sv, "a letter for a tail"},
    {"\xC3\xC3\xA9"sv, "a lead for a tail"},
    {"\xE2\x82x"sv, "a letter for the last tail"},
    {"\xC0\x80"sv, "a longer NUL"},
    {"\xC1\xBF"sv, "a longer ASCII"},
    {"\xE0\x9F\xBF"sv, "three for what takes two"},
    {"\xF0\x8F\xBF\xBF"sv, "four for what takes three"},
    {"\xF4\x90\x80\x80"sv, "beyond the last number"},
    {"\xF5\x80\x80\x80"sv, "a lead of numbers that there aren't"},
    {"\xF8\x88\x80\x80\x80"sv, "five bytes"},
    {"\xFF"sv, "never a byte of it"},
    {"\x80\x80\x80\x80\x80\x80\x80"sv, "tails without a lead"},
    {"\xC0\x80\x80\x80\x80\x80\x80"sv, "a lead of nothing, and tails enough"},
    {"\xF8\x80\x80\x80\x80\x80\x80"sv, "a lead of five bytes, and tails enough"},
    {"\x80\x84\x8F\xBF\xBF"sv, "a tail in the place of a lead of five"},
    {"\xC0\x84\x8F\xBF\xBF"sv, "a lead of nothing in that place"},
    {"\xF8\x84\x8F\xBF\xBF"sv, "five bytes for the last number"},
    {"\xFC\x80\x84\x8F\xBF\xBF"sv, "six bytes for the last number"},
    {"\xED\xA0\xBD\xED\xB8\x80"sv, "a pair as two halves"},
    {"caf\xE9.txt"sv, "Latin-1"},
};

TEST(Utf8, RefusesAllElse)
{
    for (auto const &row : refused_cases) {
        EXPECT_FAILURE(from_utf8(row.bytes), conversion_failure()) << row.why;
        std::string const longer = "C:\\" + std::string(row.bytes) + "\\b";
        EXPECT_FAILURE(from_utf8(longer), conversion_failure()) << row.why << ", in the middle";
    }
}

TEST(Utf8, EachTextSurvives)
{
    // at each side of each limit
    for_all_texts(u"a\x7F\x80\u07FF\u0800\xD7FF\xD800\xDBFF\xDC00\xDFFF\uE000\xFFFF", 4,
                  [](std::u16string const &text) {
                      ASSERT_EQ(from_utf8(to_utf8(text)), text) << printable(text);
                  });
}

TEST(Utf8, WhatIsTakenIsWhatWouldBeMade)
{
    // leads, tails and limits: no two byte texts stand for one text
    std::u16string const bytes = u"a\x80\x8F\x90\x9F\xA0\xBF\xC2\xE0\xED\xF0\xF4";
    std::size_t taken = 0;
    for_all_texts(bytes, 4, [&](std::u16string const &units) {
        std::string const text(units.begin(), units.end());
        std::u16string read;
        if (failure_of([&] { read = from_utf8(text); }))
            return;
        ++taken;
        ASSERT_EQ(to_utf8(read), text) << printable(units);
    });
    EXPECT_GT(taken, 400U);
}

TEST(Utf8, FailureIsCarriedToAnotherThread)
{
    boost::exception_ptr carried;
    try {
        static_cast<void>(from_utf8("\xFF"));
    } catch (...) {
        carried = boost::current_exception();
    }
    EXPECT_THROW(boost::rethrow_exception(carried), FileNameConversionFailure);
}

TEST(Utf8, OfPaths)
{
    EXPECT_EQ(upath::from_utf8("C:/caf\xC3\xA9/").native(), u"C:\\caf\u00E9");
    EXPECT_EQ(upath::from_utf8(std::string("a")).native(), u"a");
    EXPECT_EQ(upath::from_utf8("a"sv).native(), u"a");
    EXPECT_EQ(upath::from_utf8(u8"\u00E9").native(), u"\u00E9");
    EXPECT_EQ(upath::from_utf8(u8"\u00E9"sv).native(), u"\u00E9");
    EXPECT_FAILURE(upath::from_utf8("caf\xE9"), conversion_failure());

    upath const path(u"C:\\caf\u00E9\\\xD800");
    EXPECT_EQ(path.string(), "C:\\caf\xC3\xA9\\\xED\xA0\x80");
    EXPECT_EQ(path.generic_string(), "C:/caf\xC3\xA9/\xED\xA0\x80");
    EXPECT_EQ(upath::from_utf8(path.string()), path);
    static_assert(std::is_same_v<decltype(path.u8string()), std::u8string>);
    EXPECT_TRUE(upath(u"\u00E9").u8string() == u8"\u00E9");
    EXPECT_EQ(upath(u"\u00E9").u8string<char>(), "\xC3\xA9") << "as in C++17";
}

} // namespace
} // namespace fl::filesystem::tests
