// Our text functions beside those of the toolchain's own facility, which knows drives only
// where it is built for Windows. Each class of differences has its reason, and occurs.

#include "standard/filesystem.hpp"

#include "support/names.hpp"

#include <algorithm>
#include <filesystem>
#include <random>

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

constexpr std::u16string_view alphabet = u"\\/.:aC?";

bool is_separator(wchar_t unit)
{
    return unit == L'\\' || unit == L'/';
}

/// What the toolchain reads in another way than Windows does.
enum class peculiarity
{
    none,
    server,        ///< it knows no servers: two separators are a root directory
    object_prefix, ///< `\??\` is a root directory and a name to it
    strange_drive, ///< any unit ahead of a colon is a drive to it
    late_drive,    ///< a name like a drive that isn't first, which it joins as a root
    count
};

peculiarity peculiarity_of(std::wstring const &text)
{
    bool const is_first = text.size() > 3 && is_separator(text[0]) && is_separator(text[3]);
    if (text.size() > 1 && is_separator(text[0]) && is_separator(text[1]))
        return peculiarity::server;
    if (is_first && text[1] == L'?' && text[2] == L'?')
        return peculiarity::object_prefix;
    auto found = peculiarity::none;
    for (std::size_t colon = text.find(L':'); colon != std::wstring::npos;
         colon = text.find(L':', colon + 1)) {
        bool const is_behind_drive = colon == 3 && text[1] == L':';
        bool const is_drive =
            colon == 1 || is_behind_drive || (colon > 1 && is_separator(text[colon - 2]));
        if (!is_drive || is_separator(text[colon - 1]))
            continue;
        if (text[colon - 1] != L'a' && text[colon - 1] != L'C')
            return peculiarity::strange_drive;
        if (colon > 1)
            found = peculiarity::late_drive;
    }
    return found;
}

/// How many texts there were of each kind, and how many of them came out differently.
struct tally
{
    std::size_t compared[static_cast<std::size_t>(peculiarity::count)] = {};
    std::size_t different[static_cast<std::size_t>(peculiarity::count)] = {};

    void add(peculiarity kind, bool is_different)
    {
        ++compared[static_cast<std::size_t>(kind)];
        different[static_cast<std::size_t>(kind)] += is_different ? 1 : 0;
    }
};

void expect_every_peculiarity(tally const &seen)
{
    EXPECT_GT(seen.compared[0], 10000U);
    for (std::size_t kind = 1; kind < static_cast<std::size_t>(peculiarity::count); ++kind)
        EXPECT_GT(seen.different[kind], 0U) << "kind " << kind << " makes no difference";
}

/// Longer texts, mostly of separators, dots and names.
std::wstring random_text(std::mt19937 &random)
{
    constexpr std::wstring_view pieces[] = {L"\\", L"/",  L".", L"..", L"a",  L"C:",
                                            L"ab", L"\\", L"?", L":",  L"//", L"..\\"};
    std::wstring text;
    for (auto count = random() % 12; count > 0; --count)
        text += pieces[random() % std::size(pieces)];
    return text;
}

void compare_normal(std::wstring const &text, tally &seen)
{
    std::wstring const ours = standard::lexically_normal(text);
    std::wstring const theirs = std::filesystem::path(text).lexically_normal().native();
    peculiarity const kind = peculiarity_of(text);
    seen.add(kind, ours != theirs);
    if (kind == peculiarity::none) {
        EXPECT_EQ(ours, theirs) << printable(units(text));
    }
}

TEST(StandardLexicalComparison, NormalOfAllShortTexts)
{
    tally seen;
    for_all_texts(alphabet, 6,
                  [&](std::u16string const &text) { compare_normal(wide(text), seen); });
    expect_every_peculiarity(seen);
}

TEST(StandardLexicalComparison, NormalOfRandomTexts)
{
    std::mt19937 random(20240229);
    tally seen;
    for (int i = 0; i < 40000; ++i)
        compare_normal(random_text(random), seen);
    expect_every_peculiarity(seen);
}

void compare_relative(std::wstring const &text, std::wstring const &base, tally &seen)
{
    std::wstring const ours = standard::lexically_relative(text, base);
    std::wstring theirs = std::filesystem::path(text).lexically_relative(base).native();
    std::replace(theirs.begin(), theirs.end(), L'/', L'\\'); // a root directory as it was written
    peculiarity const kind = std::max(peculiarity_of(text), peculiarity_of(base));
    seen.add(kind, ours != theirs);
    if (kind == peculiarity::none) {
        EXPECT_EQ(ours, theirs) << printable(units(text)) << " from " << printable(units(base));
    }
}

TEST(StandardLexicalComparison, RelativeOfAllShortTexts)
{
    std::vector<std::wstring> texts;
    for_all_texts(alphabet, 3, [&](std::u16string const &text) { texts.push_back(wide(text)); });
    tally seen;
    for (std::wstring const &text : texts)
        for (std::wstring const &base : texts)
            compare_relative(text, base, seen);
    EXPECT_GT(seen.compared[0], 10000U);
    EXPECT_GT(seen.different[static_cast<std::size_t>(peculiarity::server)], 0U);
}

TEST(StandardLexicalComparison, RelativeOfRandomTexts)
{
    std::mt19937 random(20240301);
    tally seen;
    for (int i = 0; i < 40000; ++i) {
        std::wstring const head = random_text(random); // often something in common
        compare_relative(head + random_text(random), head + random_text(random), seen);
    }
    EXPECT_GT(seen.compared[0], 5000U);
    EXPECT_GT(seen.different[static_cast<std::size_t>(peculiarity::server)], 0U);
}

} // namespace
} // namespace fl::filesystem::detail
