// The code and the tables of docs/debugging.md.

#include "guide/page.hpp"

#include <sstream>

namespace {

using namespace guide;
using namespace test_support;

char const page[] = "docs/debugging.md";

TEST(DebuggingGuide, WhatWentToTheSystem)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\work").set_current_directory(u"C:\\work");
    std::ostringstream log;

    fs::upath const given(u"reports/../data/june.");
    log << "held:  " << given << '\n';
    log << "meant: " << fs::absolute(given) << '\n';
    log << "given: "
        << fs::to_utf8(
               fs::detail::from_filesystem(fs::detail::make_native_access_form(given.native())))
        << '\n';

    EXPECT_EQ(log.str(), shown(R"(
        held:  reports\..\data\june.
        meant: C:\work\data\june
        given: C:\work\data\june
        )"));
}

TEST(DebuggingGuide, WhereAWayEnds)
{
    simulated_machine machine;
    machine.add_symbolic_link(u"C:\\data\\broken", u"moved");
    machine.add_symbolic_link(u"C:\\data\\moved", u"C:\\gone\\june.txt");
    std::ostringstream log;

    for (fs::link_hop const &hop : fs::link_hops(u"C:/data/broken"))
        log << fs::to_utf8(hop.link) << " -> " << fs::to_utf8(hop.leads_to.value_or(u"nowhere"))
            << '\n';

    EXPECT_EQ(log.str(), shown(R"(
        C:\data\broken -> C:\data\moved
        C:\data\moved -> C:\gone\june.txt
        )"));
}

/// As the table begins a row: what a call throws.
template <typename Call>
std::string seen(Call call)
{
    auto const tried = fs::attempt(call);
    if (tried)
        return "success";
    std::string const text = tried.error().identifier();
    std::size_t const prefix = std::string("fl:filesystem:").size();
    std::string const name = text.rfind("fl:filesystem:", 0) == 0 ? text.substr(prefix) : text;
    unsigned int const code = tried.error().error_code();
    return code == 0 ? name : name + ' ' + std::to_string(code);
}

TEST(DebuggingGuide, WhatAFailureMayMean)
{
    std::u16string const deep =
        u"C:\\" + std::u16string(200, u'a') + u"\\" + std::u16string(200, u'b');
    auto const scene = [&](simulated_machine &machine) {
        machine.add_drive(u'D').add_file(u"C:\\f", "soup").add_file(u"C:\\d\\f").add_file(deep);
        machine.add_file(u"C:\\r\\f").set_attributes(u"C:\\r\\f", FILE_ATTRIBUTE_READONLY);
        machine.add_symbolic_link(u"C:\\l", u"l");
    };
    auto const sees = [&](std::string const &what, std::function<void(simulated_machine &)> call) {
        return [=] {
            simulated_machine machine;
            scene(machine);
            EXPECT_EQ(seen([&] { call(machine); }), what);
        };
    };
    play(page, "| you see | what it is |",
         {{"`PathNotFound` of a file that is there",
           [&] {
               simulated_machine machine;
               scene(machine);
               EXPECT_EQ(::GetFileAttributesW(fs::upath(deep).wstring().c_str()),
                         INVALID_FILE_ATTRIBUTES);
               EXPECT_EQ(::GetLastError(), DWORD{ERROR_PATH_NOT_FOUND});
               std::wstring const form = fs::detail::make_native_access_form(deep);
               EXPECT_NE(::GetFileAttributesW(form.c_str()), INVALID_FILE_ATTRIBUTES);
           }},
          {"`PathNotFound` without a pathname",
           sees("PathNotFound", [](auto &) { static_cast<void>(fs::canonical(u"C:\\no")); })},
          {"`AccessDenied` on `remove_file`",
           [&] {
               sees("AccessDenied", [](auto &) { fs::remove_file(u"C:\\r\\f"); })();
               sees("success", [](auto &) { fs::remove(u"C:\\r\\f"); })();
           }},
          {"`AccessDenied` on `remove_all`",
           [&] {
               sees("AccessDenied", [](auto &) { fs::remove_all(u"C:\\r"); })();
               sees("success", [](auto &) {
                   fs::remove_all(u"C:\\r", fs::removal_options().clear_read_only());
               })();
           }},
          {"`AccessDenied` on `rename`, naming the target",
           [] {
               simulated_machine machine;
               machine.add_file(u"C:\\f").add_directory(u"C:\\d");
               EXPECT_FAILURE(fs::rename(u"C:\\f", u"C:\\d"), denied(u"C:\\d"));
           }},
          {"`DirectoryNotEmpty` on `remove`",
           [&] {
               sees("DirectoryNotEmpty", [](auto &) { fs::remove(u"C:\\d"); })();
               sees("success", [](auto &) { fs::remove_all(u"C:\\d"); })();
           }},
          {"`FileExistsError` on `create_directories`",
           [&] {
               sees("FileExistsError", [](auto &) { fs::create_directories(u"C:\\d"); })();
               sees("success", [](auto &) { fs::ensure_directories(u"C:\\d"); })();
           }},
          {"`FileIsDirectory` on `file_size`",
           sees("FileIsDirectory", [](auto &) { static_cast<void>(fs::file_size(u"C:\\d")); })},
          {"InvalidArgument: Empty Path not permitted",
           sees("InvalidArgument: Empty Path not permitted",
                [](auto &) { static_cast<void>(fs::file_size(u"")); })},
          {"InvalidArgument: Absolute path not permitted",
           sees("InvalidArgument: Absolute path not permitted",
                [](auto &) { static_cast<void>(u"C:\\"_path / u"D:\\"); })},
          {"`SystemError` 17",
           sees("SystemError 17", [](auto &) { fs::create_hard_link(u"C:\\f", u"D:\\f"); })},
          {"`SystemError` 32", sees("SystemError 32",
                                    [](auto &machine) {
                                        auto const fault = machine.fail_every_call_on_name(
                                            "CreateFileW", u"C:\\f", ERROR_SHARING_VIOLATION);
                                        fs::remove(u"C:\\f");
                                    })},
          {"`SystemError` 112", sees("SystemError 112",
                                     [](auto &machine) {
                                         auto const fault =
                                             machine.fail_call("CopyFileW", 1, ERROR_DISK_FULL);
                                         fs::copy_file(u"C:\\f", u"C:\\g");
                                     })},
          {"`SystemError` 1314",
           [&] {
               sees("SystemError 1314", [](auto &machine) {
                   machine.deny_symbolic_links();
                   fs::create_directory_symlink(u"d", u"C:\\new");
               })();
               sees("success", [](auto &machine) {
                   machine.deny_symbolic_links();
                   fs::create_junction(u"C:\\d", u"C:\\new");
               })();
           }},
          {"`SystemError` 8246", sees("SystemError 8246", [](auto &) { fs::status(u"C:\\l"); })},
          {"foundation::ustring::CtypeInvalidCharacter",
           [] {
               simulated_machine machine;
               machine.add_file(u"C:\\f.fr\u00E9");
               EXPECT_THROW(fs::status(u"C:\\f.fr\u00E9"),
                            foundation::ustring::CtypeInvalidCharacter);
           }},
          {"exit code 53 under Wine, a window on Windows", [] {}}});
}

TEST(DebuggingGuide, WithoutWindows)
{
    std::ostringstream log;

    fl::simulation::machine windows;
    windows.build().add_file(u"C:\\data\\june.txt", "soup");
    auto const fault = windows.faults().fail_call("MoveFileExW", 1, ERROR_DISK_FULL);
    auto const moved = fs::attempt([] { fs::rename(u"C:/data/june.txt", u"C:/data/july.txt"); });
    log << moved.error().describe() << '\n';

    EXPECT_EQ(log.str(), shown(R"(
        fl:filesystem:SystemError: the system refused: "C:\data\june.txt", "C:\data\july.txt" (code 112: There is not enough space on the disk.)
        )"));
}

} // namespace
