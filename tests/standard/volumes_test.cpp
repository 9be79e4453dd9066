// The standard facility on volumes without a letter, and what it says of space it couldn't
// ask for.

#include "standard/filesystem.hpp"

#include "standard/error_codes.hpp"
#include "support/calls.hpp"

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

/// `C:\m` shows a volume that no letter stands for, with `a\f` and `b` on it.
void mount_nameless(simulated_machine &machine)
{
    machine.add_drive(u'D').add_file(uR"(D:\a\f)").add_directory(uR"(D:\b)");
    machine.set_volume_space(u"D:\\", 2000, 700, 600).add_mount_point(uR"(C:\m)", u'D');
    machine.take_letter(u'D');
}

constexpr std::wstring_view device = LR"(\\?\GLOBALROOT\Device\HarddiskVolume4)";

TEST_ON_MACHINE(StandardOnNamelessVolumes, CanonicalIsWhatTheObjectManagerCallsIt)
{
    mount_nameless(machine);
    std::error_code ec = stale;
    std::wstring const text = standard::canonical(LR"(C:\m\a\F)", ec);
    EXPECT_EQ(text, std::wstring(device) + LR"(\a\f)");
    EXPECT_EQ(ec, std::error_code());
    EXPECT_TRUE(standard::equivalent(text, LR"(C:\m\a\f)", ec)) << "which leads there again";
    EXPECT_EQ(standard::canonical(text, ec), text);
    EXPECT_EQ(standard::weakly_canonical(LR"(C:\m\a\no\..\x)", ec),
              std::wstring(device) + LR"(\a\x)");
    EXPECT_EQ(ec, std::error_code());
}

TEST_ON_MACHINE(StandardOnNamelessVolumes, WithoutThatNameEitherItIsTheSecondCode)
{
    mount_nameless(machine);
    for (DWORD const code : {0U, 3U, 50U}) {
        sure_fault const fault = machine.fail_call("GetFinalPathNameByHandleW", 2, code);
        std::error_code ec = stale;
        EXPECT_EQ(standard::canonical(LR"(C:\m\a)", ec), L"");
        EXPECT_EQ(ec, system_code(code == 0 ? 31 : code));
    }
}

TEST_ON_MACHINE(StandardOnNamelessVolumes, AreNotAskedForWhereThereIsAName)
{
    machine.add_file(u"C:\\f");
    std::error_code ec = stale;
    EXPECT_EQ(standard::canonical(L"C:\\f", ec), L"C:\\f");
    EXPECT_EQ(machine.calls_of("GetFinalPathNameByHandleW"), 1);
    for (DWORD const code : {1U, 2U, 5U, 1117U}) {
        machine.clear_journal();
        auto const fault = machine.fail_every_call_on("GetFinalPathNameByHandleW", code);
        EXPECT_EQ(standard::canonical(L"C:\\f", ec), L"");
        EXPECT_EQ(ec, system_code(code));
        EXPECT_EQ(machine.calls_of("GetFinalPathNameByHandleW"), 1) << code;
    }
}

TEST(StandardSpace, AfterAFailureIsTheLargestNumbers)
{
    constexpr auto unknown = static_cast<std::uintmax_t>(-1);
    int const failed = for_each_nth([](int nth) {
        simulated_machine machine;
        machine.add_file(u"C:\\f").set_volume_space(u"C:\\", 1000, 500, 300);
        auto const fault = machine.fail_call(nth, nth == 1 ? 5 : 0);
        std::error_code ec = stale;
        auto const [capacity, free, available] = standard::space(L"C:\\f", ec);
        EXPECT_TRUE(!ec || ec == system_code(nth == 1 ? 5 : 31));
        EXPECT_EQ(capacity, ec ? unknown : 1000U);
        EXPECT_EQ(free, ec ? unknown : 500U);
        EXPECT_EQ(available, ec ? unknown : 300U);
        expect_nothing_open(machine);
        return fault.fired();
    });
    EXPECT_GT(failed, 1);
}

} // namespace
} // namespace fl::filesystem::detail
