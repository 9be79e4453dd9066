// The programs of examples/jobs do what their heads say. (Those that read and write by streams,
// which are the host's here, run under Wine: scripts/check-package.)

#include "guide/page.hpp"

#include <iostream>
#include <sstream>

#define main back_up_main
#include "jobs/back_up.cpp"
#undef main
#define main clean_up_main
#include "jobs/clean_up.cpp"
#undef main
#define main copy_folder_main
#include "jobs/copy_folder.cpp"
#undef main
#define main find_files_main
#include "jobs/find_files.cpp"
#undef main
#define main folder_size_main
#include "jobs/folder_size.cpp"
#undef main
#define main list_folder_main
#include "jobs/list_folder.cpp"
#undef main
#define main make_folders_main
#include "jobs/make_folders.cpp"
#undef main
#define main temporary_folder_main
#include "jobs/temporary_folder.cpp"
#undef main
#define main read_lines_main
#include "jobs/read_lines.cpp"
#undef main
#define main save_file_main
#include "jobs/save_file.cpp"
#undef main

namespace {

using namespace guide;

/// What the head of a job says that it prints.
std::string promised(std::string const &job)
{
    std::string text;
    bool is_there = false;
    for (std::string const &line : lines_of("examples/jobs/" + job + ".cpp")) {
        if (is_there && line.rfind("//     ", 0) != 0)
            break;
        if (is_there)
            text += line.substr(7) + '\n';
        is_there = is_there || line == "// Prints:";
    }
    EXPECT_FALSE(text.empty()) << job;
    return text;
}

TEST(Jobs, PrintWhatTheirHeadsSay)
{
    struct
    {
        char const *name;
        int (*run)();
        int exit_code;
    } const jobs[] = {
        {"back_up", back_up_main, 0},           {"clean_up", clean_up_main, 0},
        {"copy_folder", copy_folder_main, 0},   {"find_files", find_files_main, 0},
        {"folder_size", folder_size_main, 0},   {"list_folder", list_folder_main, 0},
        {"make_folders", make_folders_main, 1}, {"temporary_folder", temporary_folder_main, 0},
    };
    for (auto const &job : jobs) {
        simulated_machine machine;
        machine.add_file(u"C:\\work\\reports\\june.txt", "soup");
        machine.add_file(u"C:\\work\\reports\\july.txt", "bread");
        machine.add_file(u"C:\\work\\reports\\2025\\old.log", "log");
        machine.add_file(u"C:\\work\\reports\\2025\\june.tmp", "t");
        machine.add_directory(u"C:\\temp").set_current_directory(u"C:\\work");
        ::SetEnvironmentVariableW(L"TMP", L"C:\\temp");
        std::ostringstream out;
        std::streambuf *const before = std::cout.rdbuf(out.rdbuf());
        int const exit_code = job.run();
        std::cout.rdbuf(before);
        EXPECT_EQ(out.str(), promised(job.name)) << job.name;
        EXPECT_EQ(exit_code, job.exit_code) << job.name;
    }
}

} // namespace
