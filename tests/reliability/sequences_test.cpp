// Random sequences of operations on small disks of files, links, junctions, hard links, shares,
// read-only and open files: each answer and each disk against the model. What disagrees is shown
// as the shortest sequence that does.

#include "reliability/disk_model.hpp"
#include "reliability/names.hpp"
#include "reliability/sampling.hpp"

#include "support/shrinking.hpp"

#include <iostream>
#include <map>
#include <random>

namespace reliability {

namespace {

using namespace test_support;

struct step
{
    unsigned int what;
    text p;
    text q;
    unsigned int number;
};
using sequence = std::vector<step>;

/// The library on a simulated machine.
struct world
{
    simulated_machine machine;
    std::map<text, HANDLE> held;

    world()
    {
        machine.keep_journal(false);
        machine.add_drive(u'D').add_share(u"s", u"t");
    }
    ~world()
    {
        for (auto const &[path, handle] : held)
            ::CloseHandle(handle);
    }
    world(world const &) = delete;
    world &operator=(world const &) = delete;
};

void hold(world &in, text const &p)
{
    in.held[p] = ::CreateFileW(wide(p).c_str(), 0x80000000, FILE_SHARE_READ | FILE_SHARE_WRITE,
                               nullptr, OPEN_EXISTING, 0, nullptr);
}

void release(world &in, text const &p)
{
    if (auto const open = in.held.find(p); open != in.held.end()) {
        ::CloseHandle(open->second);
        in.held.erase(open);
    }
}

std::string listed(text const &p)
{
    std::string all;
    for (auto const &entry : ff::directory_iterator(p))
        all += printable(entry.filename()) + " ";
    return all;
}

unsigned int read_only_word(bool is_read_only)
{
    return (is_read_only ? ff::file_status::perms_remove : ff::file_status::perms_add) |
           ff::file_status::owner_write;
}

template <typename Act>
std::string done(Act act)
{
    act();
    return "done";
}

/// One kind of step: what the model says, and what the library does.
struct kind
{
    char const *name;
    std::string (*expected)(disk_model &, step const &);
    std::string (*made)(world &, step const &);
};

kind const kinds[] = {
    {"put file", [](auto &m, auto &s) { return m.put_file(s.p, std::string(s.number, 'x')); },
     [](world &w, step const &s) {
         w.machine.add_file(s.p, std::string(s.number, 'x'));
         return std::string("put");
     }},
    {"put link", [](auto &m, auto &s) { return m.put_link(s.p, s.q, s.number % 2 == 0, false); },
     [](world &w, step const &s) {
         w.machine.add_symbolic_link(s.p, s.q,
                                     s.number % 2 == 0 ? flavour::directory : flavour::file);
         return std::string("put");
     }},
    {"put junction",
     [](auto &m, auto &s) {
         bool const is_absolute = s.q[1] == u':';
         return is_absolute ? m.put_link(s.p, s.q, true, true) : std::string("skip");
     },
     [](world &w, step const &s) {
         w.machine.add_junction(s.p, s.q);
         return std::string("put");
     }},
    {"open", [](auto &m, auto &s) { return m.hold(s.p, true); },
     [](world &w, step const &s) {
         hold(w, s.p);
         return std::string("put");
     }},
    {"close", [](auto &m, auto &s) { return m.hold(s.p, false); },
     [](world &w, step const &s) {
         release(w, s.p);
         return std::string("put");
     }},
    {"create_directory", [](auto &m, auto &s) { return m.create_directory(s.p); },
     [](world &, step const &s) { return done([&] { ff::create_directory(s.p); }); }},
    {"create_directory", [](auto &m, auto &s) { return m.create_directory(s.p); },
     [](world &, step const &s) { return done([&] { ff::create_directory(s.p); }); }},
    {"create_directories", [](auto &m, auto &s) { return m.create_directories(s.p); },
     [](world &, step const &s) { return done([&] { ff::create_directories(s.p); }); }},
    {"remove", [](auto &m, auto &s) { return m.remove(s.p); },
     [](world &, step const &s) { return done([&] { ff::remove(s.p); }); }},
    {"remove_file", [](auto &m, auto &s) { return m.remove_file(s.p); },
     [](world &, step const &s) { return done([&] { ff::remove_file(s.p); }); }},
    {"remove_directory", [](auto &m, auto &s) { return m.remove_directory(s.p); },
     [](world &, step const &s) { return done([&] { ff::remove_directory(s.p); }); }},
    {"remove_all", [](auto &m, auto &s) { return m.remove_all(s.p); },
     [](world &, step const &s) { return done([&] { ff::remove_all(s.p); }); }},
    {"remove_all with options", [](auto &m, auto &s) { return m.remove_all_of(s.p); },
     [](world &, step const &s) {
         return shown_report(
             ff::remove_all(s.p, ff::removal_options().clear_read_only().keep_going()));
     }},
    {"rename", [](auto &m, auto &s) { return m.rename(s.p, s.q); },
     [](world &, step const &s) { return done([&] { ff::rename(s.p, s.q); }); }},
    {"rename", [](auto &m, auto &s) { return m.rename(s.p, s.q); },
     [](world &, step const &s) { return done([&] { ff::rename(s.p, s.q); }); }},
    {"copy_file", [](auto &m, auto &s) { return m.copy_file(s.p, s.q, false); },
     [](world &, step const &s) { return done([&] { ff::copy_file(s.p, s.q); }); }},
    {"copy_file over", [](auto &m, auto &s) { return m.copy_file(s.p, s.q, true); },
     [](world &, step const &s) {
         return done([&] { ff::copy_file(s.p, s.q, copy_options::overwrite_existing); });
     }},
    {"create_hard_link", [](auto &m, auto &s) { return m.create_hard_link(s.p, s.q); },
     [](world &, step const &s) { return done([&] { ff::create_hard_link(s.p, s.q); }); }},
    {"resize_file", [](auto &m, auto &s) { return m.resize_file(s.p, s.number); },
     [](world &, step const &s) { return done([&] { ff::resize_file(s.p, s.number); }); }},
    {"permissions", [](auto &m, auto &s) { return m.set_read_only(s.p, s.number % 2 == 0); },
     [](world &, step const &s) {
         return done([&] { ff::permissions(s.p, read_only_word(s.number % 2 == 0)); });
     }},
    {"exists", [](auto &m, auto &s) { return m.exists(s.p); },
     [](world &, step const &s) { return std::string(ff::exists(s.p) ? "yes" : "no"); }},
    {"status", [](auto &m, auto &s) { return m.status(s.p); },
     [](world &, step const &s) { return shown_record(ff::status(s.p)); }},
    {"symlink_status", [](auto &m, auto &s) { return m.symlink_status(s.p); },
     [](world &, step const &s) { return shown_record(ff::symlink_status(s.p)); }},
    {"file_size", [](auto &m, auto &s) { return m.file_size(s.p); },
     [](world &, step const &s) { return std::to_string(ff::file_size(s.p)); }},
    {"hard_link_count", [](auto &m, auto &s) { return m.hard_link_count(s.p); },
     [](world &, step const &s) { return std::to_string(ff::hard_link_count(s.p)); }},
    {"equivalent", [](auto &m, auto &s) { return m.equivalent(s.p, s.q); },
     [](world &, step const &s) { return std::string(ff::equivalent(s.p, s.q) ? "yes" : "no"); }},
    {"read_symlink", [](auto &m, auto &s) { return m.read_symlink(s.p); },
     [](world &, step const &s) { return printable(ff::read_symlink(s.p)); }},
    {"list", [](auto &m, auto &s) { return m.list(s.p); },
     [](world &, step const &s) { return listed(s.p); }},
};

constexpr unsigned int kind_count = std::size(kinds);

std::string text_of(step const &shown)
{
    return std::string(kinds[shown.what].name) + " " + printable(shown.p) + " " +
           printable(shown.q) + " " + std::to_string(shown.number);
}

std::string made(world &in, step const &act)
{
    try {
        return kinds[act.what].made(in, act);
    } catch (ff::FsysExceptionBase const &exception) {
        return shown_failure(test_support::describe(exception));
    }
}

void add_lines(simulated_machine const &machine, text const &path, lines &all)
{
    for (text const &name : machine.entries(path + u"\\")) {
        text const below = path + u"\\" + name;
        std::string line = printable(below);
        if (machine.reparse_tag(below) != 0)
            line += " -> " + printable(ff::read_symlink(below));
        else if (machine.is_file(below))
            line +=
                " " + machine.content(below) +
                ((machine.attributes(below) & FILE_ATTRIBUTE_READONLY) != 0 ? " read-only" : "") +
                " " + std::to_string(machine.link_count(below));
        all.push_back(line);
        if (machine.is_directory(below) && machine.reparse_tag(below) == 0)
            add_lines(machine, below, all);
    }
}

lines lines_of(simulated_machine const &machine)
{
    lines all;
    for (char16_t const *root : {u"C:", u"D:", uR"(\\s\t)"})
        add_lines(machine, root, all);
    return all;
}

/// Plays a sequence on both. Returns what disagrees, or nothing.
std::string disagreement(sequence const &steps, long *compared = nullptr)
{
    world real;
    disk_model model;
    for (step const &act : steps) {
        std::string const expected = kinds[act.what].expected(model, act);
        if (expected == "skip")
            continue;
        std::string const seen = made(real, act);
        if (compared != nullptr)
            ++*compared;
        if (seen != expected)
            return text_of(act) + ": expected {" + expected + "}, seen {" + seen + "}";
        lines const disk = lines_of(real.machine);
        if (disk == model.lines())
            continue;
        std::string told = text_of(act) + ": another disk; expected";
        for (std::string const &line : model.lines())
            told += " {" + line + "}";
        told += "; seen";
        for (std::string const &line : disk)
            told += " {" + line + "}";
        return told;
    }
    return {};
}

class generator
{
public:
    explicit generator(unsigned int seed) : random_(seed) {}

    sequence steps(int count)
    {
        sequence made;
        for (int i = 0; i < count; ++i)
            made.push_back({pick(kind_count), pathname(), second(), pick(6)});
        for (step &one : made) {
            if (std::string(kinds[one.what].name).starts_with("put "))
                one.q = target();
        }
        return made;
    }

private:
    unsigned int pick(unsigned int count) { return static_cast<unsigned int>(random_() % count); }
    text names(unsigned int most)
    {
        text made;
        unsigned int const count = 1 + pick(most);
        for (unsigned int i = 0; i < count; ++i)
            made += (i == 0 ? u"" : u"\\") + text(1, static_cast<char16_t>(u'a' + pick(3)));
        return made;
    }
    text pathname()
    {
        static char16_t const *const roots[] = {uR"(C:\)", uR"(C:\)", uR"(C:\)", uR"(D:\)",
                                                uR"(\\s\t\)"};
        return roots[pick(5)] + names(3);
    }
    text second() { return pathname(); }
    text target()
    {
        return pick(3) == 0 ? names(2) : (pick(2) == 0 ? u"C:\\" : u"D:\\") + names(2);
    }

    std::mt19937 random_;
};

TEST(Sequences, OfOperationsDoWhatTheModelSays)
{
    long const disks = number_from("FL_RELIABILITY_DISKS", 150);
    long const first = number_from("FL_RELIABILITY_SEED", 1);
    long compared = 0;
    int told = 0;
    for (long seed = first; seed < first + disks && told < 5; ++seed) {
        sequence const steps = generator(static_cast<unsigned int>(seed)).steps(250);
        if (disagreement(steps, &compared).empty())
            continue;
        ++told;
        sequence const shortest =
            shrunk(steps, [](sequence const &some) { return !disagreement(some).empty(); });
        std::string all = disagreement(shortest) + "\nseed " + std::to_string(seed) + ":\n";
        for (step const &one : shortest)
            all += "  " + text_of(one) + "\n";
        ADD_FAILURE() << all;
    }
    std::cout << "sequences: " << disks << " disks, " << compared << " operations compared\n";
    EXPECT_GT(compared, disks * 100);
}

} // namespace
} // namespace reliability
