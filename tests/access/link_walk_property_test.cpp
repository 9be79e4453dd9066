// Walks over disks that nobody has thought of. The disks are held here as plain maps, and
// what a walk should reach is found by following those, element by element.

#include "access/link_chain.hpp"

#include "access/wild_disk.hpp"
#include "support/calls.hpp"

#include <algorithm>
#include <map>
#include <random>

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

names split(std::u16string_view text)
{
    names elements(1);
    for (char16_t const unit : text) {
        if (unit == u'\\')
            elements.emplace_back();
        else
            elements.back() += unit;
    }
    std::erase(elements, std::u16string());
    return elements;
}

/// A place on one of the drives: its letter, and the names from there on.
struct place
{
    char16_t drive = u'C';
    names elements;

    std::u16string text() const
    {
        std::u16string joined = std::u16string(1, drive) + u':';
        for (auto const &element : elements)
            joined += u'\\' + element;
        return elements.empty() ? joined + u'\\' : joined;
    }
    friend bool operator==(place const &, place const &) = default;
};

/// What stands at a place: a link if it has a target, else a directory or a file.
struct entry
{
    bool is_directory = true;
    std::optional<std::u16string> target;
};

/// The drives C and D, as a map from places' texts.
class plain_disk
{
public:
    void add(place const &at, entry const &what) { entries_.emplace(at.text(), what); }
    entry const *find(place const &at) const
    {
        static entry const root;
        if (at.elements.empty())
            return &root;
        auto const found = entries_.find(at.text());
        return found == entries_.end() ? nullptr : &found->second;
    }

    /// Where `path`, a drive pathname, leads with every link followed, or nothing.
    std::optional<place> follow(std::u16string_view path) const;

private:
    bool is_directory(place const &at) const
    {
        entry const *found = find(at);
        return found != nullptr && !found->target && found->is_directory;
    }
    void redirect(place &at, names &rest, std::u16string const &target) const;

    std::map<std::u16string, entry> entries_;
};

/// Lets what a link says stand in the place of its name.
void plain_disk::redirect(place &at, names &rest, std::u16string const &target) const
{
    std::u16string_view text = target;
    if (text.size() > 1 && text[1] == u':') {
        at = {text[0], {}};
        text.remove_prefix(3);
    } else if (text.starts_with(u'\\')) {
        at.elements.clear();
    }
    names const more = split(text);
    rest.insert(rest.begin(), more.begin(), more.end());
}

std::optional<place> plain_disk::follow(std::u16string_view path) const
{
    place at{path[0], {}};
    names rest = split(path.substr(3));
    for (int links = 0; !rest.empty();) {
        std::u16string const element = rest.front();
        rest.erase(rest.begin());
        if (!is_directory(at))
            return std::nullopt;
        if (element == u".")
            continue;
        if (element == u"..") {
            if (!at.elements.empty())
                at.elements.pop_back();
            continue;
        }
        place below = at;
        below.elements.push_back(element);
        entry const *found = find(below);
        if (found == nullptr)
            return std::nullopt;
        if (!found->target) {
            at = below;
            continue;
        }
        if (++links > 100)
            return std::nullopt;
        redirect(at, rest, *found->target);
    }
    return at;
}

class random_disk
{
public:
    explicit random_disk(unsigned int seed) : random_(seed) {}

    void build(simulated_machine &machine);
    std::u16string pathname();
    plain_disk const &disk() const { return disk_; }

private:
    unsigned int pick(unsigned int count) { return static_cast<unsigned int>(random_() % count); }
    bool chance(unsigned int percent) { return pick(100) < percent; }
    std::u16string name()
    {
        return std::u16string(1 + pick(2), static_cast<char16_t>(u'a' + pick(3)));
    }
    void fill(simulated_machine &machine, place const &in, int depth);
    std::u16string relative(unsigned int most);
    std::u16string target();

    std::mt19937 random_;
    plain_disk disk_;
};

/// Names and dots; now and then with a doubled separator, or one at the end.
std::u16string random_disk::relative(unsigned int most)
{
    std::u16string text;
    unsigned int const count = 1 + pick(most);
    for (unsigned int i = 0; i < count; ++i) {
        if (i > 0)
            text += chance(10) ? u"\\\\" : u"\\";
        text += chance(25) ? u".." : chance(10) ? u"." : name();
    }
    return text;
}

std::u16string random_disk::target()
{
    std::u16string const end = chance(20) ? u"\\" : u"";
    switch (pick(5)) {
    case 0:
        return u"C:\\" + relative(3) + end;
    case 1:
        return u"D:\\" + relative(3) + end;
    case 2:
        return u"\\" + relative(3) + end;
    case 3:
        return chance(30) ? std::u16string(u"\\") : u"..\\" + relative(2) + end;
    default:
        return relative(3) + end;
    }
}

void random_disk::fill(simulated_machine &machine, place const &in, int depth)
{
    unsigned int const count = 2 + pick(4);
    for (unsigned int i = 0; i < count; ++i) {
        place at = in;
        at.elements.push_back(name());
        if (disk_.find(at) != nullptr)
            continue;
        unsigned int const kind = pick(10);
        if (kind < 4) {
            std::u16string const text = target();
            // directories' links only: those to files say the same
            machine.add_reparse_point(at.text(), DWORD{IO_REPARSE_TAG_SYMLINK},
                                      simulation::symbolic_link_data(text, text, 0),
                                      flavour::directory);
            disk_.add(at, {true, text});
        } else if (kind < 5) {
            machine.add_file(at.text());
            disk_.add(at, {false, std::nullopt});
        } else {
            machine.add_directory(at.text());
            disk_.add(at, {});
            if (depth > 0)
                fill(machine, at, depth - 1);
        }
    }
}

void random_disk::build(simulated_machine &machine)
{
    machine.add_drive(u'D');
    fill(machine, {u'C', {}}, 2);
    fill(machine, {u'D', {}}, 2);
}

std::u16string random_disk::pathname()
{
    return (chance(70) ? u"C:\\" : u"D:\\") + relative(5);
}

/// Volume and index of what a string for the system names, itself and not where it leads.
std::optional<std::pair<DWORD, std::uint64_t>> identity(std::wstring const &path)
{
    HANDLE const file = ::CreateFileW(
        path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
        OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return std::nullopt;
    BY_HANDLE_FILE_INFORMATION information{};
    bool const told = ::GetFileInformationByHandle(file, &information) != 0;
    ::CloseHandle(file);
    if (!told)
        return std::nullopt;
    return std::pair{information.dwVolumeSerialNumber,
                     (std::uint64_t{information.nFileIndexHigh} << 32U) |
                         information.nFileIndexLow};
}

/// Whether no element behind the root is empty, `.` or `..`.
bool is_settled(std::wstring const &result)
{
    if (!result.starts_with(LR"(\\?\)") || result.size() < 7 || result.substr(5, 2) != LR"(:\)")
        return false;
    if (result.size() == 7)
        return true;
    std::u16string const behind = units(result).substr(7) + u'\\';
    for (std::size_t begin = 0, end; begin < behind.size(); begin = end + 1) {
        end = behind.find(u'\\', begin);
        std::u16string const element = behind.substr(begin, end - begin);
        if (element.empty() || element == u"." || element == u"..")
            return false;
    }
    return true;
}

TEST(LinkWalkProperty, ReachesWhatTheDiskHolds)
{
    int reached = 0;
    int climbed = 0;
    for (unsigned int seed = 1; seed <= 300; ++seed) {
        simulated_machine machine;
        random_disk disk(seed);
        disk.build(machine);
        for (int walk = 0; walk < 25; ++walk) {
            std::u16string const path = disk.pathname();
            std::string const shown = printable(path) + ", seed " + std::to_string(seed);
            auto const expected = disk.disk().follow(path);
            std::wstring result;
            auto const thrown = failure_of([&] {
                result = resolve_link_chain(L"\\\\?\\" + wide(path), windows::path_type_enum(0));
            });
            ASSERT_TRUE(!expected || !thrown) << shown << ": " << *thrown;
            if (thrown)
                continue;
            ASSERT_TRUE(is_settled(result)) << shown << " gives " << printable(units(result));
            if (!expected)
                continue; // a name at the end with a separator behind it needn't be there
            ASSERT_EQ(result, LR"(\\?\)" + wide(expected->text())) << shown;
            ASSERT_TRUE(identity(result)) << shown;
            ASSERT_EQ(identity(result), identity(wide(expected->text()))) << shown;
            ++reached;
            climbed += path.find(u"..") != std::u16string::npos;
        }
        ASSERT_EQ(machine.open_handles(), 0) << "seed " << seed;
    }
    // the disks are dense enough to be walked on, and sparse enough to fail on
    EXPECT_GT(reached, 1500);
    EXPECT_LT(reached, 7000);
    EXPECT_GT(climbed, 300);
}

TEST(LinkWalkProperty, FailsWhereTheDiskEnds)
{
    int failed = 0;
    for (unsigned int seed = 301; seed <= 400; ++seed) {
        simulated_machine machine;
        random_disk disk(seed);
        disk.build(machine);
        for (int walk = 0; walk < 25; ++walk) {
            std::u16string const path = disk.pathname();
            auto const expected = disk.disk().follow(path);
            std::wstring result;
            auto const thrown = failure_of(
                [&] { result = resolve_link_chain(wide(path), windows::path_type_enum(0)); });
            if (expected || thrown) {
                failed += thrown.has_value();
                continue;
            }
            // what a walk returns though it leads nowhere is no name that is there
            EXPECT_EQ(identity(result), std::nullopt)
                << printable(path) << ", seed " << seed << " gives " << printable(units(result));
        }
    }
    EXPECT_GT(failed, 200);
}

TEST(LinkWalkProperty, EndsWithinItsBoundsOnAnyDisk)
{
    int ended = 0;
    int followed = 0;
    for (unsigned int seed = 1; seed <= 250; ++seed) {
        simulated_machine machine;
        wild_disk disk(seed);
        disk.build(machine);
        for (int walk = 0; walk < 16; ++walk) {
            std::u16string const path = disk.pathname();
            std::string const shown = printable(path) + ", seed " + std::to_string(seed);
            machine.clear_journal();
            std::wstring result;
            auto const thrown = failure_of(
                [&] { result = resolve_link_chain(wide(path), windows::path_type_enum(0)); });
            int const links =
                machine.calls_of("DeviceIoControl") + machine.calls_of("IShellLinkW::GetPath");
            // some of those were no links, or kept as elements of a server
            ASSERT_LE(static_cast<std::size_t>(links),
                      101 + path.size() + 101 * disk.longest_target())
                << shown;
            // prefixes, a separator, and the current directory may come along with each
            ASSERT_LE(result.size(), path.size() + 101 * (disk.longest_target() + 12)) << shown;
            expect_nothing_open(machine, shown);
            ended += !thrown;
            followed += links > 0;
            if (HasFailure())
                return;
        }
    }
    EXPECT_GT(ended, 500);
    EXPECT_GT(followed, 400);
}

TEST(LinkWalkProperty, ClosesEverythingWhenAnyCallFails)
{
    int fired = 0;
    for (unsigned int seed = 1; seed <= 100; ++seed) {
        simulated_machine machine;
        wild_disk disk(seed);
        disk.build(machine);
        for (int nth = 1; nth <= 12; ++nth) {
            std::u16string const path = disk.pathname();
            auto const fault = machine.fail_call(nth, 1117);
            failure_of([&] { resolve_link_chain(wide(path), windows::path_type_enum(0)); });
            expect_nothing_open(machine, printable(path) + ", seed " + std::to_string(seed));
            fired += fault.fired();
        }
        if (HasFailure())
            return;
    }
    EXPECT_GT(fired, 300);
}

} // namespace
} // namespace fl::filesystem::detail
