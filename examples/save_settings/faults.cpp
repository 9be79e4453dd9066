// Saving a file, tried against ten faults that no build machine can make. It runs on Linux.
#include "settings.hpp"

#include <fl/simulation/machine.hpp>

#include <cstdio>
#include <optional>
#include <string>

namespace {

using fl::simulation::edition;
using fl::simulation::fault;
using fl::simulation::machine;
using fl::simulation::right;

constexpr char16_t const *folder = u"C:\\app";
constexpr char16_t const *settings = u"C:\\app\\settings.ini";

/// Lasts as long as the answer is kept.
using trouble = std::optional<fault>;

struct trial
{
    char const *what;
    trouble (*make)(machine &windows);
    DWORD code;         ///< that has to come out
    char const *result; ///< what the file has to hold then; null where it is gone by then
};

trial const trials[] = {
    {"nothing is wrong", [](machine &) { return trouble(); }, 0, "new"},
    {"1. the disk is full",
     [](machine &windows) {
         return trouble(windows.faults().fail_call("WriteFile", 1, ERROR_DISK_FULL));
     },
     ERROR_DISK_FULL, "old"},
    {"2. the drive is pulled out while the file is written",
     [](machine &windows) {
         return trouble(windows.faults().fail_call("WriteFile", 1, ERROR_NOT_READY));
     },
     ERROR_NOT_READY, "old"},
    {"3. a bad sector shows when the file is closed",
     [](machine &windows) {
         return trouble(windows.faults().fail_call("CloseHandle", 1, ERROR_IO_DEVICE));
     },
     ERROR_IO_DEVICE, "old"},
    {"4. a virus scanner holds the new file",
     [](machine &windows) {
         return trouble(windows.faults().fail_call("MoveFileExW", 1, ERROR_SHARING_VIOLATION));
     },
     ERROR_SHARING_VIOLATION, "old"},
    {"5. no right to make files there",
     [](machine &windows) {
         windows.build().deny_creation(folder);
         return trouble();
     },
     ERROR_ACCESS_DENIED, "old"},
    {"6. no right to replace the file",
     [](machine &windows) {
         windows.build().deny(settings, right::remove);
         return trouble();
     },
     ERROR_ACCESS_DENIED, "old"},
    {"7. the file is read-only",
     [](machine &windows) {
         windows.build().set_attributes(settings, FILE_ATTRIBUTE_READONLY);
         return trouble();
     },
     ERROR_ACCESS_DENIED, "old"},
    {"8. a directory of that name is made in the meantime",
     [](machine &windows) {
         return trouble(windows.faults().before_call("MoveFileExW", 1, [&windows] {
             windows.build().remove(settings).add_directory(settings);
         }));
     },
     ERROR_ACCESS_DENIED, nullptr},
    {"9. the folder is removed in the meantime",
     [](machine &windows) {
         return trouble(windows.faults().before_call(
             "CreateFileW", 1, [&windows] { windows.build().remove(folder); }));
     },
     ERROR_PATH_NOT_FOUND, nullptr},
    {"10. the folder is swapped for a junction to a server that is gone",
     [](machine &windows) {
         return trouble(windows.faults().before_call("CreateFileW", 1, [&windows] {
             windows.build().remove(folder).add_dead_server(u"server").add_symbolic_link(
                 folder, u"\\\\server\\share", fl::simulation::flavour::directory);
         }));
     },
     ERROR_BAD_NETPATH, nullptr},
};

/// Whether all came out as it has to: the code, the file, no second file, no open handle.
bool holds(trial const &one)
{
    machine windows;
    windows.build().set_edition(edition::windows_11).add_file(settings, "old");
    trouble const lasts = one.make(windows);
    DWORD const code = save_settings(L"C:\\app\\settings.ini", "new");
    std::printf("%3lu  %s\n", static_cast<unsigned long>(code), one.what);
    bool const is_kept = one.result == nullptr || windows.look().content(settings) == one.result;
    return code == one.code && is_kept && !windows.look().exists(u"C:\\app\\settings.ini.new") &&
           windows.look().open_handles() == 0 && (!lasts || lasts->fired());
}

} // namespace

int main()
{
    int wrong = 0;
    for (trial const &one : trials)
        if (!holds(one)) {
            std::printf("     otherwise than it has to be\n");
            ++wrong;
        }
    return wrong;
}
