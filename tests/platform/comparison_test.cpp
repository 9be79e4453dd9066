#include "platform/contract.hpp"

namespace contract {

namespace {

struct pair_case
{
    LPCWSTR one, other;
    char const *why;
};

constexpr pair_case equal_cases[] = {
    {L"win64", L"win64", "the same"},         {L"win64", L"WIN64", "in another case"},
    {L"Bin", L"bIN", "case by case"},         {L"", L"", "nothing in both"},
    {nullptr, nullptr, "no texts at all"},    {L"\u00E4", L"\u00C4", "a letter of Western Europe"},
    {L"\u0436", L"\u0416", "a Cyrillic one"},
};

/// In their order.
constexpr pair_case ordered_cases[] = {
    {L"bin", L"bin64", "what is shorter comes first"},
    {L"win32", L"win64", "by the first difference"},
    {L"a", L"B", "letters in their order, whatever case they have"},
    {L"9", L"a", "digits come before letters"},
    {L"_", L"a", "and signs too"},
    {L"_", L"1", "also before digits"},
    {L"bin", L"bin ", "a blank counts"},
    {L"", L"a", "nothing in one"},
    {nullptr, L"", "no text at all"},
    {L"a", L"\u00E4", "marks count"},
    {L"coop", L"co-op", "a hyphen counts where all else is equal"},
};

void expect_order(LPCWSTR one, LPCWSTR other, int order, char const *why)
{
    ::SetLastError(untouched);
    int const answer = ::lstrcmpiW(one, other);
    EXPECT_EQ((answer > 0) - (answer < 0), order) << why;
    EXPECT_EQ(::GetLastError(), untouched) << why;
}

TEST(Comparison, Table)
{
    for (pair_case const &row : equal_cases) {
        expect_order(row.one, row.other, 0, row.why);
        expect_order(row.other, row.one, 0, row.why);
    }
    for (pair_case const &row : ordered_cases) {
        expect_order(row.one, row.other, -1, row.why);
        expect_order(row.other, row.one, 1, row.why);
    }
}

constexpr pair_case ordinally_equal_cases[] = {
    {L"a.txt", L"A.TXT", "in another case"},
    {L"\u00E4", L"\u00C4", "a letter of Western Europe"},
    {L"\u0436", L"\u0416", "a Cyrillic one"},
    {L"", L"", "nothing in both"},
};

/// In their order.
constexpr pair_case ordinal_cases[] = {
    {L"co-op", L"coop", "a hyphen is a unit as any other"},
    {L"a", L"_", "compared in upper case"},
    {L"a", L"ab", "the beginning of the other"},
};

int ordinal(LPCWSTR one, LPCWSTR other, BOOL ignores_case = TRUE)
{
    return ::CompareStringOrdinal(one, -1, other, -1, ignores_case);
}

TEST(Comparison, Ordinal)
{
    for (pair_case const &row : ordinally_equal_cases) {
        EXPECT_EQ(ordinal(row.one, row.other), CSTR_EQUAL) << row.why;
        EXPECT_EQ(ordinal(row.other, row.one), CSTR_EQUAL) << row.why;
    }
    for (pair_case const &row : ordinal_cases) {
        EXPECT_EQ(ordinal(row.one, row.other), CSTR_LESS_THAN) << row.why;
        EXPECT_EQ(ordinal(row.other, row.one), CSTR_GREATER_THAN) << row.why;
    }
    EXPECT_EQ(ordinal(L"a.txt", L"A.TXT", FALSE), CSTR_GREATER_THAN)
        << "case where it is asked for";
    EXPECT_EQ(ordinal(L"A.TXT", L"a.txt", FALSE), CSTR_LESS_THAN);
    EXPECT_EQ(::CompareStringOrdinal(L"abc", 2, L"ABd", 2, TRUE), CSTR_EQUAL) << "as many as told";
}

} // namespace

} // namespace contract
