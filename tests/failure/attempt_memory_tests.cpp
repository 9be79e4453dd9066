// Attempts where memory runs out while the failure is made.

#include <fl/filesystem/attempt.hpp>

#include "support/allocations.hpp"

#include <gtest/gtest.h>

#include <new>

namespace fl::filesystem {
namespace {

/// Attempts `call` with the nth allocation failing, for every n until none does.
template <typename Call>
void expect_memory_to_pass(Call call)
{
    failure const whole = attempt(call).error();
    std::size_t nth = 1;
    for (bool has_failed = true; has_failed; ++nth) {
        ASSERT_LT(nth, 100U);
        test_support::failing_allocation const none(nth);
        try {
            auto const tried = attempt(call);
            EXPECT_EQ(tried.error(), whole) << nth;
            EXPECT_FALSE(none.fired()) << nth;
        } catch (std::bad_alloc const &) {
            EXPECT_TRUE(none.fired()) << nth;
        }
        has_failed = none.fired();
    }
    EXPECT_GT(nth, 2U) << "nothing failed";
}

TEST(AttemptMemory, ThatRunsOutPassesAsItIs)
{
    SystemError const ours(32, u"a pathname of some length", {u"another one"});
    expect_memory_to_pass([&] { throw ours; });
    foundation::ustring::CtypeInvalidCharacter const text;
    expect_memory_to_pass([&] { throw text; });
    std::filesystem::filesystem_error const standard("absolute",
                                                     std::error_code(5, std::system_category()));
    expect_memory_to_pass([&]() -> int { throw standard; });
}

} // namespace
} // namespace fl::filesystem
