// The walk through links against the one before it: on any disk the same result, the same
// failure and the same calls, whatever fails. `FL_WALKS` in the environment is how many.

#include "access/former_link_chain.hpp"
#include "access/link_chain.hpp"
#include "access/walking.hpp"
#include "access/wild_disk.hpp"
#include "pathname/path_type.hpp"
#include "support/text.hpp"

#include <cstdlib>
#include <iostream>
#include <sstream>
#include <tuple>

namespace fl::filesystem::detail {
namespace {

using simulation::journal_entry;
using test_support::failure;
using test_support::printable;
using test_support::units;
using test_support::wide;
using windows::path_type_enum;

/// All that can be seen of a walk.
struct outcome
{
    std::wstring result;
    std::optional<failure> thrown;
    std::vector<journal_entry> calls;
};

/// All of a call but the number of the handle that it answers.
bool is_same_call(journal_entry const &one, journal_entry const &other)
{
    auto const all = [](journal_entry const &entry) {
        return std::tie(entry.function, entry.text, entry.second_text, entry.flags, entry.access,
                        entry.share, entry.disposition, entry.last_error, entry.room);
    };
    return all(one) == all(other) && (one.answer == 0) == (other.answer == 0);
}

bool is_same(outcome const &one, outcome const &other)
{
    return one.result == other.result && one.thrown == other.thrown &&
           std::equal(one.calls.begin(), one.calls.end(), other.calls.begin(), other.calls.end(),
                      is_same_call);
}

std::string shown(outcome const &walk)
{
    std::ostringstream out;
    out << "\"" << printable(units(walk.result)) << "\", " << walk.thrown << '\n';
    for (auto const &entry : walk.calls)
        out << "    " << entry.function << '(' << printable(entry.text) << ")\n";
    return std::move(out).str();
}

/// A pathname, and what is to fail on its way.
struct trial
{
    std::wstring path;
    path_type_enum type;
    int failing_call = 0; ///< counted from 1; 0 for none
    DWORD code = 0;
};

template <typename Walk>
outcome try_walk(simulated_machine &machine, trial const &one, Walk walk)
{
    machine.clear_journal();
    ::SetLastError(0);
    outcome seen;
    std::optional<simulation::fault> fault;
    if (one.failing_call > 0)
        fault.emplace(machine.fail_call(one.failing_call, one.code));
    seen.thrown = failure_of([&] { seen.result = walk(one.path, one.type); });
    seen.calls = machine.journal();
    return seen;
}

/// Wild disks with links of more sense on them, so that many a walk gets far.
class trials
{
public:
    explicit trials(unsigned int seed) : disk_(seed), random_(seed)
    {
        disk_.build(machine);
        for (std::u16string const directory :
             {u"C:", u"D:", u"\\\\s\\h", u"C:\\a", u"D:\\a", u"\\\\s\\h\\a", u"C:\\wo", u"C:\\work",
              u"C:\\workshop"}) {
            machine.add_directory(directory + u"\\d");
            for (char16_t const *name : {u"k", u"l", u"m", u"wide", u"n.lnk"})
                add_link(directory + u'\\' + name);
        }
    }

    trial next()
    {
        machine.set_current_directory(one_of(homes_));
        constexpr wchar_t const *ends[] = {L"",     L"",     L"",    L"\\",
                                           L"\\\\", L"\\..", L"\\.", L"\\..\\.."};
        constexpr DWORD codes[] = {0, 2, 3, 5, 21, 53, 123, 1117, 4390};
        std::u16string const path = pick(3) == 0 ? disk_.pathname() : pathname();
        trial made{wide(path) + one_of(ends), path_type_enum(0)};
        if (pick(2) == 0)
            made.type = classify_path_type<wchar_t>(made.path);
        if (pick(3) == 0) {
            made.failing_call = 1 + static_cast<int>(pick(20));
            made.code = one_of(codes);
        }
        return made;
    }

    simulated_machine machine;

private:
    unsigned int pick(std::size_t count) { return static_cast<unsigned int>(random_() % count); }
    template <typename Value, std::size_t Count>
    Value one_of(Value const (&values)[Count])
    {
        return values[pick(Count)];
    }

    void add_link(std::u16string const &at)
    {
        constexpr char16_t const *targets[] = {u"d",
                                               u"..\\a",
                                               u"a\\k",
                                               u"\\a",
                                               u"\\",
                                               u"\\d\\",
                                               u"C:\\a",
                                               u"D:\\a",
                                               u"D:\\\\",
                                               u"D:\\a\\\\",
                                               u"C:",
                                               u"C:d",
                                               u"C:\\",
                                               u"\\\\s\\h",
                                               u"\\\\s\\h\\\\",
                                               u"//s/h/a",
                                               u"\\\\s\\h\\a",
                                               u"\\\\?\\C:",
                                               u"\\\\?\\C:\\",
                                               u"\\\\?\\C:d",
                                               u"\\\\?\\D:",
                                               u"\\\\?\\D:\\a",
                                               u"\\\\?\\D:\\\\",
                                               u"X:\\a",
                                               u"\\\\?\\UNC\\s\\h",
                                               u"m\\..\\l",
                                               u".",
                                               u"\\\\?\\UNC\\s\\h\\a\\\\"};
        std::u16string const target = one_of(targets);
        if (at.ends_with(u".lnk"))
            machine.add_shortcut(at, target);
        else if (pick(4) == 0)
            machine.add_junction(at, u"\\??\\" + target, target);
        else
            machine.add_reparse_point(at, DWORD{IO_REPARSE_TAG_SYMLINK},
                                      simulation::symbolic_link_data(target, target, pick(2)),
                                      flavour::directory);
    }

    std::u16string pathname()
    {
        constexpr char16_t const *roots[] = {u"C:",          u"\\\\?\\C:", u"\\\\?\\D:",
                                             u"X:",          u"\\\\s\\h",  u"\\\\?\\UNC\\s\\h",
                                             u"C:\\workshop"};
        constexpr char16_t const *elements[] = {u"a",     u"a",  u"d",  u"k", u"l", u"m", u"wide",
                                                u"n.lnk", u"..", u"..", u".", u"",  u"no"};
        std::u16string path = one_of(roots);
        for (unsigned int count = 1 + pick(5); count > 0; --count)
            path += std::u16string(u"\\") + one_of(elements);
        return path;
    }

    static constexpr char16_t const *homes_[] = {u"C:\\",     u"C:\\a",        u"C:\\wo",
                                                 u"C:\\work", u"C:\\workshop", u"D:\\a"};
    wild_disk disk_;
    std::mt19937 random_;
};

int wanted_walks()
{
    char const *const told = std::getenv("FL_WALKS");
    return told != nullptr ? std::atoi(told) : 20000;
}

TEST(LinkWalkDifferential, IsTheSameWalkAsBefore)
{
    constexpr int walks_a_disk = 50;
    int const wanted = wanted_walks();
    int walks = 0;
    int failed = 0;
    int broken = 0;
    long links = 0;
    for (unsigned int seed = 1; walks < wanted; ++seed) {
        trials made(seed);
        for (int i = 0; i < walks_a_disk; ++i, ++walks) {
            trial const one = made.next();
            outcome const before = try_walk(made.machine, one, [](auto const &path, auto type) {
                return former::resolve_link_chain(path, type);
            });
            outcome const now = try_walk(made.machine, one, [](auto const &path, auto type) {
                return resolve_link_chain(path, type);
            });
            ASSERT_TRUE(is_same(before, now))
                << printable(units(one.path)) << ", type " << one.type << ", seed " << seed
                << ", failing call " << one.failing_call << " with " << one.code
                << "\nbefore: " << shown(before) << "now: " << shown(now);
            failed += before.thrown.has_value();
            broken += one.failing_call > 0 &&
                      before.calls.size() >= static_cast<std::size_t>(one.failing_call);
            links += made.machine.calls_of("DeviceIoControl") +
                     made.machine.calls_of("IShellLinkW::GetPath");
        }
    }
    std::cout << walks << " walks, " << failed << " failed, " << broken << " met a failing call, "
              << links << " links read\n";
    EXPECT_GT(failed, walks / 10);
    EXPECT_LT(failed, walks);
    EXPECT_GT(broken, walks / 50);
    EXPECT_GT(links, walks / 4);
}

} // namespace
} // namespace fl::filesystem::detail
