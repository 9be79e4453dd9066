// Copying that is shown and stopped.

#include <fl/filesystem/copy_progress.hpp>

#include <fl/filesystem/operations.hpp>

#include "support/in_workspace.hpp"

#include <algorithm>
#include <stdexcept>
#include <type_traits>

namespace fl::filesystem::tests {
namespace {

using std::filesystem::copy_options;

using pairs = std::vector<std::pair<std::u16string, std::u16string>>;

// Calls without a callback mean what they meant.
static_assert(std::is_same_v<decltype(fl::filesystem::copy(u"a", u"b")), void>);
static_assert(std::is_same_v<decltype(fl::filesystem::copy(u"a", u"b", copy_options::none)), void>);
static_assert(std::is_same_v<decltype(copy(upath(), upath(), {})), void>);

TEST_IN_WORKSPACE(CopyProgress, TellsOfEachNameWithBothPathnames)
{
    make({{uR"(a\sub\x)", "text"}, uR"(a\y)"});
    pairs told;
    std::vector<std::uint64_t> counts;
    auto const note = [&](copy_progress const &progress) {
        told.emplace_back(progress.from, progress.to);
        counts.push_back(progress.names);
        return true;
    };
    EXPECT_TRUE(fl::filesystem::copy(u"a", at(u"b"), copy_options::recursive, note));
    EXPECT_EQ(counts, (std::vector<std::uint64_t>{1, 2, 3, 4}));
    ASSERT_EQ(told.size(), 4U);
    EXPECT_EQ(told[0], std::make_pair(std::u16string(u"a"), at(u"b")));
    std::sort(told.begin(), told.end());
    EXPECT_EQ(told, (pairs{{u"a", at(u"b")},
                           {uR"(a\sub)", at(uR"(b\sub)")},
                           {uR"(a\sub\x)", at(uR"(b\sub\x)")},
                           {uR"(a\y)", at(uR"(b\y)")}}));
    EXPECT_EQ(work.content(at(uR"(b\sub\x)")), "text");
    EXPECT_TRUE(copy(upath(u"a"), u"c", copy_options::none, note));
}

TEST_IN_WORKSPACE(CopyProgress, StopsWhenItIsTold)
{
    for (char16_t const *name : {uR"(a\1)", uR"(a\2)", uR"(a\3)"})
        make_file(name, "text");
    auto const two = [](copy_progress const &progress) { return progress.names < 2; };
    EXPECT_FALSE(copy(upath(at(u"a")), upath(at(u"b")), copy_options::none, two));
    names const copied = entries(u"b");
    ASSERT_EQ(copied.size(), 1U);
    EXPECT_EQ(work.content(at(u"b\\" + copied[0])), "text") << "whole";
    auto const mine = [](copy_progress const &) -> bool { throw std::logic_error("mine"); };
    EXPECT_THROW(fl::filesystem::copy(at(u"a"), at(u"c"), copy_options::none, mine),
                 std::logic_error);
    EXPECT_EQ(entries(u"c"), names{});
}

TEST_IN_WORKSPACE(CopyProgress, WithoutAnybodyToTellItCopies)
{
    make_file(u"a", "text");
    EXPECT_TRUE(fl::filesystem::copy(at(u"a"), at(u"b"), copy_options::none,
                                     std::function<bool(copy_progress const &)>()));
    EXPECT_EQ(work.content(at(u"b")), "text");
}

TEST_IN_WORKSPACE(CopyProgress, FailsAsCopyDoes)
{
    int calls = 0;
    auto const count = [&](copy_progress const &) { return ++calls > 0; };
    EXPECT_FAILURE(fl::filesystem::copy(at(u"no"), at(u"b"), copy_options::none, count),
                   not_found(at(u"no")));
    EXPECT_THROW(fl::filesystem::copy(at(u"no"), at(u"b"),
                                      copy_options::copy_symlinks | copy_options::skip_symlinks,
                                      count),
                 InvalidArgument);
    make({{u"a", "text"}, {u"b", "text"}});
    EXPECT_FAILURE(fl::filesystem::copy(at(u"a"), at(u"b"), copy_options::none, count),
                   file_exists(at(u"b")))
        << "found out late, and told of as little";
    EXPECT_EQ(calls, 0);
}

} // namespace
} // namespace fl::filesystem::tests
