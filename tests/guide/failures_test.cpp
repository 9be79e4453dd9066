// The code and the tables of docs/failures.md.

#include "guide/page.hpp"

#include <windows.h>

#include <chrono>
#include <sstream>
#include <thread>

namespace {

using namespace guide;

char const page[] = "docs/failures.md";

TEST(FailuresGuide, CatchingByClass)
{
    simulated_machine machine;
    machine.add_file(u"C:\\data\\june.txt");
    std::ostringstream log;

    try {
        fs::rename(u"C:/data/june.txt", u"C:/data/archive/june.txt");
    } catch (fs::PathNotFound const &failure) {
        log << "not there: " << fs::to_utf8(failure.get_path_name()) << '\n';
    } catch (fs::AccessDenied const &failure) {
        log << "not allowed: " << fs::to_utf8(failure.get_path_name()) << '\n';
    } catch (fs::FsysExceptionBase const &failure) { // everything else
        log << fs::describe(failure) << '\n';
    }

    EXPECT_EQ(log.str(), shown(R"(
        not there: C:\data\archive\june.txt
        )"));
}

/// The numbers in a text.
std::vector<unsigned int> numbers_in(std::string const &text)
{
    std::vector<unsigned int> all;
    std::istringstream words(text);
    for (std::string word; words >> word;)
        if (word[0] >= '0' && word[0] <= '9')
            all.push_back(static_cast<unsigned int>(std::stoul(word)));
    return all;
}

TEST(FailuresGuide, TheFamily)
{
    for (lines const &row :
         rows_of(page,
                 "| class, thrown for the system's codes | `get_excp_id()` | `describe` says |")) {
        std::string const name = row[0].substr(1, row[0].find('`', 1) - 1);
        auto const codes = numbers_in(row[0].substr(row[0].find(':')));
        EXPECT_FALSE(codes.empty()) << row[0];
        for (unsigned int const code : codes) {
            auto const thrown = fs::attempt([&] { fs::throw_last_error(code, fs::upath(u"p")); });
            EXPECT_EQ(thrown.error().identifier().rfind("fl:filesystem:" + name, 0), 0U)
                << row[0] << code;
            EXPECT_EQ(std::to_string(thrown.error().id()), row[1]) << row[0] << code;
            if (name != "InvalidArgument") {
                EXPECT_NE(thrown.error().describe().find(name + ": " + row[2]), std::string::npos)
                    << thrown.error().describe();
            }
        }
    }
}

char const *message_of(fs::FsysExceptionBase const &failure)
{
    switch (failure.get_excp_id()) {
    case fs::fsys_excp_path_not_found:
        return "Die Datei ist nicht da.";
    case fs::fsys_excp_access_denied:
        return "Das ist nicht erlaubt.";
    default:
        return "Das ging nicht.";
    }
}

TEST(FailuresGuide, MessagesOfYourOwn)
{
    EXPECT_STREQ(message_of(fs::PathNotFound(u"p")), "Die Datei ist nicht da.");
    EXPECT_STREQ(message_of(fs::AccessDenied(u"p")), "Das ist nicht erlaubt.");
    EXPECT_STREQ(message_of(fs::SystemError(32)), "Das ging nicht.");
}

TEST(FailuresGuide, TheTwoClassesBesideTheFamily)
{
    simulated_machine machine;
    machine.add_file(u"C:\\a.fr\u00E9").add_directory(u"C:\\d");
    EXPECT_THROW(fs::status(u"C:\\a.fr\u00E9"), foundation::ustring::CtypeInvalidCharacter);
    EXPECT_THROW(fs::access(u"C:\\a.fr\u00E9", fs::access_execute),
                 foundation::ustring::CtypeInvalidCharacter);
    EXPECT_FALSE(fs::attempt([] { fs::status(u"C:\\a.fr\u00E9"); })) << "attempt knows it";
    // the full pathname, for the variable, once the directory has changed
    auto const fault = machine.fail_call("GetFullPathNameW", 2, ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_THROW(fs::change_current_path(u"C:\\d"), std::filesystem::filesystem_error);
    EXPECT_EQ(machine.current_directory(), u"C:\\d");
}

TEST(FailuresGuide, WhichPathnameItIs)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\work").set_current_directory(u"C:\\work");
    std::u16string const p = u"data/june.txt";
    std::map<std::string, std::function<void()>> const calls = {
        {"remove(p)", [&] { fs::remove(p); }},
        {"rename(p, to)", [&] { fs::rename(p, u"to"); }},
        {"copy_file(p, to)", [&] { fs::copy_file(p, u"to"); }},
        {"create_directory(p)", [&] { fs::create_directory(p); }},
        {"file_size(p)", [&] { static_cast<void>(fs::file_size(p)); }},
        {"directory_iterator(p)", [&] { fs::directory_iterator{p}; }},
        {"read_symlink(p)", [&] { fs::read_symlink(p); }},
        {"remove_file(p)", [&] { fs::remove_file(p); }},
        {"permissions(p, perms)", [&] { fs::permissions(p, fs::file_status::no_perms); }},
        {"open(p)", [&] { static_cast<void>(fs::open(p)); }},
        {"access(p, access_read)", [&] { fs::access(p, fs::access_read); }},
        {"canonical(p)", [&] { fs::canonical(p); }},
        {"create_symlink(target, p, type)",
         [&] { fs::create_symlink(u"target", p, fs::file_status::regular_file); }},
    };
    checks rows;
    for (lines const &row :
         rows_of(page, "| operation, of a name that isn't there | `get_path_name()` |"))
        rows[row[0]] = [&calls, row] {
            auto const tried = fs::attempt(calls.at(row[0]));
            EXPECT_EQ(tried.error().id(), fs::fsys_excp_path_not_found);
            EXPECT_EQ(fs::to_utf8(tried.error().path_name()), row[1]);
        };
    EXPECT_EQ(rows.size(), calls.size());
    play(page, "| operation, of a name that isn't there | `get_path_name()` |", rows);
}

TEST(FailuresGuide, OneLine)
{
    simulated_machine machine;
    machine.add_file(u"C:\\data\\in use.txt");
    auto const fault = machine.fail_every_call_on_name("CreateFileW", u"C:\\data\\in use.txt",
                                                       ERROR_SHARING_VIOLATION);
    std::ostringstream log;

    for (char16_t const *name : {u"C:/data/in use.txt", u"C:/data/two\nlines.txt", u""}) {
        auto const size = fs::attempt([&] { return fs::file_size(name); });
        log << size.error().describe() << '\n';
    }

    EXPECT_EQ(log.str(), shown(R"(
        fl:filesystem:SystemError: the system refused: "C:\data\in use.txt" (code 32: The process cannot access the file because it is being used by another process.)
        fl:filesystem:InvalidArgument: The filename, directory name, or volume label syntax is incorrect.
        fl:filesystem:InvalidArgument: Empty Path not permitted
        )"));
}

TEST(FailuresGuide, NamesForgeNoLines)
{
    std::ostringstream log;

    log << fs::describe(fs::AccessDenied(u"C:\\a\nerror: all is lost \u202E")) << '\n';

    EXPECT_EQ(log.str(), shown(R"(
        fl:filesystem:AccessDenied: the caller may not do this: "C:\a\u000Aerror: all is lost \u202E"
        )"));
}

TEST(FailuresGuide, WithoutExceptions)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\d");
    std::ostringstream log;
    for (fs::upath const &p : {fs::upath(u"C:/d"), fs::upath(u"C:/missing")}) {

        fs::outcome<std::uint64_t> const size = fs::attempt([&] { return fs::file_size(p); });
        std::uint64_t const known = size.value_or(0);
        if (!size && size.error().id() != fs::fsys_excp_path_not_found)
            log << size.error().describe() << '\n';

        EXPECT_EQ(known, 0U);
    }
    EXPECT_EQ(log.str(), "fl:filesystem:FileIsDirectory: a file is needed here, and this is a "
                         "directory: \"C:\\d\"\n");
    auto const others = [] { fs::attempt([]() -> int { throw std::bad_alloc(); }).value(); };
    EXPECT_THROW(others(), std::bad_alloc);
}

bool remove_with_patience(fs::upath const &p, int times)
{
    for (;; --times) {
        auto const removed = fs::attempt([&] { fs::remove(p); });
        bool const is_held = !removed && removed.error().error_code() == 32;
        if (!is_held || times == 0)
            return removed.has_value();
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

TEST(FailuresGuide, TryingAgain)
{
    simulated_machine machine;
    machine.add_file(u"C:\\f");
    HANDLE const held =
        ::CreateFileW(L"C:\\f", GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_FALSE(remove_with_patience(fs::upath(u"C:/f"), 2));
    EXPECT_TRUE(::CloseHandle(held));
    EXPECT_TRUE(remove_with_patience(fs::upath(u"C:/f"), 0));
    EXPECT_FALSE(machine.exists(u"C:\\f"));
}

TEST(FailuresGuide, OfYourOwnSystemCalls)
{
    simulated_machine machine;
    fs::upath const p(u"C:/missing");
    auto const call = [&] {
        if (!::DeleteFileW(fs::detail::make_native_access_form(p.native()).c_str()))
            fs::throw_last_error(::GetLastError(), p);
    };
    EXPECT_FAILURE(call(), test_support::not_found(u"C:\\missing"));
}

TEST(FailuresGuide, OnOtherThreads)
{
    simulated_machine machine;
    fs::upath const p(u"C:/missing");

    std::exception_ptr caught;
    std::thread worker([&] {
        try {
            fs::remove(p);
        } catch (...) {
            caught = std::current_exception();
        }
    });
    worker.join();

    EXPECT_FAILURE(std::rethrow_exception(caught), test_support::not_found(u"C:\\missing"));
}

} // namespace
