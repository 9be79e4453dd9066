#include "install/install_root.hpp"

#include "support/names.hpp"

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

constexpr text_row<wchar_t> root_cases[] = {
    // examples of the header
    {LR"(C:\a\bin\win64\x)", LR"(C:\a)", "the usual form"},
    {LR"(C:\a\bin\win64\bin\win64\x)", LR"(C:\a\bin\win64)", "the deepest pair counts"},
    {LR"(C:\bin\win64\win64\x)", L"", "a bin can't be taken twice"},
    // where the pair stands
    {LR"(D:\Apps\Tool\bin\win64\lib.dll)", LR"(D:\Apps\Tool)", "two levels"},
    {LR"(C:\bin\win64\lib.dll)", LR"(C:\)", "a root keeps its backslash"},
    {LR"(C:\a\bin\win64\sub\deep\x)", LR"(C:\a)", "further down"},
    {LR"(C:\a\bin\win64)", LR"(C:\a)", "the file's own name counts, too"},
    {LR"(C:\a\bin\win64\)", LR"(C:\a)", "native form has no backslash at its end"},
    {LR"(C:\bin\win64)", LR"(C:\)", "nothing below, nothing above"},
    {LR"(\\server\share\bin\win64\x)", LR"(\\server\share)", "on a share"},
    {LR"(\\server\bin\win64\x)", LR"(\\server\)", "a share of that name"},
    {LR"(\bin\win64\x)", LR"(\)", "rooted"},
    {LR"(a\bin\win64\x)", L"a", "relative"},
    {LR"(bin\win64\x)", L"", "nothing is above"},
    // how it is written
    {LR"(D:\apps\BIN\Win64\lib.dll)", LR"(D:\apps)", "in any case"},
    {LR"(d:\Apps\bIn\wIN64\x)", LR"(d:\Apps)", "what is above stays as it is"},
    {LR"(C:/a//bin/win64/x)", LR"(C:\a)", "slashes and runs"},
    {LR"(\\?\C:\a\bin\win64\x)", LR"(C:\a)", "native form has no long prefix"},
    {LR"(\\?\UNC\server\share\bin\win64\x)", LR"(\\server\share)", "of a share"},
    // what isn't the pair
    {LR"(C:\tools\lib.dll)", L"", "none of it"},
    {LR"(C:\a\win64\lib.dll)", L"", "no bin"},
    {LR"(C:\a\bin\lib.dll)", L"", "no win64"},
    {LR"(C:\win64\bin\x)", L"", "the other way round"},
    {LR"(C:\bin\a\win64\x)", L"", "something between"},
    {LR"(C:\win64\x)", L"", "a root isn't bin"},
    {LR"(win64)", L"", "win64 alone"},
    {LR"(win64\x)", L"", "and nothing above"},
    {LR"(C:\a\bin\win64x\y)", L"", "more than the name"},
    {LR"(C:\a\xbin\win64\y)", L"", "more than the other"},
    {LR"(C:\a\bin\win6\y)", L"", "less than the name"},
    {LR"(C:\a\bin\win64.\y)", L"", "a full stop more"},
    {LR"(C:\a\bin\win-64\y)", L"", "signs aren't skipped"},
    {LR"(C:\a\bin64\win64\y)", L"", "another bin"},
    // an element above a win64 isn't looked at again
    {LR"(C:\bin\win64\win64\bin\win64\x)", LR"(C:\bin\win64\win64)", "the deepest first"},
    {LR"(C:\bin\win64\a\win64\x)", LR"(C:\)", "only the one right above is dropped"},
    {LR"(C:\bin\win64\win64\win64\x)", LR"(C:\)", "two of three go together"},
    // the ends
    {L"", L"", "nothing"},
    {LR"(C:\)", L"", "a root"},
    {L"C:", L"", "a drive"},
    {LR"(\)", L"", "a backslash"},
    {LR"(\\server)", L"", "a server"},
    {LR"(\\server\share)", L"", "a share"},
    {LR"(\\server\share\)", L"", "a share ends the walk with its backslash"},
};

TEST(FindInstallRoot, Table)
{
    expect_rows(root_cases, [](auto text) { return find_install_root(text); });
}

TEST(FindInstallRoot, OfAnyLength)
{
    std::wstring const deep = of_size(LR"(C:\)", 20000);
    EXPECT_TRUE(find_install_root(deep + LR"(\bin\win64\x)") == deep);
    std::wstring many = L"C:";
    for (int i = 0; i < 2000; ++i)
        many += LR"(\win64)";
    EXPECT_EQ(find_install_root(many), L"");
}

/// The same rule told by elements: where the root ends, or nothing.
std::wstring root_of(std::vector<std::wstring> const &elements)
{
    for (std::size_t end = elements.size(); end > 0;) {
        if (elements[--end] != L"win64")
            continue;
        if (end == 0)
            return {};
        if (elements[--end] != L"bin")
            continue;
        std::wstring root = L"C:";
        for (std::size_t i = 0; i < end; ++i)
            root += L'\\' + elements[i];
        return end == 0 ? L"C:\\" : root;
    }
    return {};
}

TEST(FindInstallRoot, EveryOrderOfNames)
{
    std::wstring const names[] = {L"a", L"bin", L"win64"};
    int roots = 0;
    // each text stands for a pathname with an element for each unit
    for_all_texts(u"012", 7, [&](std::u16string const &order) {
        std::vector<std::wstring> elements;
        std::wstring text = L"C:";
        for (char16_t const which : order) {
            elements.push_back(names[which - u'0']);
            text += L'\\' + names[which - u'0'];
        }
        std::wstring const expected = root_of(elements);
        EXPECT_EQ(find_install_root(text), expected) << printable(order);
        roots += expected.empty() ? 0 : 1;
    });
    EXPECT_GT(roots, 1000) << "many of them have the pair";
}

TEST(FindInstallRoot, EndsOnEveryShortText)
{
    for_all_texts(shape_alphabet, 6, [](std::u16string const &text) {
        std::wstring const head = wide(text);
        EXPECT_EQ(find_install_root(head), L"");
        std::wstring const root = find_install_root(head + LR"(\bin\win64)");
        EXPECT_LE(root.size(), head.size() + 1);
    });
}

} // namespace
} // namespace fl::filesystem::detail
