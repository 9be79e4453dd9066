// Runs all programs of the kit and writes `report.txt` into the folder above its own:
// `windows_verify [--filter=TESTS]`, where TESTS is what GoogleTest takes. Works in a folder of its
// own, which it removes. Ends with 0 if every program came to a good end, and else with 1; with 2
// if it couldn't begin or write. What the probes see is a finding, whatever it is.

#include "kit/about_system.hpp"
#include "kit/run_program.hpp"
#include "kit/test_log.hpp"

#include <cstdio>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

namespace {

using kit::finished;
using kit::test_log;

/// An issue holds 65,536 characters. The probes take some 25,000 of them.
constexpr std::size_t room_for_failures = 24000;

std::wstring variable(wchar_t const *name)
{
    wchar_t value[MAX_PATH + 1] = {};
    ::GetEnvironmentVariableW(name, value, MAX_PATH + 1);
    return value;
}

/// The folder of this program, without a backslash at its end.
std::wstring own_folder()
{
    std::wstring name(32768, L'\0');
    name.resize(::GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size())));
    return name.substr(0, name.find_last_of(L'\\'));
}

/// Removes a folder and all in it; links without what they lead to.
void remove_all(std::wstring const &name)
{
    DWORD const attributes = ::GetFileAttributesW(name.c_str());
    ::SetFileAttributesW(name.c_str(), FILE_ATTRIBUTE_NORMAL);
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        ::DeleteFileW(name.c_str());
        return;
    }
    WIN32_FIND_DATAW entry;
    HANDLE search = INVALID_HANDLE_VALUE;
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
        search = ::FindFirstFileW((name + L"\\*").c_str(), &entry);
    for (BOOL more = search != INVALID_HANDLE_VALUE; more; more = ::FindNextFileW(search, &entry)) {
        std::wstring const found = entry.cFileName;
        if (found != L"." && found != L"..")
            remove_all(name + L'\\' + found);
    }
    if (search != INVALID_HANDLE_VALUE)
        ::FindClose(search);
    ::RemoveDirectoryW(name.c_str());
}

/// Where the programs work. It is short, so that the limits of length stay within their reach,
/// and it is where they take temporary files to belong.
class working_folder
{
public:
    working_folder()
    {
        std::wstring const number = std::to_wstring(::GetCurrentProcessId());
        for (wchar_t const *above : {L"SystemDrive", L"PUBLIC", L"TEMP"}) {
            std::wstring const name = variable(above) + L"\\fl-kit-" + number;
            if (name_.empty() && ::CreateDirectoryW(name.c_str(), nullptr))
                name_ = name;
        }
        ::SetEnvironmentVariableW(L"TMP", name_.c_str());
        ::SetEnvironmentVariableW(L"TEMP", name_.c_str());
    }
    ~working_folder() { remove(); }
    working_folder(working_folder const &) = delete;
    working_folder &operator=(working_folder const &) = delete;

    std::wstring const &name() const { return name_; }

    /// Whether it is gone. Others, such as what looks for viruses, may hold a file for a while.
    bool remove()
    {
        std::wstring const prefixed = L"\\\\?\\" + name_;
        for (int attempt = 0; attempt < 20 && !name_.empty(); ++attempt) {
            remove_all(prefixed);
            if (::GetFileAttributesW(prefixed.c_str()) == INVALID_FILE_ATTRIBUTES)
                name_.clear();
            else
                ::Sleep(250);
        }
        return name_.empty();
    }

private:
    std::wstring name_;
};

/// What is told at once and what goes into the report, as it comes together.
class report
{
public:
    void add_tests(std::string const &name, finished const &program);
    void add_tour(finished const &program);
    void add_probes(std::string const &name, finished const &program);
    void add_trouble(std::string const &what)
    {
        trouble_ += (trouble_.empty() ? "" : "; ") + what;
        std::printf("  %s\n", what.c_str());
    }
    std::string text(std::string const &head) const;
    bool is_well() const { return trouble_.empty(); }

private:
    void add_line(std::string const &name, std::string const &result, int seconds);
    void add_failures(std::string const &name, std::string const &text)
    {
        failures_ += "### " + name + "\n\n" + text + "\n";
    }

    std::string trouble_, programs_, failures_, probes_;
    std::map<std::string, int> reasons_;
    int passed_ = 0, failed_ = 0, skipped_ = 0;
};

void report::add_line(std::string const &name, std::string const &result, int seconds)
{
    std::string line = name;
    line.resize(32, ' ');
    programs_ += line + result + " (" + std::to_string(seconds) + " s)\n";
    std::printf("  %s\n", result.c_str());
}

void report::add_tests(std::string const &name, finished const &program)
{
    test_log const log = kit::read_test_log(program.printed);
    passed_ += log.passed;
    failed_ += log.failed;
    skipped_ += log.skipped;
    for (auto const &[reason, count] : log.reasons)
        reasons_[reason] += count;
    std::string const result = std::to_string(log.passed) + " passed, " +
                               std::to_string(log.failed) + " failed, " +
                               std::to_string(log.skipped) + " skipped";
    add_line(name, log.ended ? result : "no closing lines", program.seconds);
    std::size_t const room = room_for_failures - (std::min)(failures_.size(), room_for_failures);
    std::string failures = kit::fitting(log.failures, room);
    if (!program.is_well())
        add_trouble(name + " " + program.trouble());
    else if (!log.ended || log.ran == 0)
        add_trouble(name + " ran no test, or not to its end");
    if (!log.ended)
        failures += kit::last_lines(program.printed, 20);
    if (!failures.empty())
        add_failures(name, failures);
}

void report::add_tour(finished const &program)
{
    std::string const closing = "steps, all as expected";
    bool const good = program.printed.find(closing) != std::string::npos;
    add_line("flfs tour", good ? "all as expected" : "not as expected", program.seconds);
    if (program.is_well() && good)
        return;
    add_trouble("flfs tour " + (program.is_well() ? "has no closing line" : program.trouble()));
    add_failures("flfs tour", kit::last_lines(program.printed, 60));
}

void report::add_probes(std::string const &name, finished const &program)
{
    std::string const closing = "can't be tried here";
    bool const good = program.printed.find(closing) != std::string::npos;
    add_line(name, good ? "see below" : "saw nothing", program.seconds);
    if (!program.is_well() || !good)
        add_trouble(name + " " + (program.is_well() ? "saw nothing" : program.trouble()));
    for (char const unit : program.printed) {
        if (unit != '\r')
            probes_ += unit;
    }
}

std::string report::text(std::string const &head) const
{
    std::ostringstream text;
    text << "# fl::filesystem on Windows\n\n"
         << head << "\n## Result\n\n"
         << (is_well() ? "all is well" : "FAILED: " + trouble_) << "\n"
         << "total: " << passed_ << " passed, " << failed_ << " failed, " << skipped_
         << " skipped\n\n## Programs\n\n"
         << programs_ << "\n## Failures\n\n"
         << (failures_.empty() ? "none\n\n" : failures_) << "## Skipped\n\n";
    for (auto const &[reason, count] : reasons_)
        text << count << " because: " << reason << "\n";
    text << (reasons_.empty() ? "none\n\n" : "\n") << probes_;
    return text.str();
}

bool write_file(std::wstring const &name, std::string const &text)
{
    HANDLE const file = ::CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    std::string lines; // as Notepad of older systems wants them
    for (char const unit : text)
        lines += unit == '\n' ? "\r\n" : std::string(1, unit);
    DWORD written = 0;
    bool const done = ::WriteFile(file, lines.data(), static_cast<DWORD>(lines.size()), &written,
                                  nullptr) != FALSE;
    ::CloseHandle(file);
    return done && written == lines.size();
}

/// The first line of what scripts/windows-kit says of the programs.
std::string made_from(std::wstring const &kit_folder)
{
    char text[300] = {};
    HANDLE const file = ::CreateFileW((kit_folder + L"\\made-from.txt").c_str(), GENERIC_READ,
                                      FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    DWORD count = 0;
    if (file != INVALID_HANDLE_VALUE) {
        ::ReadFile(file, text, sizeof text - 1, &count, nullptr);
        ::CloseHandle(file);
    }
    text[std::strcspn(text, "\r\n")] = '\0';
    return text[0] == '\0' ? "unknown" : text;
}

class kit_run
{
public:
    kit_run(std::wstring programs, std::wstring folder, std::wstring filter)
        : programs_(std::move(programs)), folder_(std::move(folder)), filter_(std::move(filter))
    {
    }
    finished operator()(char const *name, wchar_t const *arguments) const
    {
        std::printf("%s\n", name);
        std::fflush(stdout);
        std::wstring const program(name, name + std::strlen(name));
        return kit::run_program(L"\"" + programs_ + L"\\" + program + L".exe\" " + arguments,
                                folder_);
    }
    finished tests(char const *name) const
    {
        std::wstring const filter = L"\"--gtest_filter=" + filter_ + L"\"";
        return (*this)(name, (L"--gtest_color=no --gtest_brief=0 " + filter).c_str());
    }

private:
    std::wstring programs_, folder_, filter_;
};

constexpr char const *test_programs[] = {"fl_filesystem_tests", "fl_filesystem_internal_tests",
                                         "platform_tests", "flfs_tests", "overloads_tests"};

void run_all(kit_run const &run, report &told)
{
    for (char const *name : test_programs)
        told.add_tests(name, run.tests(name));
    told.add_tour(run("flfs", L"tour tour"));
    told.add_probes("windows_probe", run("windows_probe", L""));
    told.add_probes("windows_probe_long", run("windows_probe_long", L"--lengths"));
}

/// `--filter=TESTS`, or all. Other words are `verify.cmd`'s own.
std::string filter_in(int count, char **arguments)
{
    std::string const option = "--filter=";
    for (int at = 1; at < count; ++at) {
        std::string const word = arguments[at];
        if (word.rfind(option, 0) == 0)
            return word.substr(option.size());
    }
    return "*";
}

} // namespace

int main(int count, char **arguments)
{
    // a missing DLL is a line of the report and no window that waits for a click
    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    std::wstring const programs = own_folder();
    std::wstring const kit_folder = programs.substr(0, programs.find_last_of(L'\\'));
    working_folder folder;
    if (folder.name().empty()) {
        std::puts("No folder to work in can be made.");
        return 2;
    }
    std::string const filter = filter_in(count, arguments);
    std::string head =
        "made from       " + made_from(kit_folder) + "\n" + kit::about_system(folder.name());
    if (filter != "*")
        head += "tests           only " + filter + "\n";

    report told;
    run_all(kit_run(programs, folder.name(), std::wstring(filter.begin(), filter.end())), told);
    if (!folder.remove())
        told.add_trouble("the folder that the programs worked in is still there");

    if (!write_file(kit_folder + L"\\report.txt", told.text(head))) {
        std::puts("report.txt can't be written beside verify.cmd.");
        return 2;
    }
    std::puts(told.is_well() ? "\nAll is well. The findings are in report.txt."
                             : "\nSomething failed. What it was is in report.txt.");
    return told.is_well() ? 0 : 1;
}
