#include "calls/call.hpp"

#include <algorithm>
#include <compare>
#include <utility>

namespace fl::simulation {

namespace {

/// Where a unit stands in the order of a user's language: signs, digits, letters.
std::pair<int, char16_t> rank(char16_t unit)
{
    char16_t const upper = upcase(unit);
    bool const is_digit = upper >= u'0' && upper <= u'9';
    bool const is_letter_of_some_script = is_letter(upper) || upper >= 0xC0;
    return {is_letter_of_some_script ? 2 : (is_digit ? 1 : 0), upper};
}

int compare_units(std::u16string_view left, std::u16string_view right)
{
    auto const order = std::lexicographical_compare_three_way(
        left.begin(), left.end(), right.begin(), right.end(),
        [](char16_t a, char16_t b) { return rank(a) <=> rank(b); });
    return (order > 0) - (order < 0); // no pointers: NOLINT(modernize-use-nullptr)
}

/// Signs within words, which keep `co-op` beside `coop`.
std::u16string without_word_signs(std::u16string text)
{
    std::erase_if(text, [](char16_t unit) { return unit == u'-' || unit == u'\''; });
    return text;
}

int compare(LPCWSTR one, LPCWSTR other)
{
    if (one == nullptr || other == nullptr) // nothing comes before any text
        return (one != nullptr) - (other != nullptr);
    std::u16string const left = from_wide(one);
    std::u16string const right = from_wide(other);
    int const order = compare_units(without_word_signs(left), without_word_signs(right));
    if (order != 0)
        return order;
    // more of these signs come behind fewer
    return left.size() == right.size() ? compare_units(left, right)
                                       : (left.size() > right.size() ? 1 : -1);
}

} // namespace

} // namespace fl::simulation

extern "C" int lstrcmpiW(LPCWSTR one, LPCWSTR other)
{
    using namespace fl::simulation;
    // It can't fail, and leaves the last error alone: no call that a test could break.
    return compare(one, other);
}

extern "C" int CompareStringOrdinal(LPCWSTR one, int length, LPCWSTR other, int other_length,
                                    BOOL ignore_case)
{
    using namespace fl::simulation;
    auto const text_of = [ignore_case](LPCWSTR text, int units) {
        std::u16string const all =
            units < 0 ? from_wide(text) : std::u16string(text, text + units); // -1: up to the NUL
        return ignore_case ? upcase(all) : all;
    };
    int const order = text_of(one, length).compare(text_of(other, other_length));
    return order == 0 ? CSTR_EQUAL : (order < 0 ? CSTR_LESS_THAN : CSTR_GREATER_THAN);
}
