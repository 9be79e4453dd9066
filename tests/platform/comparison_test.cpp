#include "platform/contract.hpp"

namespace contract {

namespace {

/// The same to both kinds of order.
constexpr LPCWSTR equal_texts[][2] = {
    {L"win64", L"win64"},   {L"win64", L"WIN64"}, {L"Bin", L"bIN"}, {L"", L""},
    {L"\u00E4", L"\u00C4"}, // of Western Europe
    {L"\u0436", L"\u0416"}, // Cyrillic
};

/// As people sort them.
constexpr LPCWSTR by_language[] = {
    nullptr,  // no text at all
    L"",      // nothing
    L"_",     // signs come ahead of digits
    L"1",     // digits
    L"9",     // ahead of letters
    L"a",     // letters in their order, whatever case they have
    L"B",     // what is shorter comes first
    L"bin",   // it does
    L"bin ",  // a blank counts, and comes ahead of digits
    L"bin64", // the first difference decides
    L"coop",  // a hyphen counts
    L"co-op", // where all else is equal
    L"win32", // by the first difference
    L"win64", // to the end
};

/// By their units, in upper case.
constexpr LPCWSTR by_units[] = {
    L"",       // nothing
    L"1",      // digits
    L"9",      // ahead of letters
    L"a",      // whatever case they have
    L"ab",     // what is shorter comes first
    L"B",      // here, too
    L"bin",    // and here
    L"bin ",   // a blank counts
    L"bin64",  // the first difference decides
    L"co-op",  // a hyphen is a unit as any other
    L"coop",   // in its place
    L"win32",  // by the first difference
    L"win64",  // to the end
    L"_",      // behind all capitals
    L"\u00E4", // behind all of ASCII
};

int order_of_language(LPCWSTR one, LPCWSTR other)
{
    ::SetLastError(untouched);
    int const order = ::lstrcmpiW(one, other);
    EXPECT_EQ(::GetLastError(), untouched);
    return (order > 0) - (order < 0);
}

int order_of_units(LPCWSTR one, LPCWSTR other)
{
    return ::CompareStringOrdinal(one, -1, other, -1, TRUE) - CSTR_EQUAL;
}

/// Each text beside each.
template <typename Compare, std::size_t Size>
void expect_order(Compare compare, LPCWSTR const (&texts)[Size])
{
    for (std::size_t one = 0; one < Size; ++one) {
        for (std::size_t other = 0; other < Size; ++other) {
            EXPECT_EQ(compare(texts[one], texts[other]), (one > other) - (one < other))
                << texts[one] << ", " << texts[other];
        }
    }
    for (auto const &[one, other] : equal_texts) {
        EXPECT_EQ(compare(one, other), 0) << one << ", " << other;
        EXPECT_EQ(compare(other, one), 0) << one << ", " << other;
    }
}

TEST(Comparison, Table)
{
    expect_order(order_of_language, by_language);
    EXPECT_EQ(order_of_language(L"a", L"\u00E4"), -1) << "marks count";
    EXPECT_EQ(order_of_language(L"\u00E4", L"a"), 1) << "marks count";
}

TEST(Comparison, Ordinal)
{
    expect_order(order_of_units, by_units);
    EXPECT_EQ(::CompareStringOrdinal(L"a.txt", -1, L"A.TXT", -1, FALSE), CSTR_GREATER_THAN)
        << "case counts where it is asked for";
    EXPECT_EQ(::CompareStringOrdinal(L"A.TXT", -1, L"a.txt", -1, FALSE), CSTR_LESS_THAN);
    EXPECT_EQ(::CompareStringOrdinal(L"abc", 2, L"ABd", 2, TRUE), CSTR_EQUAL) << "as many as told";
}

} // namespace

} // namespace contract
