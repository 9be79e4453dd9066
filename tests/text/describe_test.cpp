// Exceptions in one line.

#include <fl/filesystem/text.hpp>

#include <fl/filesystem/operations.hpp>

#include "support/names.hpp"
#include "support/workspace.hpp"

#include <filesystem>
#include <ios>
#include <new>
#include <stdexcept>
#include <system_error>

namespace fl::filesystem {
namespace {

using namespace test_support;
using namespace std::string_view_literals;

/// The part of a description ahead of the code, as the system's words differ.
std::string ahead_of_code(std::string const &line)
{
    return line.substr(0, line.find(" (code "));
}

TEST(Describe, TellsIdentifierReasonAndPathname)
{
    std::u16string const path = uR"(C:\dir\x)";
    EXPECT_EQ(describe(PathNotFound(path)),
              "fl:filesystem:PathNotFound: the name, or a directory on the way to it, isn't there: "
              R"("C:\dir\x")");
    EXPECT_EQ(describe(AccessDenied(path)),
              R"(fl:filesystem:AccessDenied: the caller may not do this: "C:\dir\x")");
    EXPECT_EQ(describe(FileExistsError(path)), "fl:filesystem:FileExistsError: something of that "
                                               R"(name is there already: "C:\dir\x")");
    EXPECT_EQ(describe(FileIsDirectory(path)), "fl:filesystem:FileIsDirectory: a file is needed "
                                               R"(here, and this is a directory: "C:\dir\x")");
    EXPECT_EQ(describe(NotDirectoryError(path)),
              "fl:filesystem:NotDirectoryError: a directory is needed here, and this is something "
              R"(else: "C:\dir\x")");
    EXPECT_EQ(describe(DirectoryNotEmpty(path)),
              R"(fl:filesystem:DirectoryNotEmpty: the directory isn't empty: "C:\dir\x")");
    EXPECT_EQ(describe(FileNameTooLarge(path)),
              "fl:filesystem:FileNameTooLarge: the pathname, or a name in it, is longer than the "
              R"(system takes: "C:\dir\x")");
}

TEST(Describe, WithoutAPathnameThereIsNone)
{
    EXPECT_EQ(describe(FileNameTooLarge()), "fl:filesystem:FileNameTooLarge: the pathname, or a "
                                            "name in it, is longer than the system takes");
    EXPECT_EQ(describe(InvalidOperation()),
              "fl:filesystem:InvalidOperation: this can't be done in the present state");
    EXPECT_EQ(describe(FileNameConversionFailure()),
              "fl:filesystem:FileNameConversionFailure: the text isn't UTF-8");
    EXPECT_EQ(describe(CvtInvalidCharacter()),
              "fl:filesystem:CvtInvalidCharacter: a character can't be converted");
    EXPECT_EQ(describe(PathNameComparisonFailure()),
              "fl:filesystem:PathNameComparisonFailure: the pathnames can't be compared");
    EXPECT_EQ(describe(TempEnvNotSpecified()),
              "fl:filesystem:TempEnvNotSpecified: no folder for temporary files is known");
}

TEST(Describe, InvalidArgumentTellsItsMessageAndItsPathnameOnce)
{
    EXPECT_EQ(describe(InvalidArgument("Empty Path not permitted", {}, {})),
              "fl:filesystem:InvalidArgument: Empty Path not permitted");
    EXPECT_EQ(describe(InvalidArgument("Bad", u"C:\\caf\u00E9\t\u202E", {u"other"})),
              "fl:filesystem:InvalidArgument: Bad: \"C:\\caf\xC3\xA9\\u0009\\u202E\", \"other\"");
    EXPECT_EQ(describe(InvalidArgument("Bad", u"a b~\x7F", {})),
              "fl:filesystem:InvalidArgument: Bad: \"a b~\\u007F\"")
        << "the ends of what the class writes as it is";
    EXPECT_EQ(describe(FsysExceptionBase(": {x}", fsys_excp_invalid_argument, u"x", {}, 0)),
              ": {x}: \"x\"")
        << "nothing but what looks like the pathname";
    EXPECT_EQ(describe(InvalidArgument("", {}, {})),
              "fl:filesystem:InvalidArgument: the argument makes no sense");
    EXPECT_EQ(describe(InvalidArgument("", u"x", {})),
              "fl:filesystem:InvalidArgument: the argument makes no sense: \"x\"");
    EXPECT_EQ(describe(FsysExceptionBase("id", fsys_excp_invalid_argument, u"longer", {}, 0)),
              "id: the argument makes no sense: \"longer\"")
        << "made without the class, and so without its text";
    EXPECT_EQ(describe(InvalidArgument("two: {parts}", u"x", {})),
              "fl:filesystem:InvalidArgument: two: {parts}: \"x\"");
}

TEST(Describe, SystemErrorTellsCodeAndBothPathnames)
{
    EXPECT_EQ(ahead_of_code(describe(SystemError(32, u"C:\\a", {u"C:\\b"}))),
              R"(fl:filesystem:SystemError: the system refused: "C:\a", "C:\b")");
    EXPECT_EQ(ahead_of_code(describe(SystemError(32, u"C:\\a", {u""}))),
              R"(fl:filesystem:SystemError: the system refused: "C:\a")")
        << "an empty second one says nothing";
    EXPECT_EQ(ahead_of_code(describe(SystemError(32, u"", {u"C:\\b"}))),
              R"(fl:filesystem:SystemError: the system refused: "C:\b")");
    std::string const words = to_utf8(system_message(32));
    ASSERT_NE(words, "");
    EXPECT_EQ(describe(SystemError(32)),
              "fl:filesystem:SystemError: the system refused (code 32: " + words + ")");
    EXPECT_EQ(describe(SystemError(99999)),
              "fl:filesystem:SystemError: the system refused (code 99999)");
    EXPECT_EQ(describe(SystemError(4294967295)),
              "fl:filesystem:SystemError: the system refused (code 4294967295)");
    EXPECT_EQ(describe(SystemError(0, u"x")),
              "fl:filesystem:SystemError: the system refused: \"x\" (code 0)")
        << "success is no reason";
}

TEST(Describe, CodeOfAnotherClassIsTold)
{
    FsysExceptionBase const own("app:Own", fsys_excp_access_denied, u"x", {}, 99999);
    EXPECT_EQ(describe(own), "app:Own: the caller may not do this: \"x\" (code 99999)");
    FsysExceptionBase const unknown("app:Own", static_cast<fsys_excp_id>(15), u"", {}, 0);
    EXPECT_EQ(describe(unknown), "app:Own: it failed");
}

struct shown_case
{
    std::u16string_view name;
    std::string_view shown;
    char const *why;
};

TEST(Describe, EscapesWhatCannotBeSeen)
{
    constexpr shown_case cases[] = {
        {u"caf\u00E9"sv, "caf\xC3\xA9"sv, "letters"},
        {u"\U0001F600"sv, "\xF0\x9F\x98\x80"sv, "a pair"},
        {uR"(C:\a b\)"sv, R"(C:\a b\)"sv, "backslashes stay single"},
        {u"a\nb"sv, "a\\u000Ab"sv, "it stays one line"},
        {u"a\0b"sv, "a\\u0000b"sv, "a NUL"},
        {u"\x1B[2J"sv, "\\u001B[2J"sv, "a terminal would obey"},
        {u"\x7F"sv, "\\u007F"sv, "a control"},
        {u"\x9B"sv, "\\u009B"sv, "a control of eight bits"},
        {u"\u00A0"sv, "\xC2\xA0"sv, "the first behind the controls"},
        {u"a\"b"sv, "a\\u0022b"sv, "the quotes have one end"},
        {u"\u061C"sv, "\\u061C"sv, "a mark of direction"},
        {u"\u200B\u200F"sv, "\\u200B\\u200F"sv, "nothing to see"},
        {u"\u2028\u202Egpj.exe"sv, "\\u2028\\u202Egpj.exe"sv, "exe.jpg, backwards"},
        {u"\u2027\u202F"sv, "\xE2\x80\xA7\xE2\x80\xAF"sv, "at either side of them"},
        {u"\u200A\u2010"sv, "\xE2\x80\x8A\xE2\x80\x90"sv, "a thin blank and a hyphen"},
        {u"\u205F\u2070"sv, "\xE2\x81\x9F\xE2\x81\xB0"sv, "at either side of those to come"},
        {u"\u2060\u2069\u206F"sv, "\\u2060\\u2069\\u206F"sv, "more of these"},
        {u"\uFEFF\uFFFB\uFFFE\uFFFF"sv, "\\uFEFF\\uFFFB\\uFFFE\\uFFFF"sv, "no characters"},
        {u"\uFFF9"sv, "\\uFFF9"sv, "the first of the notes between lines"},
        {u"\uFFF8\uFFFC"sv, "\xEF\xBF\xB8\xEF\xBF\xBC"sv, "at either side of them"},
        {u"\xD800"sv, "\\uD800"sv, "half of a pair"},
        {u"\xDFFF"sv, "\\uDFFF"sv, "the last half"},
        {u"\uD7FF\uE000"sv, "\xED\x9F\xBF\xEE\x80\x80"sv, "at either side of the halves"},
        {u"\xDC00\xD800"sv, "\\uDC00\\uD800"sv, "halves in the wrong order"},
    };
    for (auto const &row : cases)
        EXPECT_EQ(describe(AccessDenied(std::u16string(row.name))),
                  "fl:filesystem:AccessDenied: the caller may not do this: \"" +
                      std::string(row.shown) + '"')
            << row.why;
}

TEST(Describe, OthersByTheirOwnText)
{
    EXPECT_EQ(describe(std::runtime_error("out of luck")), "out of luck");
    EXPECT_EQ(describe(std::runtime_error("two\nlines \"quoted\"")), "two\\u000Alines \"quoted\"");
    EXPECT_EQ(describe(std::runtime_error("caf\xC3\xA9 caf\xE9 \xC3")),
              "caf\xC3\xA9 caf\\xE9 \\xC3")
        << "bytes that aren't UTF-8";
    EXPECT_EQ(describe(foundation::ustring::CtypeInvalidCharacter()),
              "foundation::ustring::CtypeInvalidCharacter: Invalid character error.");
    EXPECT_EQ(describe(foundation::ustring::CtypeExceptionBase("text", 1, 2)),
              "foundation::ustring::CtypeExceptionBase: text");
    std::bad_alloc const no_memory;
    EXPECT_EQ(describe(no_memory), no_memory.what());
}

TEST(Describe, NumberOfAStandardFailure)
{
    std::system_error const failure(std::make_error_code(std::errc::no_such_file_or_directory),
                                    "opening");
    EXPECT_EQ(describe(failure), std::string(failure.what()) + " (generic code 2)");
    std::filesystem::filesystem_error const another("absolute",
                                                    std::error_code(5, std::generic_category()));
    EXPECT_EQ(describe(another), std::string(another.what()) + " (generic code 5)");
}

TEST(Describe, WhatAnOperationThrows)
{
    workspace space;
    try {
        remove_file(space.path(u"missing"));
        FAIL() << "nothing thrown";
    } catch (std::exception const &failure) {
        EXPECT_EQ(describe(failure),
                  "fl:filesystem:PathNotFound: the name, or a directory on the way to it, isn't "
                  "there: \"" +
                      to_utf8(space.path(u"missing")) + '"');
    }
}

} // namespace
} // namespace fl::filesystem

// A program may have a function of that name for the base: it is taken, also for the rest.
namespace program {
namespace {

std::string describe(fl::filesystem::FsysExceptionBase const &)
{
    return "the program";
}

TEST(Describe, ProgramsOwnFunctionOfThatNameIsTaken)
{
    EXPECT_EQ(describe(fl::filesystem::AccessDenied(u"x")), "the program");
    fl::filesystem::FsysExceptionBase const &base = fl::filesystem::PathNotFound(u"x");
    EXPECT_EQ(describe(base), "the program");
}

} // namespace
} // namespace program

namespace fl::filesystem {
namespace {

TEST(SystemMessage, IsOneLineWithoutABlankBehindIt)
{
    for (unsigned int const code : {2U, 3U, 5U, 32U, 123U, 145U, 267U, 1314U}) {
        std::u16string const text = system_message(code);
        ASSERT_GT(text.size(), 5U) << code;
        EXPECT_EQ(text.find_first_of(u"\r\n"), std::u16string::npos) << code;
        EXPECT_NE(text.back(), u' ') << code;
    }
}

TEST(SystemMessage, IsEmptyWhereThereIsNone)
{
    EXPECT_EQ(system_message(99999), u"");
    EXPECT_EQ(system_message(4294967295), u"");
}

} // namespace
} // namespace fl::filesystem
