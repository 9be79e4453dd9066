#include "platform/contract.hpp"

namespace contract {

namespace {

struct comparison_case
{
    wchar_t const *one;
    wchar_t const *other;
    int order; // -1, 0 or 1
    char const *why;
};

constexpr comparison_case comparison_cases[] = {
    {L"win64", L"win64", 0, "the same"},
    {L"win64", L"WIN64", 0, "in another case"},
    {L"Bin", L"bIN", 0, "case by case"},
    {L"bin", L"bin64", -1, "what is shorter comes first"},
    {L"win32", L"win64", -1, "by the first difference"},
    {L"a", L"B", -1, "letters in their order, whatever case they have"},
    {L"9", L"a", -1, "digits come before letters"},
    {L"_", L"a", -1, "and signs too"},
    {L"_", L"1", -1, "also before digits"},
    {L"bin ", L"bin", 1, "a blank counts"},
    {L"", L"", 0, "nothing in both"},
    {L"", L"a", -1, "nothing in one"},
    {nullptr, L"", -1, "no text at all"},
    {nullptr, nullptr, 0, "no texts at all"},
    {L"\u00E4", L"\u00C4", 0, "a letter of Western Europe"},
    {L"\u0436", L"\u0416", 0, "a Cyrillic one"},
    {L"\u00E4", L"a", 1, "marks count"},
    {L"co-op", L"coop", 1, "a hyphen counts where all else is equal"},
};

int sign_of(int order)
{
    return (order > 0) - (order < 0);
}

TEST(Comparison, Table)
{
    for (comparison_case const &row : comparison_cases) {
        ::SetLastError(untouched);
        EXPECT_EQ(sign_of(::lstrcmpiW(row.one, row.other)), row.order) << row.why;
        EXPECT_EQ(sign_of(::lstrcmpiW(row.other, row.one)), -row.order) << row.why;
        EXPECT_EQ(::GetLastError(), untouched) << row.why;
    }
}

struct ordinal_case
{
    LPCWSTR one;
    LPCWSTR other;
    BOOL ignores_case;
    int order;
    char const *why;
};

constexpr ordinal_case ordinal_cases[] = {
    {L"a.txt", L"A.TXT", TRUE, CSTR_EQUAL, "in another case"},
    {L"a.txt", L"A.TXT", FALSE, CSTR_GREATER_THAN, "case counts where it is asked for"},
    {L"ä", L"Ä", TRUE, CSTR_EQUAL, "a letter of Western Europe"},
    {L"ж", L"Ж", TRUE, CSTR_EQUAL, "a Cyrillic one"},
    {L"co-op", L"coop", TRUE, CSTR_LESS_THAN, "a hyphen is a unit as any other"},
    {L"a", L"_", TRUE, CSTR_LESS_THAN, "compared in upper case"},
    {L"a", L"ab", TRUE, CSTR_LESS_THAN, "the beginning of the other"},
    {L"", L"", TRUE, CSTR_EQUAL, "nothing in both"},
};

TEST(Comparison, Ordinal)
{
    for (ordinal_case const &row : ordinal_cases) {
        EXPECT_EQ(::CompareStringOrdinal(row.one, -1, row.other, -1, row.ignores_case), row.order)
            << row.why;
        EXPECT_EQ(::CompareStringOrdinal(row.other, -1, row.one, -1, row.ignores_case),
                  CSTR_LESS_THAN + CSTR_GREATER_THAN - row.order)
            << row.why;
    }
    EXPECT_EQ(::CompareStringOrdinal(L"abc", 2, L"ABd", 2, TRUE), CSTR_EQUAL) << "as many as told";
}

} // namespace

} // namespace contract
