// Calls with a path and a literal, or with two kinds of text, which the standard library's
// operations would take as well: they do what they do with two paths.

#include <fl/filesystem.hpp>

#include "support/calls.hpp"

#include <string>

namespace fl::filesystem::tests {
namespace {

using std::filesystem::copy_options;

TEST(MixedArguments, ActOnBothNames)
{
    simulated_machine machine;
    machine.add_file(uR"(C:\a)", "text").add_directory(uR"(C:\d)");
    upath const a(u"a");
    copy(a, u"b");
    copy(u"a", upath(u"c"), copy_options::none);
    copy_file(a, u"e");
    copy_file(u"a", upath(u"f"), copy_options::none);
    copy(std::wstring(L"a"), std::u16string(u"g"), copy_options::none);
    copy(u"a", u"h", copy_options::none);
    copy_file(std::u16string(u"a"), std::wstring(L"i"), copy_options::none);
    copy_file(u"a", u"j", copy_options::none);
    rename(std::wstring(L"j"), u"k");
    create_hard_link(a, u"l");
    for (char16_t const *name : {u"b", u"c", u"e", u"f", u"g", u"h", u"i", u"k", u"l"})
        EXPECT_EQ(machine.content(uR"(C:\)" + std::u16string(name)), "text") << printable(name);
    EXPECT_FALSE(machine.exists(uR"(C:\j)"));
    EXPECT_EQ(machine.link_count(uR"(C:\a)"), 2U);

    copy_directory(upath(u"d"), u"d2");
    create_directory(upath(u"d3"), u"d");
    EXPECT_TRUE(machine.is_directory(uR"(C:\d2)") && machine.is_directory(uR"(C:\d3)"));
    EXPECT_EQ(absolute(a, uR"(C:\d)"), uR"(C:\d\a)");
    EXPECT_EQ(canonical(a, u"C:/"), uR"(C:\a)");
    EXPECT_EQ(relative(upath(uR"(C:\d\x)"), uR"(C:\d)"), u"x");
    EXPECT_TRUE(equivalent(a, u"l"));
}

TEST(MixedArguments, MakeLinksBothWaysRound)
{
    simulated_machine machine;
    machine.add_file(uR"(C:\f)").add_directory(uR"(C:\d)");
    create_symlink(upath(u"f"), u"l1", file_status::regular_file);
    create_symlink(u"f", upath(u"l2"), file_status::regular_file);
    create_directory_symlink(upath(u"d"), u"l3");
    create_junction(upath(u"d"), u"j");
    copy_symlink(upath(u"l1"), u"l4");
    for (char16_t const *name : {u"l1", u"l2", u"l4"})
        EXPECT_EQ(read_symlink(name), u"f") << printable(name);
    EXPECT_EQ(read_symlink(u"l3"), u"d");
    EXPECT_EQ(read_symlink(u"j"), uR"(C:\d)");
    create_shortcut(upath(u"f"), u"s.lnk");
    create_shortcut(u"f", upath(u"t.lnk"));
    EXPECT_EQ(machine.shortcut_target(uR"(C:\s.lnk)"), uR"(C:\f)");
    EXPECT_EQ(machine.shortcut_target(uR"(C:\t.lnk)"), uR"(C:\f)");
}

TEST(MixedArguments, FailAboutWhatWasGiven)
{
    simulated_machine machine;
    machine.add_file(uR"(C:\f)").add_file(uR"(C:\taken)").add_directory(uR"(C:\d)");
    upath const missing(u"no"), f(u"f"), d(u"d");
    EXPECT_FAILURE(rename(missing, u"x"), not_found(u"no"));
    EXPECT_FAILURE(rename(u"no", upath(u"x")), not_found(u"no"));
    EXPECT_FAILURE(copy(missing, u"x"), not_found(u"no"));
    EXPECT_FAILURE(copy(u"no", upath(u"x")), not_found(u"no"));
    EXPECT_FAILURE(copy_file(missing, u"x"), not_found(u"no"));
    EXPECT_FAILURE(copy_file(f, u"taken"), file_exists(u"taken"));
    EXPECT_FAILURE(copy_directory(missing, u"x"), not_found(u"no"));
    EXPECT_FAILURE(create_hard_link(missing, u"x"), not_found(u"no"));
    EXPECT_FAILURE(create_symlink(f, u"taken", file_status::regular_file), file_exists(u""));
    EXPECT_FAILURE(create_directory_symlink(d, u"taken"), file_exists(u""));
    EXPECT_FAILURE(create_directory_symlink(u"d", upath(u"taken")), file_exists(u""));
    EXPECT_FAILURE(create_junction(d, u"taken"), file_exists(u"taken"));
    EXPECT_FAILURE(create_junction(u"d", upath(u"taken")), file_exists(u"taken"));
    EXPECT_FAILURE(create_directory(upath(u"x"), u"no"), not_found(u"no"));
    EXPECT_FAILURE(canonical(missing, u"C:/"), not_found(u""));
    EXPECT_FAILURE(equivalent(missing, u"x"), not_found(u"no"));
    sure_fault const fault = machine.fail_every_call_on("GetFullPathNameW", ERROR_ACCESS_DENIED);
    EXPECT_FAILURE(absolute(f, uR"(C:\d)"), denied(u"f"));
    EXPECT_FAILURE(absolute(u"f", upath(uR"(C:\d)")), denied(u"f"));
}

} // namespace
} // namespace fl::filesystem::tests
