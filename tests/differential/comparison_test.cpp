#include "differential/comparison.hpp"

#include <gtest/gtest.h>

#include <stdexcept>

namespace differential {

namespace {

/// An outcome of steps that all stood in the folder of number 1.
outcome made(std::vector<std::string> answers, std::vector<std::string> tree = {})
{
    std::vector<std::u16string> const directories(answers.size(), u"C:\\fl-differential\\00000001");
    std::vector<std::vector<entry>> const standing(answers.size());
    return {std::move(answers), directories, std::move(tree), standing};
}

sequence creating(std::initializer_list<char16_t const *> texts)
{
    sequence steps;
    for (char16_t const *text : texts)
        steps.push_back({function::create_directory, {text}, {}});
    return steps;
}

TEST(DifferentialComparison, FindsTheFirstAnswerThatDiffers)
{
    verdict const found = compare(creating({u"a", u"b", u"c"}), made({"ok", "ok", "ok"}),
                                  made({"ok", "failed 5", "failed 6"}), 1);
    ASSERT_TRUE(found.first);
    EXPECT_EQ(found.first->step, 1U);
    EXPECT_EQ(found.first->ours, "ok");
    EXPECT_EQ(found.first->theirs, "failed 5");
    EXPECT_EQ(found.compared, 1U);
}

TEST(DifferentialComparison, FindsTreesThatDiffer)
{
    verdict const found =
        compare(creating({u"a"}), made({"ok"}, {"x", "y"}), made({"ok"}, {"x", "z"}), 1);
    ASSERT_TRUE(found.first);
    EXPECT_EQ(found.first->step, 1U) << "behind the last step";
    EXPECT_EQ(found.first->ours, "left behind:\n      y");
    EXPECT_EQ(found.first->theirs, "left behind:\n      z");
}

TEST(DifferentialComparison, AgreesOnTheSame)
{
    outcome const same = made({"ok", "failed 183"}, {"x"});
    verdict const found = compare(creating({u"a", u"A"}), same, same, 1);
    EXPECT_FALSE(found.first);
    EXPECT_EQ(found.compared, 2U);
    EXPECT_TRUE(found.intended.empty());
}

TEST(DifferentialComparison, GoesOnAfterAnIntendedDifference)
{
    verdict const found = compare(creating({u"missing\\a*b", u"b"}), made({"failed 3", "ok"}),
                                  made({"failed 123", "failed 5"}), 1);
    EXPECT_EQ(found.intended.size(), 1U);
    ASSERT_TRUE(found.first);
    EXPECT_EQ(found.first->step, 1U);
}

TEST(DifferentialComparison, EndsWhereTheTwoSidesPart)
{
    verdict const found = compare(creating({u"ab:c", u"b"}), made({"failed 267", "ok"}),
                                  made({"ok", "failed 5"}, {"ab:c"}), 1);
    EXPECT_FALSE(found.first);
    EXPECT_EQ(found.intended.size(), 1U);
    EXPECT_EQ(found.comparable, 1U);
}

TEST(DifferentialComparison, TakesNoIntendedDifferenceForAnother)
{
    EXPECT_TRUE(
        compare(creating({u"missing\\ab"}), made({"failed 3"}), made({"failed 123"}), 1).first)
        << "the same answers to a right name";
    EXPECT_TRUE(
        compare(creating({u"missing\\a*b"}), made({"failed 3"}), made({"failed 5"}), 1).first)
        << "another answer to the wrong one";
    EXPECT_TRUE(compare(creating({u"ab:c"}), made({"ok"}), made({"failed 267"}), 1).first)
        << "the sides exchanged";
}

TEST(DifferentialComparison, KnowsWhatIsOpenBelowADirectoryThatMoves)
{
    constexpr std::uint32_t shared = 7, existing = 3, normal = 0x80, reading = 0x80000000;
    step const open{function::open_handle, {u"dir\\file"}, {0, reading, shared, existing, normal}};
    step const close{function::close_handle, {}, {0}};
    step const move{function::move_file, {u"DIR\\", u"other"}, {0}};
    EXPECT_FALSE(compare({open, move}, made({"ok", "failed 5"}), made({"ok", "ok"}), 1).first);
    EXPECT_TRUE(
        compare({open, close, move}, made({"ok", "ok", "failed 5"}), made({"ok", "ok", "ok"}), 1)
            .first)
        << "nothing is open any more";
    step const other{function::move_file, {u"dir\\fil", u"other"}, {0}};
    EXPECT_TRUE(compare({open, other}, made({"ok", "failed 5"}), made({"ok", "ok"}), 1).first)
        << "its name only begins alike";
}

TEST(DifferentialComparison, FollowsWhatIsOpenToItsNewName)
{
    step const open{function::open_handle, {u"dir\\file"}, {0, 0x80000000, 7, 3, 0x80}};
    step const away{function::move_file, {u"dir\\file", u"a\\file"}, {0}};
    step const move{function::move_file, {u"dir", u"other"}, {0}};
    step const move_new{function::move_file, {u"a", u"other"}, {0}};
    outcome const ours = made({"ok", "ok", "failed 5"});
    outcome const theirs = made({"ok", "ok", "ok"});
    EXPECT_TRUE(compare({open, away, move}, ours, theirs, 1).first);
    EXPECT_FALSE(compare({open, away, move_new}, ours, theirs, 1).first);
}

TEST(DifferentialComparison, KnowsANameThatWaitsForItsDeletion)
{
    step const open{function::open_handle, {u"file"}, {0, 0x80000000, 7, 3, 0x80}};
    step const open_on_close{function::open_handle, {u"file"}, {1, 0x00010000, 7, 3, 0x04000080}};
    step const close{function::close_handle, {}, {1}};
    step const remove{function::delete_file, {u"FILE"}, {}};
    step const again{function::set_attributes, {u"file"}, {0x80}};
    EXPECT_FALSE(
        compare({open, remove, again}, made({"ok", "ok", "failed 5"}), made({"ok", "ok", "ok"}), 1)
            .first);
    EXPECT_FALSE(compare({open, open_on_close, close, again}, made({"ok", "ok", "ok", "failed 5"}),
                         made({"ok", "ok", "ok", "ok"}), 1)
                     .first);
    EXPECT_TRUE(compare({open, again}, made({"ok", "failed 5"}), made({"ok", "ok"}), 1).first)
        << "nobody has deleted it";
}

TEST(DifferentialComparison, LooksAtTheTextOfAFullPathname)
{
    auto const differs = [](char16_t const *text, char const *ours, char const *theirs) {
        sequence const steps{{function::get_full_path, {text}, {}}};
        return compare(steps, made({ours}), made({theirs}), 1).first.has_value();
    };
    EXPECT_FALSE(differs(u"Q:", R"(ok "Q:\a")", R"(ok "Q:\a\")"));
    EXPECT_TRUE(differs(u"Q:a", R"(ok "Q:\a")", R"(ok "Q:\a\")"));
    EXPECT_FALSE(differs(u"\\\\s\\t\\..", R"(ok "\\s\t")", R"(ok "\\s\t\")"));
    EXPECT_TRUE(differs(u"\\\\s\\t\\a", R"(ok "\\s\t\a")", R"(ok "\\s\t\a\")"));
    EXPECT_FALSE(differs(u"C:/a../b", R"(ok "C:\a..\b")", R"(ok "C:\a.\b")"));
    EXPECT_TRUE(differs(u"b", R"(ok "C:\a..\b")", R"(ok "C:\a.\b")"));
}

TEST(DifferentialComparison, WantsAnAnswerToEachStep)
{
    EXPECT_THROW(compare(creating({u"a"}), made({"ok"}), made({}), 1), std::runtime_error);
}

} // namespace

} // namespace differential
