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
    verdict const found = compare(creating({u"ab:c", u"b"}), made({"failed 123", "ok"}),
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
    EXPECT_TRUE(compare(creating({u"ab:c"}), made({"ok"}), made({"failed 123"}), 1).first)
        << "the sides exchanged";
}

TEST(DifferentialComparison, WantsAnAnswerToEachStep)
{
    EXPECT_THROW(compare(creating({u"a"}), made({"ok"}), made({}), 1), std::runtime_error);
}

} // namespace

} // namespace differential
