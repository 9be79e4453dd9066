// The pure text of the standard facility: what the rules of the C++ standard say of
// pathnames of Windows.

#include "standard/filesystem.hpp"
#include "standard/lexical.hpp"
#include "standard/roots.hpp"

#include "support/names.hpp"

#include <algorithm>

namespace fl::filesystem::detail {
namespace {

using namespace test_support;
using standard::lexically_normal;
using standard::lexically_relative;

constexpr text_row<wchar_t> normal_cases[] = {
    {L"", L"", "nothing"},
    {L"a", L"a", "a name"},
    {L"a/b", L"a\\b", "separators are backslashes"},
    {L"a\\\\//b", L"a\\b", "one for a run"},
    {L"a\\", L"a\\", "the one at the end stays"},
    {L".", L".", "what nothing is left of"},
    {L".\\", L".", "what nothing is left of"},
    {L"a\\..", L".", "what nothing is left of"},
    {L"a\\..\\", L".", "what nothing is left of"},
    {L"a\\b\\..\\..", L".", "what nothing is left of"},
    {L".\\a", L"a", "a dot goes with its separator"},
    {L"a\\.\\b", L"a\\b", "within"},
    {L"a\\.", L"a\\", "at the end it leaves the separator ahead of it"},
    {L"a\\.\\", L"a\\", "at the end it leaves the separator ahead of it"},
    {L"a\\b\\..", L"a\\", "and so does a name that goes"},
    {L"a\\b\\..\\", L"a\\", "and so does a name that goes"},
    {L"a\\b\\..\\c", L"a\\c", "a name and what takes it back"},
    {L"a\\b\\c\\..\\..\\d", L"a\\d", "names and what takes them back"},
    {L"a\\..\\b", L"b", "from the front"},
    {L"..", L"..", "up"},
    {L"..\\", L"..", "up needs no separator at its end"},
    {L"..\\..", L"..\\..", "up twice isn't up and back"},
    {L"..\\..\\", L"..\\..", "no separator at its end"},
    {L"..\\.", L"..", "no separator at its end"},
    {L"a\\..\\..", L"..", "further up than down"},
    {L"a\\..\\..\\b\\", L"..\\b\\", "further up than down"},
    {L"..\\a\\..", L"..", "up, and then nothing"},
    {L"\\", L"\\", "a root"},
    {L"/", L"\\", "a root"},
    {L"\\..", L"\\", "nothing is above a root"},
    {L"\\..\\..\\a", L"\\a", "nothing is above a root"},
    {L"\\a\\..\\..", L"\\", "nothing is above a root"},
    {L"\\.", L"\\", "a root"},
    {L"C:", L"C:", "a drive"},
    {L"C:\\", L"C:\\", "its root"},
    {L"C:\\..", L"C:\\", "nothing is above a root"},
    {L"C:/a/../b", L"C:\\b", "behind a root"},
    {L"C:\\a\\..", L"C:\\", "behind a root"},
    {L"C:a\\..", L"C:", "a drive alone isn't empty"},
    {L"C:.", L"C:", "a drive alone isn't empty"},
    {L"C:..", L"C:..", "up from where the drive is"},
    {L"C:..\\..\\", L"C:..\\..", "up from where the drive is"},
    {L"c:\\a", L"c:\\a", "letters stay"},
    {L"\\\\s\\h\\..\\..\\a", L"\\\\s\\a", "a share is a name behind the server"},
    {L"//s/h", L"\\\\s\\h", "a server with slashes"},
    {L"\\\\s", L"\\\\s", "a server"},
    {L"\\\\s\\", L"\\\\s\\", "its root"},
    {L"\\\\\\s\\a", L"\\s\\a", "three separators are a root directory"},
    {L"\\\\?\\C:\\a\\..\\b", L"\\\\?\\C:\\b", "behind a long prefix the drive is a name"},
    {L"\\\\?\\C:\\..\\..\\a", L"\\\\?\\a", "which can be taken back"},
    {L"\\??\\C:\\a\\.", L"\\??\\C:\\a\\", "the object manager's prefix"},
    {L"a??\\..", L".", "no prefix: it begins with a name"},
    {L"\\a?\\..", L"\\", "no prefix: one question mark"},
    {L"a\\\\?\\..", L"a\\", "a prefix stands in front"},
    {L"a...\\..b\\...", L"a...\\..b\\...", "names with full stops are no dots"},
    {L".\\C:\\a", L"C:\\a", "names are texts, also those like a drive"},
    {L"a\\..\\C:\\b\\", L"C:\\b\\", "names are texts, also those like a drive"},
    {L"a\\C:\\..\\b", L"a\\b", "names are texts, also those like a drive"},
};

TEST(StandardLexicallyNormal, Table)
{
    expect_rows(normal_cases, [](auto text) { return lexically_normal(text); });
}

constexpr std::u16string_view alphabet = u"\\/.:aC?";

/// A name like a drive that comes to the front is read as a root from then on.
bool has_new_root(std::wstring const &normal, std::wstring const &text)
{
    return standard::root_name_length<wchar_t>(normal) != standard::root_name_length<wchar_t>(text);
}

TEST(StandardLexicallyNormal, OfItsResultChangesNothing)
{
    int new_roots = 0;
    for_all_texts(alphabet, 6, [&](std::u16string const &text) {
        std::wstring const once = lexically_normal(wide(text));
        if (has_new_root(once, wide(text)))
            ++new_roots;
        else
            EXPECT_EQ(lexically_normal(once), once) << printable(text);
    });
    EXPECT_EQ(has_new_root(lexically_normal(L".\\C:."), L".\\C:."), true);
    EXPECT_GT(new_roots, 0);
}

TEST(StandardLexicallyNormal, HasNoDotsToTakeAway)
{
    for_all_texts(alphabet, 6, [](std::u16string const &text) {
        std::wstring const normal = lexically_normal(wide(text));
        EXPECT_EQ(normal.empty(), text.empty());
        EXPECT_EQ(normal.find(L'/'), std::wstring::npos) << printable(text);
        if (has_new_root(normal, wide(text)) || normal == L".")
            return;
        std::wstring_view last = L"..";
        for (std::wstring_view const name : standard::elements_of(normal)) {
            EXPECT_NE(name, L".") << printable(text);
            EXPECT_TRUE(name != L".." || last == L".." || last.ends_with(L':')) << printable(text);
            last = name;
        }
    });
}

constexpr row_of_texts<wchar_t> relative_cases[] = {
    {L"", L"", L".", "the same"},
    {L"a\\b", L"a\\b", L".", "the same"},
    {L"a/b", L"a\\\\b", L".", "the same, but for separators"},
    {L"a\\", L"a", L".", "a separator is no level"},
    {L"a", L"a\\", L".", "a separator is no level"},
    {L"a", L"a\\.", L".", "nor is a dot"},
    {L"a\\b", L"a", L"b", "below"},
    {L"a\\b\\", L"a", L"b\\", "with what it ends in"},
    {L"a\\", L"a\\b", L"..\\", "with what it ends in"},
    {L"a", L"a\\b", L"..", "above"},
    {L"a", L"a\\b\\c", L"..\\..", "further above"},
    {L"a\\b\\C:\\x", L"a\\b\\C:\\y", L"", "a drive, behind as many units as a prefix has"},
    {L"a\\b", L"a\\c", L"..\\b", "beside"},
    {L"a\\b", L"c\\d", L"..\\..\\a\\b", "elsewhere"},
    {L"a", L"b\\..\\c", L"..\\a", "down, up and down is one level"},
    {L"a", L"b\\..", L"a", "down and up is none"},
    {L"b", L"b\\..", L"", "but not where the way down is common"},
    {L"a", L"..", L"", "up into what isn't known"},
    {L"a", L"b\\..\\..", L"", "up into what isn't known"},
    {L"..\\a", L"..", L"a", "unless that is common"},
    {L"..", L"a", L"..\\..", "up from a level"},
    {L"a", L".", L"a", "a dot is no level"},
    {L".", L"a", L"..\\.", "elements stay as they are"},
    {L"a", L"", L"a", "from nothing"},
    {L"", L"a", L"..", "to nothing"},
    {L"C:\\a", L"C:\\b", L"..\\a", "on one drive"},
    {L"C:\\", L"C:\\a", L"..", "its root"},
    {L"C:\\a", L"C:\\", L"a", "its root"},
    {L"C:a", L"C:b", L"..\\a", "below where a drive is"},
    {L"C:\\a", L"D:\\a", L"", "two drives"},
    {L"C:\\a", L"c:\\a", L"", "to text, case tells them apart"},
    {L"C:\\a", L"C:a", L"", "one is absolute"},
    {L"C:a", L"C:\\a", L"", "one is absolute"},
    {L"C:\\a", L"a", L"", "a drive and none"},
    {L"a", L"\\a", L"", "the base has a root, and the text none"},
    {L"\\a", L"a", L"\\a", "the text has one, which leads there from anywhere"},
    {L"\\a", L"\\b", L"..\\a", "rooted"},
    {L"\\\\s\\h\\a", L"\\\\s\\h\\b", L"..\\a", "on one share"},
    {L"\\\\s\\h\\a", L"\\\\s\\g\\a", L"..\\..\\h\\a", "on one server"},
    {L"\\\\s\\h", L"\\\\t\\h", L"", "two servers"},
    {L"\\\\s\\h", L"//s/h", L"", "names of roots are texts"},
    {L"\\\\s", L"\\\\s\\h", L"", "the base has a root, and the text none"},
    {L"a\\C:", L"a", L"", "a name like a drive"},
    {L"a", L"a\\C:", L"", "a name like a drive"},
    {LR"(\\?\a:\m\p\n)", LR"(\\?\a:\m)", LR"(p\n)", "a drive behind a long prefix is a root"},
    {LR"(\\?\a:\m)", LR"(\\?\a:\m\p)", L"..", "up to it"},
    {LR"(\\?\a:\)", LR"(\\?\a:\m)", L"..", "up to the root"},
    {LR"(\\?\a:\m)", LR"(\\?\a:\m)", L".", "the same text"},
    {LR"(//?/a:/m)", LR"(\\?\a:\m)", L".", "with either separator"},
    {LR"(\\?\a:\m)", LR"(\\?\C:\m)", L"", "two drives"},
    {LR"(\\?\a:\m)", LR"(a:\m)", L"", "only the text has the prefix"},
    {LR"(a:\m)", LR"(\\?\a:\m)", L"", "only the base has it"},
    {LR"(\\?\a:\m\p)", LR"(abc\a:\m)", L"", "only the text has it, whatever is in its place"},
    {LR"(abc\a:\m\p)", LR"(\\?\a:\m)", L"", "only the base has it, whatever is in its place"},
    {LR"(\\?\a:\m)", LR"(\\?\a:)", L"", "only one has a root"},
    {LR"(\\?\a:)", LR"(\\?\a:\m)", L"", "only one has a root"},
    {LR"(\\?\a:m)", LR"(\\?\a:m)", L".", "no drive, but a name"},
    {LR"(\\?\a:m)", LR"(\\?\a:n)", LR"(..\a:m)", "no drive, but two names"},
    {LR"(\\?\a:)", LR"(\\?\a:)", L"", "a volume without a root, and so a name like a drive"},
    {LR"(\\?\a:\C:\m)", LR"(\\?\a:\m)", L"", "a name like a drive behind it"},
    {LR"(\\?\UNC\s\h\a)", LR"(\\?\UNC\s\h\b)", LR"(..\a)", "a share behind one is names"},
};

TEST(StandardLexicallyRelative, Table)
{
    expect_rows(relative_cases,
                [](auto text, auto base) { return lexically_relative(text, base); });
}

/// Without the separator at its end, and a dot if that leaves nothing.
std::wstring place_of(std::wstring text)
{
    text = lexically_normal(text.empty() ? L"." : text);
    bool const is_root = text.size() <= standard::root_name_length<wchar_t>(text) + 1;
    if (!is_root && text.back() == L'\\')
        text.pop_back();
    return text;
}

// From a base that goes up nothing is known about the way down again.
TEST(StandardLexicallyRelative, LeadsFromTheBaseToTheText)
{
    std::vector<std::wstring> texts;
    for_all_texts(u"\\.:aC", 4, [&](std::u16string const &text) {
        // behind a server without a root directory there is no place
        bool const is_server = text.starts_with(uR"(\\)") && text.find(u'\\', 2) == text.npos;
        if (lexically_normal(wide(text)) == wide(text) && text.find(u':', 2) == text.npos &&
            !is_server)
            texts.push_back(wide(text));
    });
    std::size_t related = 0;
    for (std::wstring const &text : texts)
        for (std::wstring const &base : texts) {
            std::wstring const way = lexically_relative(text, base);
            std::vector<std::wstring_view> const names = standard::elements_of(base);
            if (way.empty() || std::count(names.begin(), names.end(), L"..") > 0)
                continue;
            ++related;
            std::wstring joined = base;
            for (std::wstring_view const element : standard::elements_of(way))
                standard::join(joined, element);
            ASSERT_EQ(place_of(joined), place_of(text))
                << printable(units(text)) << " from " << printable(units(base));
        }
    EXPECT_GT(related, texts.size());
}

} // namespace
} // namespace fl::filesystem::detail
