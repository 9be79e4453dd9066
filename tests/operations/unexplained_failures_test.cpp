// System calls that fail and don't say why, under every operation: none is taken for
// success, and nothing on the disk changes that would not have changed without the failure.

#include <fl/filesystem/access_forms.hpp>
#include <fl/filesystem/install_path.hpp>
#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/pathname.hpp>
#include <fl/filesystem/windows.hpp>

#include "support/calls.hpp"

#include <algorithm>
#include <filesystem>
#include <functional>

namespace fl::filesystem::tests {
namespace {

using std::filesystem::copy_options;

/// What is told of a failure without a code: ERROR_GEN_FAILURE.
auto unexplained(std::u16string const &path, std::u16string const &second = {})
{
    return system_error(31, path, second);
}

void add_lines(simulated_machine const &machine, std::u16string const &path, lines &all)
{
    std::string line = printable(path) + ' ' + std::to_string(machine.attributes(path)) + ' ' +
                       machine.reparse_data(path);
    if (machine.is_file(path))
        line += machine.content(path) + ' ' + std::to_string(machine.link_count(path));
    all.push_back(line);
    if (!machine.is_directory(path) || machine.reparse_tag(path) != 0)
        return;
    for (std::u16string const &name : machine.entries(path))
        add_lines(machine, path + (path.ends_with(u'\\') ? u"" : u"\\") + name, all);
}

/// One line for each name on C:, and one for where the process stands.
lines state_of(simulated_machine const &machine)
{
    lines all;
    add_lines(machine, u"C:\\", all);
    wchar_t value[1000] = {};
    ::GetEnvironmentVariableW(L"=C:", value, 1000);
    all.push_back("in " + printable(machine.current_directory()) + ", =C: is " +
                  printable(units(value)));
    std::sort(all.begin(), all.end());
    return all;
}

/// `C:\d` holds files, links and directories, and is the current one.
void fill(simulated_machine &machine)
{
    machine.add_file(uR"(C:\d\f)", "old").add_file(uR"(C:\d\g)", "new");
    machine.set_times(uR"(C:\d\f)", {100, 100, 100}).set_times(uR"(C:\d\g)", {900, 900, 900});
    machine.add_file(uR"(C:\d\t\a)", "a").add_file(uR"(C:\d\t\u\b)", "b");
    machine.add_file(uR"(C:\d\u\a)", "other a").add_directory(uR"(C:\d\e)");
    machine.add_symbolic_link(uR"(C:\d\t\l)", u"a").add_symbolic_link(uR"(C:\d\l)", u"f");
    machine.add_junction(uR"(C:\d\j)", uR"(C:\d\t)");
    machine.add_file(uR"(C:\program\bin\win64\program.exe)");
    machine.set_program_pathname(uR"(C:\program\bin\win64\program.exe)");
    machine.set_current_directory(uR"(C:\d)");
}

struct operation
{
    char const *name;
    std::function<void()> run;
    maybe_failure of_full_path; ///< none: it makes no such call
    bool overwrites_several = false;
};

int some_code; // of the program

constexpr unsigned int hide = file_status::perms_add | file_status::hidden_file;

operation const operations[] = {
    {"absolute", [] { absolute(u"f"); }, unexplained(u"f")},
    {"absolute with a base", [] { absolute(u"f", u"C:\\d"); }, unexplained(u"f")},
    {"access", [] { access(u"f", access_write); }, unexplained(u"f")},
    {"access exists", [] { access(u"f", access_exists); }, unexplained(u"f")},
    {"canonical", [] { canonical(u"f"); }, unexplained(u"f")},
    {"change_current_path", [] { change_current_path(u"t"); }, unexplained(u"t")},
    {"copy", [] { fl::filesystem::copy(u"f", u"n"); }, unexplained(u"n")},
    {"copy_directory", [] { copy_directory(u"t", u"n"); }, unexplained(u"t")},
    {"copy_file", [] { fl::filesystem::copy_file(u"f", u"n"); }, unexplained(u"n")},
    {"copy_symlink", [] { copy_symlink(u"l", u"n"); }, std::nullopt},
    {"create_directories", [] { create_directories(u"n\\m"); }, unexplained(u"n\\m")},
    {"create_directory", [] { create_directory(u"n"); }, unexplained(u"n")},
    {"create_shortcut", [] { create_shortcut(u"f", u"n.lnk"); }, unexplained(u"f")},
    {"create_symlink", [] { create_symlink(u"f", u"n", file_status::regular_file); }, std::nullopt},
    {"create_symlink that asks", [] { create_symlink(u"t", u"n", file_status::file_type_auto); },
     unexplained(u"t")},
    {"equivalent", [] { equivalent(u"f", u"g"); }, unexplained(u"f")},
    {"exists", [] { exists(u"f"); }, unexplained(u"f")},
    {"get_base_path", [] { detail::get_base_path(&some_code); },
     unexplained(uR"(C:\program\bin\win64\program.exe)")},
    {"get_current_path", [] { get_current_path(); }, std::nullopt},
    {"get_module_path_from_address", [] { detail::get_module_path_from_address(&some_code); },
     std::nullopt},
    {"get_unc_path", [] { get_unc_path(u"f", true); }, unexplained(u"f")},
    {"make_access_form", [] { detail::make_access_form(L"C:\\d\\f"); }, std::nullopt},
    {"make_native_access_form_bridge",
     [] { detail::windows::make_native_access_form_bridge(u"f"); }, unexplained(u"f")},
    {"permissions", [] { permissions(u"f", hide); }, unexplained(u"f")},
    {"read_symlink", [] { read_symlink(u"l"); }, unexplained(u"l")},
    {"relative", [] { relative(u"t", u"u"); }, std::nullopt},
    {"remove", [] { remove(u"f"); }, unexplained(u"f")},
    {"remove_all", [] { remove_all(u"t"); }, unexplained(u"t")},
    {"remove_directory", [] { remove_directory(u"e"); }, unexplained(u"e")},
    {"remove_file", [] { remove_file(u"f"); }, unexplained(u"f")},
    {"rename", [] { rename(u"f", u"n"); }, unexplained(u"n")},
    {"space", [] { space(upath(u"t")); }, unexplained(u"t")},
    {"status", [] { status(u"f"); }, unexplained(u"f")},
    {"status_express_light", [] { status_express_light(u"f"); }, std::nullopt},
    {"symlink_status", [] { symlink_status(u"f"); }, unexplained(u"f")},
    {"target_status_bridge", [] { detail::windows::target_status_bridge(L"C:\\d\\l"); },
     std::nullopt},
    {"weakly_canonical", [] { weakly_canonical(u"t\\n"); }, unexplained(u"t\\n")},
};

/// What became of one run.
struct outcome
{
    maybe_failure told;
    lines before;
    lines after;
    bool met_fault = false;
};

/// Each call of `function` fails, or the nth alone.
outcome run(std::function<void()> const &call, char const *function, int nth = 0)
{
    simulated_machine machine;
    fill(machine);
    outcome seen;
    seen.before = state_of(machine);
    std::optional<simulation::fault> fault;
    if (function != nullptr)
        fault = nth == 0 ? machine.fail_every_call_on(function, 0)
                         : machine.fail_call(function, nth, 0);
    seen.told = failure_of(call);
    seen.met_fault = fault && fault->fired();
    seen.after = state_of(machine);
    EXPECT_EQ(machine.open_handles() + machine.find_handles(), 0);
    EXPECT_EQ(machine.all_com_apartments(), 0);
    return seen;
}

/// Without `expected` the call isn't made, and all is as without the fault.
void expect_outcome(operation const &asked, char const *function, maybe_failure const &expected)
{
    outcome const seen = run(asked.run, function);
    outcome const unbroken = run(asked.run, nullptr);
    EXPECT_EQ(unbroken.told, std::nullopt) << asked.name;
    EXPECT_EQ(seen.met_fault, expected.has_value()) << asked.name;
    EXPECT_EQ(seen.told, expected) << asked.name;
    EXPECT_EQ(seen.after, expected ? seen.before : unbroken.after) << asked.name;
}

/// Of all operations that one alone makes the call.
void expect_only(char const *name, char const *function, maybe_failure const &expected)
{
    for (operation const &asked : operations)
        expect_outcome(asked, function, asked.name == std::string(name) ? expected : std::nullopt);
}

TEST_ON_MACHINE(UnexplainedFailures, OfTheFullPathnameEndEveryOperationAheadOfItsFirstStep)
{
    for (operation const &asked : operations)
        expect_outcome(asked, "GetFullPathNameW", asked.of_full_path);
}

// They promise some string, whatever happens.
TEST_ON_MACHINE(UnexplainedFailures, OfTheFullPathnameLeaveFormsForOthersAsTheyAre)
{
    sure_fault const fault = machine.fail_every_call_on("GetFullPathNameW", 0);
    EXPECT_EQ(detail::make_native_access_form(u"a/f"), L"a/f");
    EXPECT_EQ(detail::make_native_access_form_with_cleanup(u"a/f"), L"a\\f");
}

// As calls of Wine do: what they leave is the code of another call.
TEST_ON_MACHINE(UnexplainedFailures, DontBorrowTheCodeOfAnEarlierCall)
{
    for (DWORD const earlier : {2U, 5U, 123U}) {
        simulated_machine fresh;
        fill(fresh);
        sure_fault const fault =
            fresh.on_full_path_name([](DWORD, wchar_t *) { return std::optional<DWORD>(0); });
        ::SetLastError(earlier);
        EXPECT_FAILURE(remove_all(u"t"), unexplained(u"t")) << earlier;
        EXPECT_TRUE(fresh.is_directory(uR"(C:\d\t)"));
    }
}

TEST_ON_MACHINE(UnexplainedFailures, OfTheChangeOfDirectoryLeaveItWithItsVariable)
{
    expect_only("change_current_path", "SetCurrentDirectoryW", unexplained(u"t"));
}

TEST_ON_MACHINE(UnexplainedFailures, OfTheQuestionForSpaceAreReported)
{
    expect_only("space", "GetDiskFreeSpaceExW", unexplained(u"t"));
}

// The library's own calls report the literal code.
TEST_ON_MACHINE(UnexplainedFailures, OfTheCurrentDirectoryKeepTheirCode)
{
    expect_only("get_current_path", "GetCurrentDirectoryW", system_error(0, u""));
}

constexpr auto as_links = copy_options::copy_symlinks;
constexpr auto deep = copy_options::recursive;

/// Operations that open what they compare or copy.
std::vector<operation> opening_operations()
{
    auto const copied = [](char16_t const *from, char16_t const *to, copy_options options) {
        return [=] { fl::filesystem::copy(std::u16string(from), std::u16string(to), options); };
    };
    auto const file_copied = [](char16_t const *from, char16_t const *to, copy_options options) {
        return
            [=] { fl::filesystem::copy_file(std::u16string(from), std::u16string(to), options); };
    };
    return {
        {"equivalent", [] { equivalent(u"f", u"g"); }, {}},
        {"relative", [] { relative(u"t\\u", u"u"); }, {}},
        {"relative of what is missing", [] { relative(u"t\\n", u"u\\n"); }, {}},
        {"relative behind a junction", [] { relative(u"j\\n", u"u\\n"); }, {}},
        {"copy", copied(u"f", u"n", copy_options::none), {}},
        {"copy into a directory", copied(u"f", u"t", copy_options::none), {}},
        {"copy over", copied(u"f", u"g", copy_options::overwrite_existing), {}},
        {"copy, newer", copied(u"g", u"f", copy_options::update_existing), {}},
        {"copy, older", copied(u"f", u"g", copy_options::update_existing), {}},
        {"copy, skipping", copied(u"f", u"g", copy_options::skip_existing), {}},
        {"copy a link's target", copied(u"l", u"n", copy_options::none), {}},
        {"copy a link", copied(u"l", u"n", as_links), {}},
        {"copy a junction", copied(u"j", u"n", as_links), {}},
        {"copy a tree", copied(u"t", u"n", deep), {}},
        {"copy a tree with its links", copied(u"t", u"n", deep | as_links), {}},
        {"copy a tree over another",
         copied(u"t", u"u", deep | copy_options::overwrite_existing),
         {},
         true},
        {"copy one level", copied(u"t", u"n", copy_options::none), {}},
        {"copy as a hard link", copied(u"f", u"n", copy_options::create_hard_links), {}},
        {"copy_file", file_copied(u"f", u"n", copy_options::none), {}},
        {"copy_file over", file_copied(u"f", u"g", copy_options::overwrite_existing), {}},
        {"copy_file, newer", file_copied(u"g", u"f", copy_options::update_existing), {}},
        {"copy_file, older", file_copied(u"f", u"g", copy_options::update_existing), {}},
        {"copy_file, skipping", file_copied(u"f", u"g", copy_options::skip_existing), {}},
    };
}

bool holds(lines const &all, lines const &some)
{
    return std::includes(all.begin(), all.end(), some.begin(), some.end());
}

/// Code 31, and each name is as it was or as it is once all is done.
void expect_broken_off(outcome const &seen, lines const &finished, std::string const &where)
{
    ASSERT_TRUE(seen.told) << where;
    EXPECT_EQ(seen.told->error_code, 31U) << where;
    EXPECT_EQ(seen.told->what, "fl:filesystem:SystemError") << where;
    EXPECT_GE(seen.after.size(), seen.before.size()) << where;
    lines all = finished;
    all.insert(all.end(), seen.before.begin(), seen.before.end());
    std::sort(all.begin(), all.end());
    EXPECT_TRUE(holds(all, seen.after)) << where;
}

TEST_ON_MACHINE(UnexplainedFailures, OfOpeningAndOfAskingBreakComparingAndCopyingOff)
{
    for (char const *function : {"CreateFileW", "GetFileInformationByHandleEx"}) {
        int broken = 0;
        for (operation const &asked : opening_operations()) {
            outcome const unbroken = run(asked.run, nullptr);
            EXPECT_EQ(unbroken.told, std::nullopt) << asked.name;
            for (int nth = 0;; ++nth) { // 0 breaks all of them
                std::string const where =
                    std::string(asked.name) + ", " + function + ' ' + std::to_string(nth);
                outcome const seen = run(asked.run, function, nth);
                if (!seen.met_fault) {
                    EXPECT_EQ(seen.told, std::nullopt) << where;
                    EXPECT_EQ(seen.after, unbroken.after) << where;
                    break;
                }
                ++broken;
                expect_broken_off(seen, unbroken.after, where);
                if (!asked.overwrites_several) {
                    EXPECT_TRUE(holds(seen.after, seen.before)) << where;
                }
            }
        }
        EXPECT_GT(broken, 20) << function;
    }
}

TEST_ON_MACHINE(UnexplainedFailures, OfCreatingADirectoryDontTellThatItIsThere)
{
    fill(machine);
    auto const fault = machine.fail_every_call_on("CreateDirectoryW", 0);
    EXPECT_FAILURE(create_directory(u"t"), unexplained(u"t"));
    EXPECT_FAILURE(create_directories(u"t"), unexplained(u"t"));
    EXPECT_FAILURE(copy_directory(u"t", u"u"), unexplained(u"t", u"u"));
}

TEST_ON_MACHINE(UnexplainedFailures, NameWhatOtherCodesName)
{
    fill(machine);
    auto const fault = machine.fail_every_call_on("CreateFileW", 0);
    EXPECT_FAILURE(equivalent(u"f", u"g"), unexplained(u"f", u"g"));
    EXPECT_FAILURE(relative(u"t", u"u"), unexplained(u"t"));
    EXPECT_FAILURE(fl::filesystem::copy(u"f", u"g"), unexplained(u"f", u"g"));
    EXPECT_FAILURE(fl::filesystem::copy_file(u"f", u"g", copy_options::update_existing),
                   unexplained(u"f", u"g"));
    EXPECT_FAILURE(equivalent(u"l", u"j"), not_found(u"l"))
        << "nobody can see that they lead anywhere";
}

} // namespace
} // namespace fl::filesystem::tests
