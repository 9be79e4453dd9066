#include "flfs/failure_report.hpp"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

namespace fs = fl::filesystem;

std::string printed(fs::FsysExceptionBase const &exception, std::u16string const &argument = u"arg")
{
    std::ostringstream err;
    flfs::print_failure(err, flfs::describe(exception), {argument});
    return err.str();
}

TEST(FlfsFailureReport, PathnameAndCode)
{
    EXPECT_EQ(printed(fs::AccessDenied(u"C:\\dir")),
              "flfs: fl:filesystem:AccessDenied\n"
              "  pathname: C:\\dir\n"
              "  code:     0\n"
              "  You have no right to do this. Check the permissions, or ask who owns it.\n");
}

TEST(FlfsFailureReport, WithoutAPathnameTheArgumentStands)
{
    EXPECT_EQ(printed(fs::FileNameTooLarge(), u"C:\\\u00E9"),
              "flfs: fl:filesystem:FileNameTooLarge\n"
              "  argument: C:\\\xC3\xA9\n"
              "  code:     0\n"
              "  The pathname, or a name in it, is longer than Windows takes. Shorten it.\n");
}

TEST(FlfsFailureReport, SystemErrorWithSecondPathname)
{
    EXPECT_EQ(printed(fs::SystemError(1392, u"C:\\a", {u"C:\\b"})),
              "flfs: fl:filesystem:SystemError\n"
              "  pathname: C:\\a\n"
              "  and:      C:\\b\n"
              "  code:     1392\n"
              "  The system refused. `net helpmsg 1392` tells what it means by that code.\n");
}

TEST(FlfsFailureReport, EmptySecondPathnameIsLeftOut)
{
    EXPECT_EQ(printed(fs::SystemError(5000, u"C:\\a", {u""})).find("and:"), std::string::npos);
}

TEST(FlfsFailureReport, SystemErrorWithoutACode)
{
    EXPECT_EQ(printed(fs::SystemError(0, u"C:\\a", {})),
              "flfs: fl:filesystem:SystemError\n"
              "  pathname: C:\\a\n"
              "  code:     0\n"
              "  The system refused, and didn't say why.\n");
}

TEST(FlfsFailureReport, InRed)
{
    std::ostringstream err;
    flfs::print_failure(err, flfs::describe(fs::PathNotFound(u"a")), {}, true);
    EXPECT_EQ(err.str(), "\x1B[31mflfs: fl:filesystem:PathNotFound\x1B[0m\n"
                         "  pathname: a\n"
                         "  code:     0\n"
                         "  The name, or a directory on the way to it, doesn't exist. Check the "
                         "spelling.\n");
}

struct message_case
{
    char const *message;
    std::u16string pathname;
    char const *sentence;
    char const *why;
};

message_case const message_cases[] = {
    {"Empty Path not permitted", u"", "Empty Path not permitted.", "made a sentence"},
    {"It is incorrect.", u"", "It is incorrect.", "a sentence already"},
    {"Bad name", u"C:\\a", "Bad name.", "the pathname is shown elsewhere"},
    {"Path name can not start with \\", u"", "Path name can not start with \\.", "a backslash"},
    {"", u"", "The system takes no such pathname.", "no message"},
    {"Bad name", u": {a}", "Bad name.", "a pathname that looks like the tail"},
};

TEST(FlfsFailureReport, InvalidArgumentTellsItsMessage)
{
    for (message_case const &row : message_cases) {
        fs::InvalidArgument const exception(row.message, row.pathname, {});
        flfs::failure const described = flfs::describe(exception);
        EXPECT_EQ(described.identifier, "fl:filesystem:InvalidArgument") << row.why;
        EXPECT_EQ(described.sentence, row.sentence) << row.why;
    }
}

TEST(FlfsFailureReport, EveryClassHasASentenceOfOneLine)
{
    for (int id = fs::fsys_excp_invalid_operation; id <= fs::fsys_excp_temp_env_not_specified;
         ++id) {
        fs::FsysExceptionBase const exception("fl:filesystem:Any",
                                              static_cast<fs::fsys_excp_id>(id), u"C:\\a", {}, 0);
        flfs::failure const described = flfs::describe(exception);
        EXPECT_EQ(described.identifier, "fl:filesystem:Any") << id;
        EXPECT_GT(described.sentence.size(), 20u) << id;
        EXPECT_LT(described.sentence.size(), 98u) << id;
        EXPECT_EQ(described.sentence.find('\n'), std::string::npos) << id;
        EXPECT_EQ(described.sentence.back(), '.') << id;
    }
}

} // namespace
