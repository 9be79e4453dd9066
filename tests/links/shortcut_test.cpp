// Shortcut files as the system's own shell link object makes them.

#include "links/shortcut.hpp"

#include "platform/contract.hpp"
#include "platform/shell_link_object.hpp"
#include "support/in_workspace.hpp"

#include <objbase.h>
#include <shlobj.h>

#include <gtest/gtest.h>

#include <stdexcept>

namespace fl::filesystem::detail {
namespace {

using namespace test_support;
using contract::expected;
using contract::in;

constexpr unsigned int untouched = 77;

TEST(IsShortcutPath, Table)
{
    constexpr answer_row<wchar_t> cases[] = {
        {L"", false, "nothing"},
        {L"lnk", false, "three units"},
        {L".lnk", false, "nothing ahead of it"},
        {L"a.lnk", true, "one unit more is enough"},
        {L"C:\\dir\\a.lnk", true, "a pathname"},
        {L"\\.lnk", true, "whatever that unit is"},
        {L"a.LNK", false, "in upper case"},
        {L"a.Lnk", false, "in mixed case"},
        {L"a.lnk ", false, "not at the end"},
        {L"a.lnk\\", false, "not at the end"},
        {L"alnk", false, "no full stop"},
        {L"a.ln", false, "not all of it"},
    };
    expect_rows(cases, [](std::wstring const &name) { return is_shortcut_path(name); });
    EXPECT_TRUE(is_shortcut_path(std::wstring(40000, L'a') + L".lnk"));
}

constexpr row_of<std::uint32_t, unsigned int> hresult_cases[] = {
    {0x80070002, 2, "a Win32 code"},
    {0x80070005, 5, "a Win32 code"},
    {0x8007FFFF, 65535, "all of its bits"},
    {0x80070000, 0, "none of them"},
    {0x80004005, 14077, "unspecified failure"},
    {0x80040154, 14077, "no such class"},
    {0x80030002, 14077, "the storage's own codes"},
    {0x800401F0, 14077, "COM was not initialised"},
    {0x00070002, 14077, "no failure"},
    {0xC0070002, 14077, "another severity"},
    {0x80080002, 14077, "the facility's number plus one"},
};

TEST(HresultToWin32, Table)
{
    expect_rows(hresult_cases,
                [](auto const &given) { return hresult_to_win32(static_cast<HRESULT>(given)); });
}

/// Makes a shortcut file by the shell link object.
void save_shortcut(std::wstring const &file, std::wstring const &target)
{
    com_apartment const apartment;
    com_pointer<IShellLinkW> link;
    com_pointer<IPersistFile> persistence;
    bool const is_saved = SUCCEEDED(create_shell_link(link)) &&
                          SUCCEEDED(link->SetPath(target.c_str())) &&
                          SUCCEEDED(query_persistence(link, persistence)) &&
                          SUCCEEDED(persistence->Save(file.c_str(), TRUE));
    if (!is_saved)
        throw std::runtime_error("the shell link object could not save");
}

struct outcome
{
    std::wstring target;
    unsigned int error = untouched;
};

outcome read(std::wstring const &file)
{
    outcome result;
    result.target = read_shortcut_target(file, result.error);
    return result;
}

TEST_IN_WORKSPACE(ReadShortcutTarget, ReadsWhatTheShellSaved)
{
    make_file(uR"(dir\file)");
    for (wchar_t const *const target : {L"dir", LR"(dir\file)"}) {
        save_shortcut(in(work, L"a.lnk"), in(work, target));
        outcome const result = read(in(work, L"a.lnk"));
        EXPECT_EQ(result.target, in(work, target));
        EXPECT_EQ(result.error, untouched);
    }
}

TEST_IN_WORKSPACE(ReadShortcutTarget, TakesALongPrefixOff)
{
    make_directory(u"dir");
    save_shortcut(in(work, L"a.lnk"), in(work, L"dir"));
    outcome const result = read(LR"(\\?\)" + in(work, L"a.lnk"));
    EXPECT_EQ(result.target, in(work, L"dir"));
    EXPECT_EQ(result.error, untouched);
}

TEST_IN_WORKSPACE(ReadShortcutTarget, OnAShare)
{
    if (!work.has_share())
        GTEST_SKIP() << "this system offers the tests no network share";
    std::wstring const share = contract::wide(work.share_root());
    save_shortcut(share + L"\\a.lnk", in(work, L""));
    EXPECT_EQ(read(share + L"\\a.lnk").error, untouched);
    EXPECT_EQ(read(share + L"\\a.lnk").target,
              read(LR"(\\?\UNC)" + share.substr(1) + L"\\a.lnk").target);
    EXPECT_EQ(read(share + L"\\a.lnk").target.substr(0, work.root().size()),
              contract::wide(work.root()));
}

// Wine's shell doesn't look whether the target is there.
TEST_IN_WORKSPACE(ReadShortcutTarget, OfAMissingTarget)
{
    save_shortcut(in(work, L"a.lnk"), in(work, L"missing"));
    outcome const result = read(in(work, L"a.lnk"));
    EXPECT_EQ(result.error, expected(2, untouched));
    EXPECT_EQ(result.target, contract::runs_under_wine() ? in(work, L"missing") : L"");
}

TEST_IN_WORKSPACE(ReadShortcutTarget, OfAShortcutToNothing)
{
    save_shortcut(in(work, L"a.lnk"), L"");
    outcome const result = read(in(work, L"a.lnk"));
    EXPECT_EQ(result.target, L"");
    EXPECT_EQ(result.error, untouched) << "no path is no failure";
}

constexpr row_of<wchar_t const *, unsigned int> refused_cases[] = {
    {L"missing.lnk", 2, "not there"},
    {LR"(missing\a.lnk)", 3, "nor the directory"},
    {L"dir.lnk", 5, "a directory"},
    {L"empty.lnk", 14077, "an empty file"},
    {L"text.lnk", 14077, "another file"},
    {L"file", untouched, "not called a shortcut"},
    {L"good.LNK", untouched, "not called a shortcut in these letters"},
};

TEST_IN_WORKSPACE(ReadShortcutTarget, Failures)
{
    make({u"dir.lnk\\", u"empty.lnk"});
    make_file(u"text.lnk", std::string(200, 'x'));
    make_file(u"file");
    save_shortcut(in(work, L"good.LNK"), in(work, L"file"));
    for (auto const &row : refused_cases) {
        outcome const result = read(in(work, row.given));
        EXPECT_EQ(result.target, L"") << row.why;
        EXPECT_EQ(result.error, row.expected) << row.why;
    }
}

} // namespace
} // namespace fl::filesystem::detail
