// The code and the tables of docs/threads.md.

#include "guide/page.hpp"

#include <objbase.h>

#include <atomic>
#include <future>
#include <thread>

namespace {

using namespace guide;

char const page[] = "docs/threads.md";

std::uint64_t bytes_in(fs::upath const &folder)
{
    std::uint64_t bytes = 0;
    for (auto const &entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file())
            bytes += entry.file_size();
    return bytes;
}

TEST(ThreadsGuide, AFolderEach)
{
    simulated_machine machine;
    for (char16_t const name : std::u16string(u"abcd"))
        machine.add_file(std::u16string(u"C:\\data\\") + name + u"\\x\\f", "soup");

    std::vector<std::future<std::uint64_t>> parts;
    for (auto const &entry : fs::directory_iterator(u"C:/data"))
        if (entry.is_directory())
            parts.push_back(std::async(std::launch::async, bytes_in, entry.path()));
    std::uint64_t bytes = 0;
    for (auto &part : parts)
        bytes += part.get(); // throws what the thread threw

    EXPECT_EQ(bytes, 16U);
    auto failing = std::async(std::launch::async, bytes_in, u"C:/no"_path);
    EXPECT_FAILURE(failing.get(), test_support::not_found(u"C:\\no"));
}

TEST(ThreadsGuide, WhatToBewareOf)
{
    play(page, "| object | beware |",
         {{"`upath`, records, entries",
           [] {
               simulated_machine machine;
               machine.add_file(u"C:\\d\\f", "soup");
               auto it = fs::directory_iterator(u"C:\\d");
               fs::directory_entry const kept = *it;
               ++it;
               EXPECT_EQ(kept.filename(), u"f") << "stays when the iterator moves on";
           }},
          {"directory_iterator",
           [] {
               simulated_machine machine;
               machine.add_file(u"C:\\d\\f").add_file(u"C:\\d\\g");
               auto it = fs::directory_iterator(u"C:\\d");
               auto const copy = it;
               ++it;
               EXPECT_EQ(copy->filename(), u"g");
           }},
          {"an `InvalidArgument` that several threads hold",
           [] {
               fs::InvalidArgument const one("message", u"p", {});
               char const *const first = one.what();
               EXPECT_STREQ(first, one.what());
               EXPECT_EQ(fs::describe(one), fs::describe(fs::InvalidArgument(one)));
           }},
          {"the current directory, the environment",
           [] {
               simulated_machine machine;
               machine.add_directory(u"C:\\d");
               std::thread([] { fs::change_current_path(u"C:\\d"); }).join();
               EXPECT_EQ(fs::get_current_path(), u"C:\\d");
           }},
          {"COM of the calling thread", [] { /* the table below */ }}});
}

TEST(ThreadsGuide, AbsoluteWhereItComesIn)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\d");
    fs::upath const argument(u"june.txt");

    fs::upath const input = fs::absolute(argument);

    fs::change_current_path(u"C:\\d");
    EXPECT_EQ(input, u"C:/june.txt"_path);
}

TEST(ThreadsGuide, Com)
{
    simulated_machine machine;
    machine.add_file(u"C:\\f");
    auto const left = [&machine](int initialised, DWORD apartment) {
        if (initialised > 0) {
            EXPECT_TRUE(SUCCEEDED(::CoInitializeEx(nullptr, apartment)));
        }
        fs::create_shortcut(u"C:\\f", u"C:\\s.lnk");
        int const kept = machine.com_apartments();
        for (int undo = kept; undo > 0; --undo)
            ::CoUninitialize();
        return kept;
    };
    play(page, "| the calling thread | afterwards |",
         {{"hasn't initialised COM", [&] { EXPECT_EQ(left(0, 0), 0); }},
          {"is in a single-threaded apartment",
           [&] { EXPECT_EQ(left(1, COINIT_APARTMENTTHREADED), 1); }},
          {"is in a multi-threaded apartment",
           [&] { EXPECT_EQ(left(1, COINIT_MULTITHREADED), 0); }}});
}

TEST(ThreadsGuide, OneOfAllWhoTry)
{
    simulated_machine machine;
    fs::upath const lock(u"C:/lock");
    std::atomic<int> winners{0};
    std::vector<std::thread> all;
    for (int number = 0; number < 8; ++number)
        all.emplace_back([&] {
            auto const made = fs::attempt([&] { fs::create_directory(lock); });
            bool const is_mine = made.has_value(); // of all who try at once, one
            winners += is_mine ? 1 : 0;
        });
    for (auto &thread : all)
        thread.join();
    EXPECT_EQ(winners, 1);
}

void write_text(fs::upath const &p, char const *text)
{
    HANDLE const file = ::CreateFileW(p.wstring().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    EXPECT_TRUE(
        ::WriteFile(file, text, static_cast<DWORD>(std::string(text).size()), &written, nullptr));
    EXPECT_TRUE(::CloseHandle(file));
}

TEST(ThreadsGuide, InOneStep)
{
    simulated_machine machine;
    machine.add_file(u"C:\\settings", "volume = 10");
    fs::upath const settings(u"C:/settings");

    fs::upath const fresh = fs::upath(settings) += u".new";
    write_text(fresh, "volume = 11"); // however your program writes files
    fs::rename(fresh, settings);

    EXPECT_EQ(machine.content(u"C:\\settings"), "volume = 11");
    EXPECT_FALSE(machine.exists(u"C:\\settings.new"));
}

/// What comes of a call, as the table says it.
template <typename Call>
std::string outcome_of(Call call)
{
    auto const tried = fs::attempt(call);
    if (tried)
        return "is done";
    std::string const name =
        tried.error().identifier().substr(std::string("fl:filesystem:").size());
    unsigned int const code = tried.error().error_code();
    return code == 0 ? name : '`' + name + "` " + std::to_string(code);
}

TEST(ThreadsGuide, WhatOthersHold)
{
    std::map<std::string, DWORD> const shares = {
        {"`p`, open for reading without leave to delete", FILE_SHARE_READ | FILE_SHARE_WRITE},
        {"`p`, open with leave to delete", FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE}};
    for (lines const &row : rows_of(page, "| what others hold | `remove(p)` | `rename(from, p)` |"))
        for (bool const removes : {true, false}) {
            simulated_machine machine;
            machine.add_file(u"C:\\d\\p").add_file(u"C:\\d\\from");
            HANDLE held = INVALID_HANDLE_VALUE;
            if (shares.count(row[0]) != 0)
                held = ::CreateFileW(L"C:\\d\\p", GENERIC_READ, shares.at(row[0]), nullptr,
                                     OPEN_EXISTING, 0, nullptr);
            else if (row[0].rfind("a directory", 0) == 0)
                machine.set_current_directory(u"C:\\d");
            std::string const came = outcome_of([&] {
                if (removes)
                    fs::remove(u"C:\\d\\p");
                else
                    fs::rename(u"C:\\d\\from", u"C:\\d\\p");
            });
            EXPECT_EQ(came, row[removes ? 1 : 2]) << row[0];
            if (held != INVALID_HANDLE_VALUE) {
                EXPECT_TRUE(::CloseHandle(held));
            }
        }
}

} // namespace
