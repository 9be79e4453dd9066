// The current directories that `inspect` goes by. Only a simulated machine lets us
// choose them and break the call that asks for them.

#if FLFS_SYSTEM_IS_SIMULATED

#include "tools/run_flfs.hpp"

#include <simulation/machine.hpp>

namespace {

using namespace test_support;

TEST(FlfsInspectExpansion, PlainMachineStandsInTheRootOfC)
{
    EXPECT_EQ(inspect_as_json("C:foo").at("expanded_form"), "C:\\foo");
    EXPECT_EQ(inspect_as_json("\\foo").at("expanded_form"), "C:\\foo");
    EXPECT_EQ(inspect_as_json("C:").at("expanded_form"), "C:\\");
}

TEST(FlfsInspectExpansion, FailureIsTheAnswerInJson)
{
    simulation::simulated_machine machine;
    auto const fault = machine.fail_every_call_on("GetFullPathNameW", 31);
    flfs_result const result = run_flfs({"inspect", "--json", "\\foo", "bar"});
    ordered_json const array = ordered_json::parse(result.out);
    ordered_json const failure = {
        {"identifier", "fl:filesystem:SystemError"},
        {"pathname", "\\foo"},
        {"additional_pathnames", {""}},
        {"code", 31},
        {"sentence", "The system refused. `net helpmsg 31` tells what it means by that code."}};
    EXPECT_TRUE(fault.fired());
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_EQ(array.at(0).at("expanded_form"), nullptr);
    EXPECT_EQ(array.at(0).at("expanded_form_failure"), failure);
    EXPECT_EQ(array.at(0).at("access_form"), "\\foo");
    EXPECT_EQ(array.at(1).at("expanded_form"), "bar");
}

TEST(FlfsInspectExpansion, FailureIsTheAnswerForPeople)
{
    simulation::simulated_machine machine;
    auto const fault = machine.fail_every_call_on("GetFullPathNameW", 31);
    flfs_result const result = run_flfs({"inspect", "\\foo"});
    EXPECT_TRUE(fault.fired());
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_NE(result.out.find("    expanded                  "
                              "(fails: fl:filesystem:SystemError, code 31)\n"),
              std::string::npos)
        << result.out;
}

} // namespace

#endif
