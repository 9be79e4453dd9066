#include "behaviour/editions.hpp"

#include "behaviour/trials.hpp"

#include <fl/filesystem/exceptions.hpp>
#include <fl/filesystem/operations.hpp>

#include <simulation/machine.hpp>

#include <algorithm>
#include <array>
#include <functional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace behaviour {

namespace {

namespace fs = fl::filesystem;
using simulation::edition;
using simulation::simulated_machine;

struct system
{
    char const *name;
    edition runs;
    bool takes_long_pathnames;
};

constexpr std::array systems = {
    system{"Windows 10 1809", edition::windows_10_1809, false},
    system{"Windows 10 22H2", edition::windows_10_22h2, false},
    system{"Windows 11", edition::windows_11, false},
    system{"Windows 11, long pathnames allowed", edition::windows_11, true},
};

/// Something that is done on a machine, and how it ends.
struct situation
{
    std::string title;
    std::function<std::string(simulated_machine &)> run;
};

/// A file or directory that somebody else has open and lets others delete.
class held_open
{
public:
    explicit held_open(wchar_t const *path)
        : handle_(::CreateFileW(path, GENERIC_READ,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr))
    {
    }
    held_open(held_open const &) = delete;
    held_open &operator=(held_open const &) = delete;
    ~held_open() { ::CloseHandle(handle_); }

private:
    HANDLE handle_;
};

std::string ending_of(std::function<void()> const &operation)
{
    try {
        operation();
    } catch (fs::FsysExceptionBase const &failure) {
        std::string const what = failure.what();
        std::string const prefix = "fl:filesystem:";
        std::string const code =
            failure.get_error_code() == 0 ? "" : " " + std::to_string(failure.get_error_code());
        return "`" + what.substr(prefix.size(), what.find(" {") - prefix.size()) + "`" + code;
    }
    return "returns";
}

std::string there(simulated_machine const &machine, char16_t const *path)
{
    return machine.exists(path) ? "still there" : "gone";
}

/// An operation on `C:\d\f` while somebody reads that.
situation on_open_file(std::string title, std::function<void()> operation)
{
    return {std::move(title), [operation](simulated_machine &machine) {
                machine.add_file(uR"(C:\d\f)");
                held_open const reader(LR"(C:\d\f)");
                std::string const ending = ending_of(operation);
                if (machine.is_directory(uR"(C:\d\f)"))
                    return ending + ", a directory has the name";
                return ending + ", the file is " + there(machine, uR"(C:\d\f)");
            }};
}

situation on_open_directory(std::string title, std::function<void()> operation)
{
    return {std::move(title), [operation](simulated_machine &machine) {
                machine.add_directory(uR"(C:\d\e)");
                held_open const lister(LR"(C:\d\e)");
                std::string const ending = ending_of(operation);
                return ending + ", the directory is " + there(machine, uR"(C:\d\e)");
            }};
}

std::vector<situation> deletions()
{
    return {
        on_open_file(R"(`remove(C:\d\f)`, which another reads)", [] { fs::remove(u"C:\\d\\f"); }),
        on_open_file(R"(`remove_file(C:\d\f)`, which another reads)",
                     [] { fs::remove_file(u"C:\\d\\f"); }),
        on_open_file(R"(`remove_file(C:\d\f)` a second time)",
                     [] {
                         fs::remove_file(u"C:\\d\\f");
                         fs::remove_file(u"C:\\d\\f");
                     }),
        on_open_file(R"(`remove_file(C:\d\f)`, then `create_directory` by its name)",
                     [] {
                         fs::remove_file(u"C:\\d\\f");
                         fs::create_directory(u"C:\\d\\f");
                     }),
        on_open_file(R"(`remove_all(C:\d)`, where another reads `C:\d\f`)",
                     [] { fs::remove_all(u"C:\\d"); }),
        on_open_directory(R"(`remove_directory(C:\d\e)`, which another lists)",
                          [] { fs::remove_directory(u"C:\\d\\e"); }),
        on_open_directory(R"(`remove_all(C:\d)`, where another lists `C:\d\e`)",
                          [] { fs::remove_all(u"C:\\d"); }),
    };
}

std::vector<situation> devices()
{
    auto const text_of = [](char16_t const *text) {
        return situation{"`absolute(" + std::string(shown(text).substr(1, shown(text).size() - 2)) +
                             ")`",
                         [text](simulated_machine &) { return shown(fs::absolute(text)); }};
    };
    return {
        text_of(u"nul"),
        text_of(u"con"),
        text_of(u"nul.txt"),
        text_of(uR"(d\con)"),
        text_of(uR"(d\nul)"),
        {R"(`create_directory(C:\d\con)`)",
         [](simulated_machine &machine) {
             machine.add_directory(u"C:\\d");
             std::string const ending = ending_of([] { fs::create_directory(u"C:\\d\\con"); });
             return ending + (machine.is_directory(u"C:\\d\\con") ? ", it is there" : "");
         }},
        {R"(`copy_file(C:\f, C:\d\aux.c)`)",
         [](simulated_machine &machine) {
             machine.add_file(u"C:\\f").add_directory(u"C:\\d");
             std::string const ending = ending_of([] {
                 fs::copy_file(u"C:\\f", u"C:\\d\\aux.c", std::filesystem::copy_options::none);
             });
             return ending + (machine.is_file(u"C:\\d\\aux.c") ? ", it is there" : "");
         }},
        {R"(`remove(C:\d\aux.c)`, which is there)",
         [](simulated_machine &machine) {
             machine.add_file(u"C:\\d\\aux.c");
             std::string const ending = ending_of([] { fs::remove(u"C:\\d\\aux.c"); });
             return ending + ", it is " + there(machine, u"C:\\d\\aux.c");
         }},
        {R"(`remove_all(C:\d)` with `C:\d\aux.c` in it)",
         [](simulated_machine &machine) {
             machine.add_file(u"C:\\d\\aux.c");
             std::string const ending = ending_of([] { fs::remove_all(u"C:\\d"); });
             return ending + ", it is " + there(machine, u"C:\\d\\aux.c");
         }},
        {R"(`remove_all(C:\d)` with `C:\d\nul` in it)",
         [](simulated_machine &machine) {
             machine.add_file(u"C:\\d\\nul");
             std::string const ending = ending_of([] { fs::remove_all(u"C:\\d"); });
             return ending + ", it is " + there(machine, u"C:\\d\\nul");
         }},
    };
}

std::u16string of_size(std::u16string_view head, std::size_t size)
{
    std::u16string text(head);
    text.resize(size, u'n');
    return text;
}

std::vector<situation> lengths()
{
    return {
        {"`create_directory(p)` of 250 units",
         [](simulated_machine &) {
             return ending_of([] { fs::create_directory(of_size(u"C:\\", 250)); });
         }},
        {"`change_current_path(p)` of 300 units",
         [](simulated_machine &machine) {
             std::u16string const first = of_size(u"C:\\", 150);
             std::u16string const path = of_size(first + u'\\', 300);
             machine.add_directory(path);
             std::string answer;
             std::string const ending =
                 ending_of([&] { answer = fs::change_current_path(path) ? "true" : "false"; });
             return answer.empty() ? ending : answer;
         }},
        {"`copy(p, q, recursive)` with a file of 300 units in `p`",
         [](simulated_machine &machine) {
             std::u16string const from = of_size(u"C:\\", 100);
             std::u16string const inner = of_size(from + u'\\', 300);
             machine.add_file(inner, "text");
             std::string const ending = ending_of(
                 [&] { fs::copy(from, u"C:\\to", std::filesystem::copy_options::recursive); });
             bool const is_there = machine.exists(u"C:\\to" + inner.substr(from.size()));
             return ending + (is_there ? ", it is copied" : ", it isn't copied");
         }},
    };
}

std::vector<situation> links()
{
    return {
        {"`status(l)` of a file's link to a directory",
         [](simulated_machine &machine) {
             machine.add_directory(u"C:\\d").add_symbolic_link(u"C:\\l", u"d");
             std::string words;
             std::string const ending = ending_of([&] {
                 fs::file_status const found = fs::status(u"C:\\l");
                 words = found.get_type() == fs::file_status::directory_file ? "a directory"
                                                                             : "something else";
             });
             return words.empty() ? ending : words;
         }},
        {"`equivalent(l, d)` of a file's link to the directory `d`",
         [](simulated_machine &machine) {
             machine.add_directory(u"C:\\d").add_symbolic_link(u"C:\\l", u"d");
             std::string answer;
             std::string const ending =
                 ending_of([&] { answer = fs::equivalent(u"C:\\l", u"C:\\d") ? "true" : "false"; });
             return answer.empty() ? ending : answer;
         }},
    };
}

using endings = std::array<std::string, systems.size()>;

endings endings_of(situation const &each)
{
    endings all;
    std::transform(systems.begin(), systems.end(), all.begin(), [&](system const &runs) {
        simulated_machine machine;
        machine.set_edition(runs.runs).set_long_pathnames(runs.takes_long_pathnames);
        return each.run(machine);
    });
    return all;
}

constexpr char editions_introduction[] = R"(
## On one Windows and another

The tables above are those of Windows 11 without long pathnames allowed by system and program.
Of some twenty situations in which Windows itself differs, these don't end alike everywhere:

)";

} // namespace

void write_editions(std::ostream &page)
{
    page << editions_introduction << "| |";
    for (system const &each : systems)
        page << ' ' << each.name << " |";
    page << "\n|---|";
    for (std::size_t i = 0; i < systems.size(); ++i)
        page << "---|";
    page << '\n';
    for (auto const &part : {deletions(), devices(), lengths(), links()}) {
        for (situation const &each : part) {
            endings const all = endings_of(each);
            if (std::all_of(all.begin(), all.end(),
                            [&](std::string const &one) { return one == all.front(); }))
                continue;
            page << "| " << each.title << " |";
            for (std::string const &ending : all)
                page << ' ' << ending << " |";
            page << '\n';
        }
    }
}

} // namespace behaviour
