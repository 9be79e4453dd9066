#include "flfs/tour/step.hpp"

#include <fl/filesystem/access_forms.hpp>
#include <fl/filesystem/install_path.hpp>
#include <fl/filesystem/operations.hpp>

#include "flfs/process_state.hpp"
#include "flfs/text.hpp"
#include "flfs/tour/disk.hpp"

#include <algorithm>
#include <stdexcept>

namespace flfs::tour {

namespace fs = fl::filesystem;

namespace {

bool is_on_drive(place const &where)
{
    return where.folder.size() > 1 && where.folder[1] == u':';
}

std::string change_directory(place const &where)
{
    fs::change_current_path(where.folder + u"\\reports");
    std::string line = told(fs::get_current_path(), where);
    if (is_on_drive(where)) {
        auto const variable = environment_variable(u'=' + where.folder.substr(0, 2));
        line += ", and the drive's variable " + (variable ? told(*variable, where) : "isn't set");
    }
    fs::change_current_path(where.folder);
    return line;
}

std::string space_here()
{
    fs::space_info const space = fs::space(fs::upath(u"reports"));
    bool const is_sound = space.available <= space.free && space.free <= space.capacity;
    return std::to_string(space.capacity) + " bytes in all, " +
           (is_sound ? "and no more of them free" : "and more of them free");
}

char16_t lower(char16_t unit)
{
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
}

bool ends_in(std::u16string const &text, std::u16string const &end)
{
    return text.size() >= end.size() &&
           std::equal(end.begin(), end.end(), text.end() - static_cast<std::ptrdiff_t>(end.size()),
                      [](char16_t one, char16_t other) { return lower(one) == lower(other); });
}

std::u16string const modules = u"\\bin\\win64";

std::u16string folder_of_program()
{
    std::u16string const program = program_pathname();
    return program.substr(0, program.find_last_of(u'\\'));
}

/// Where flfs.exe lies tells what the library must find, which lies beside it.
std::string kind_of_root()
{
    std::u16string const folder = folder_of_program();
    std::u16string const root = fs::get_install_path();
    if (ends_in(folder, modules))
        return ends_in(folder, root + modules) ? "the folder above bin\\win64" : displayed(root);
    return fs::absolute(root + u"\\..") == fs::absolute(folder) ? "the module itself"
                                                                : displayed(root);
}

std::string expected_kind_of_root()
{
    return ends_in(folder_of_program(), modules) ? "the folder above bin\\win64"
                                                 : "the module itself";
}

void *address_in_library()
{
    return reinterpret_cast<void *>(&fs::get_install_path);
}

} // namespace

chapter process(place const &where)
{
    std::string const inside = R"(<folder>\reports)";
    return {
        "Process, volume and installation",
        {{"The current directory changes, and the variable by which C:name goes.",
          R"(change_current_path(u"<folder>\\reports"), get_current_path())",
          [where] { return change_directory(where); },
          inside + (is_on_drive(where) ? ", and the drive's variable " + inside : "")},
         {"How much room there is.", R"(space(u"reports"))", space_here,
          std::to_string(capacity_here()) + " bytes in all, and no more of them free"},
         {"What isn't on a network drive keeps its own name, if that is tolerated.",
          R"(get_unc_path(u"C:/", true))",
          [] { return fs::get_unc_path(std::u16string(u"C:/"), true); }, R"(C:\)"},
         {"The module that holds the library is a file.", "get_module_path_from_address(address)",
          [] { return is_there(fs::detail::get_module_path_from_address(address_in_library())); },
          "yes"},
         {"The root of the installation, by where that lies.", "get_install_path()", kind_of_root,
          expected_kind_of_root()},
         {"The same, found anew from an address.", "get_base_path(address) == get_install_path()",
          [] {
              return fs::detail::from_filesystem(fs::detail::get_base_path(address_in_library())) ==
                     fs::get_install_path();
          },
          "yes"}}};
}

} // namespace flfs::tour
