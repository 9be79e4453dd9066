// The permission word, over every combination of the attributes that count.

#include "status/permission_word.hpp"

#include "support/names.hpp"

#include <limits>

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

constexpr std::uint32_t read_only = 0x1;
constexpr std::uint32_t hidden = 0x2;
constexpr std::uint32_t system_flag = 0x4;
constexpr std::uint32_t directory = 0x10;
constexpr std::uint32_t archive = 0x20;
constexpr std::uint32_t not_indexed = 0x2000;
constexpr std::uint32_t all_that_count =
    read_only | hidden | system_flag | directory | archive | not_indexed;

// Of files: a directory never does.
constexpr answer_row<wchar_t> text_cases[] = {
    {L"", false, "no text"},
    {L"C:\\tool", false, "no full stop"},
    {L"C:\\tool.exe", true, "a program"},
    {L"C:\\tool.bat", true, "a batch file"},
    {L"C:\\tool.com", true, "a program of old"},
    {L"C:\\tool.cmd", true, "a batch file"},
    {L"C:\\tool.EXE", true, "in upper case"},
    {L"C:\\tool.eXe", true, "in mixed case"},
    {L"C:\\tool.BAT", true, "in upper case"},
    {L"C:\\tool.Com", true, "in mixed case"},
    {L"C:\\tool.cMD", true, "in mixed case"},
    {L"C:\\tool.txt", false, "another extension"},
    {L"C:\\tool.lnk", false, "a shortcut isn't run itself"},
    {L"C:\\tool.msi", false, "nor is an installer"},
    {L"C:\\tool.vbs", false, "nor a script"},
    {L"C:\\tool.ex", false, "two units"},
    {L"C:\\tool.e", false, "one unit"},
    {L"C:\\tool.exes", false, "four units"},
    {L"C:\\tool.", false, "nothing behind the full stop"},
    {L"C:\\tool.exe.", false, "the last full stop counts"},
    {L"C:\\tool.exe.txt", false, "the last full stop counts"},
    {L"C:\\tool.txt.exe", true, "the last full stop counts"},
    {L"C:\\tool..exe", true, "the last of two in a row"},
    {L"C:\\.exe", true, "nothing ahead of it"},
    {L".exe", true, "four units are enough"},
    {L"exe", false, "no full stop"},
    {L"C:\\a.b\\c", false, "three units with a backslash among them"},
    {L"C:\\a.exe\\b", false, "a full stop in a directory, too far ahead"},
    {L"C:\\a.exe\\", false, "a backslash at the end makes four"},
    {L"C:\\a.b\\tool", false, "a full stop in a directory"},
    {L"C:\\tool.exe ", false, "a blank at the end makes four"},
    {L"C:\\tool. ex", false, "a blank within"},
    {L"\\\\?\\C:\\tool.exe", true, "behind a prefix"},
    {L"\\\\s.com", true, "the text decides, not what it names"},
    {L"\\\\.\\exe", false, "too far ahead"},
    {L"\\\\.exe", true, "the text decides, not what it names"},
    {L"C:\\\u00E9\u00E9.exe", true, "units beyond ASCII ahead of the extension"},
    {L"C:\\\u00E9\u00E9", false, "units beyond ASCII, no full stop"},
    {L"C:\\a.\u00E9", false, "one unit beyond ASCII isn't looked at"},
    {L"C:\\a.\u00E9\u00E9", false, "nor are two"},
    {L"C:\\a.ex\u00E9x", false, "nor are four"},
    {L"C:\\a.\u00E9\u00E9\u00E9.exe", true, "nor is another extension"},
    {L"C:\\a.\x7F\x7F\x7F", false, "the last unit of ASCII"},
    {L"C:\\a.[@`", false, "next to the letters"},
};

unsigned int expected_word(std::uint32_t attributes, bool runs)
{
    unsigned int word = (attributes & read_only) != 0 ? 0444 : 0666;
    if ((attributes & archive) != 0)
        word += 0x1000;
    if ((attributes & system_flag) != 0)
        word += 0x2000;
    if ((attributes & hidden) != 0)
        word += 0x4000;
    if ((attributes & not_indexed) != 0)
        word += 0x8000;
    if (runs && (attributes & directory) == 0)
        word += 0111;
    return word;
}

/// Calls `visit` with each of the 64 combinations.
template <typename Visit>
void for_all_combinations(Visit visit)
{
    for (std::uint32_t attributes = 0; attributes <= all_that_count; ++attributes) {
        if ((attributes & ~all_that_count) == 0)
            visit(attributes);
    }
}

TEST(AttributesToPerms, EveryCombinationWithEveryText)
{
    int combinations = 0;
    for_all_combinations([&](std::uint32_t attributes) {
        ++combinations;
        for (auto const &row : text_cases)
            EXPECT_EQ(attributes_to_perms(row.text, attributes),
                      expected_word(attributes, row.expected))
                << printable(units(row.text)) << ", attributes " << attributes << ": " << row.why;
    });
    EXPECT_EQ(combinations, 64);
}

TEST(AttributesToPerms, WordsAsNumbers)
{
    EXPECT_EQ(attributes_to_perms(L"C:\\f", 0x80), 0666U);
    EXPECT_EQ(attributes_to_perms(L"C:\\f", 0x1), 0444U);
    EXPECT_EQ(attributes_to_perms(L"C:\\f.cmd", 0x1), 0555U);
    EXPECT_EQ(attributes_to_perms(L"C:\\f.exe", 0x80), 0777U);
    EXPECT_EQ(attributes_to_perms(L"C:\\f", 0x21), 0x1000U | 0444U);
    EXPECT_EQ(attributes_to_perms(L"C:\\f", 0x2), 0x4000U | 0666U);
    EXPECT_EQ(attributes_to_perms(L"C:\\f", 0x4), 0x2000U | 0666U);
    EXPECT_EQ(attributes_to_perms(L"C:\\f", 0x2000), 0x8000U | 0666U);
    EXPECT_EQ(attributes_to_perms(L"C:\\bin.exe", 0x10), 0666U) << "a directory";
    EXPECT_EQ(attributes_to_perms(L"C:\\f.exe", 0x2027), 0xF000U | 0555U) << "all flags of a file";
}

TEST(AttributesToPerms, NoOtherAttributeCounts)
{
    for (std::uint32_t attribute = 1; attribute != 0; attribute <<= 1) {
        if ((attribute & all_that_count) == 0) {
            EXPECT_EQ(attributes_to_perms(L"C:\\f", attribute), 0666U) << attribute;
        }
    }
    constexpr std::uint32_t others = std::numeric_limits<std::uint32_t>::max() & ~all_that_count;
    EXPECT_EQ(attributes_to_perms(L"C:\\f.exe", others), 0777U);
    EXPECT_EQ(attributes_to_perms(L"C:\\f.exe", others | directory), 0666U);
}

// Three units behind the last full stop with one beyond ASCII, at each place.
constexpr wchar_t const *unfoldable[] = {
    L"C:\\a.\u00E9xe",  L"C:\\a.e\u00E9e",     L"C:\\a.ex\u00E9", L"C:\\a.\u00E9\u00E9\u00E9",
    L"C:\\a.ex\x80",    L"C:\\a.ex\xFFFF",     L"C:\\a.ex\xDC00", L"C:\\a.\u0130xe",
    L"C:\\a.b\\\u00E9", L"C:\\a.exe.tx\u00E9", L".\u00E9xe",
};

TEST(AttributesToPerms, AnExtensionOfThreeUnitsHasToBeAscii)
{
    using foundation::ustring::CtypeInvalidCharacter;
    for (wchar_t const *path : unfoldable) {
        for_all_combinations([&](std::uint32_t attributes) {
            if ((attributes & directory) != 0) {
                EXPECT_EQ(attributes_to_perms(path, attributes), expected_word(attributes, false))
                    << "a directory isn't asked";
            } else {
                EXPECT_THROW(attributes_to_perms(path, attributes), CtypeInvalidCharacter)
                    << printable(units(path));
            }
        });
    }
    try {
        attributes_to_perms(L"C:\\a.ex\u00E9", 0);
        FAIL() << "nothing was thrown";
    } catch (CtypeInvalidCharacter const &exception) {
        EXPECT_STREQ(exception.what(), "Invalid character error.");
    }
}

} // namespace
} // namespace fl::filesystem::detail
